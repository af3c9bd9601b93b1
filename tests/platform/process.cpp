#include "process.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <stdexcept>

namespace platform_tests {

namespace {

constexpr int kDeadlineMilliseconds = 60'000;
constexpr uid_t kNobody = 65534;

bool hasOpenStore() {
  std::ifstream maps("/proc/self/maps");
  const std::string all{std::istreambuf_iterator<char>(maps), std::istreambuf_iterator<char>()};
  return all.find("data.mdb") != std::string::npos;
}

[[noreturn]] void carryOut(const std::function<void(Channel&)>& work, int socket) {
  try {
    Channel test(socket);
    work(test);
  } catch (const std::exception& error) {
    ADD_FAILURE() << "an exception left a process of the test: " << error.what();
  }
  std::exit(testing::Test::HasFailure() ? 1 : 0);
}

pid_t startProcess(const std::function<void(Channel&)>& work, int (&sockets)[2]) {
  if (hasOpenStore()) throw std::logic_error("a process must start before the store is opened");
  if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, sockets) != 0) std::abort();
  std::cout.flush();
  std::fflush(nullptr);
  const pid_t process = fork();
  if (process < 0) std::abort();
  close(sockets[process == 0 ? 0 : 1]);
  if (process == 0) carryOut(work, sockets[1]);
  return process;
}

}  // namespace

Channel::~Channel() {
  close(socket_);
}

void Channel::sendLine(const std::string& line) const {
  const std::string bytes = line + "\n";
  ASSERT_EQ(send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL),
            static_cast<ssize_t>(bytes.size()));
}

std::optional<std::string> Channel::receiveLine() {
  auto newline = received_.find('\n');
  while (newline == std::string::npos) {
    pollfd other{socket_, POLLIN, 0};
    if (poll(&other, 1, kDeadlineMilliseconds) == 0) {
      ADD_FAILURE() << "the other process says nothing";
      return std::nullopt;
    }
    std::array<char, 4096> bytes{};
    const ssize_t size = recv(socket_, bytes.data(), bytes.size(), 0);
    if (size <= 0) return std::nullopt;
    received_.append(bytes.data(), static_cast<std::size_t>(size));
    newline = received_.find('\n');
  }
  std::string line = received_.substr(0, newline);
  received_.erase(0, newline + 1);
  return line;
}

Process::Process(const std::function<void(Channel& test)>& work) : Process(work, {-1, -1}) {}

Process::Process(const std::function<void(Channel& test)>& work, int (&&sockets)[2])
    : process_(startProcess(work, sockets)), channel_(sockets[0]) {}

Process::~Process() {
  kill();
}

int Process::wait() {
  int status = 0;
  waitpid(process_, &status, 0);
  process_ = 0;
  return status;
}

void Process::join() {
  EXPECT_EQ(wait(), 0) << "a process of the test ended without success";
}

void Process::kill() {
  if (process_ == 0) return;
  ::kill(process_, SIGKILL);
  wait();
}

void inOwnProcess(const std::function<void()>& work) {
  Process([&](Channel& /*test*/) { work(); }).join();
}

void becomeOrdinaryUser() {
  if (geteuid() == 0) becomeUser(kNobody);
}

void becomeUser(uid_t user) {
  ASSERT_EQ(setgid(user), 0);
  ASSERT_EQ(setuid(user), 0);
  // Lets a leak checker inspect the process again.
  ASSERT_EQ(prctl(PR_SET_DUMPABLE, 1), 0);
}

}  // namespace platform_tests
