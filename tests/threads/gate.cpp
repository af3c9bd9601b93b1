#include "gate.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdarg>
#include <cstdio>
#include <string_view>

#include "platform/log.h"

namespace threads_tests {

namespace {

thread_local Gate* gateOfThisThread = nullptr;
thread_local int statementsToGo = 0;

}  // namespace

void Gate::stopThisThreadAt(int statement) {
  gateOfThisThread = this;
  statementsToGo = statement;
}

void Gate::pass() {
  if (gateOfThisThread == nullptr || --statementsToGo != 0) return;
  gateOfThisThread->waitForOpening();
  gateOfThisThread = nullptr;
}

void Gate::waitForOpening() {
  std::unique_lock lock(mutex_);
  reached_ = true;
  changed_.notify_all();
  changed_.wait(lock, [this] { return open_; });
}

void Gate::waitForSomebody() {
  std::unique_lock lock(mutex_);
  EXPECT_TRUE(changed_.wait_for(lock, kPatience, [this] { return reached_; }))
      << "no thread has come to the log statement at which it was to stop";
}

void Gate::open() {
  const std::lock_guard lock(mutex_);
  open_ = true;
  changed_.notify_all();
}

}  // namespace threads_tests

int __dlog_print(int log_id, int priority, const char* tag, const char* format, ...) {
  if (std::string_view(tag) == "VENTARO") threads_tests::Gate::pass();
  static const auto hosts =
      reinterpret_cast<decltype(&__dlog_print)>(dlsym(RTLD_NEXT, "__dlog_print"));
  char message[8192];
  std::va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(message, sizeof(message), format, arguments);
  va_end(arguments);
  return hosts(log_id, priority, tag, "%s", message);
}
