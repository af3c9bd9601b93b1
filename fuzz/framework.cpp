#include "framework.h"

#include <sanitizer/allocator_interface.h>

#include <cstdlib>
#include <vector>

#include "contract/own_provider.h"
#include "require.h"

namespace fuzz {

namespace {

constexpr contract::Conditions kAnyTv{
    .lockMayFail = true, .documentMayBeMisshapen = true, .languageMayBeMissing = true};

}  // namespace

std::string untilNul(std::string_view text) {
  return std::string(text.substr(0, text.find('\0')));
}

std::string cut(std::string_view text, std::size_t blockSize) {
  return untilNul(text).substr(0, blockSize - 1);
}

Framework::Framework()
    : provider_(contract::linkedExports()),
      calls_(provider_, *this, kAnyTv, &contract::ownPromises()) {
  require(Framework::sizeOf(&provider_.table()) == sizeof(data_provider_cbs),
          "the table has 60 slots");
}

Framework::~Framework() noexcept = default;

void Framework::requireCurrentValue(const std::string& key) {
  const auto stored = readableText(kDeviceNameStoreKey);
  const contract::Answer answer = calls_.currentValue(key);
  require(answer.result == (stored ? 0 : -1), "the device name gives 0, or -1 without one");
  require(!stored || answer.text == cut(*stored, VENTARO_CURRENT_VALUE_SIZE),
          "the buffer holds the stored name");
}

void Framework::giveBackArrayAlone(contract::Answer& list) {
  struct Record {
    char* text;
    int value;
    ITEM_FOLLOWING_ACTION_TYPE action;
  };
  const std::vector<void*> records(list.items, list.items + list.value);
  list.held.release();
  givesBack(list.items, list.value);
  calls_.freeListItems(list.items, 0);
  for (void* record : records) {
    std::free(static_cast<Record*>(record)->text);
    std::free(record);
  }
}

void Framework::broken(const contract::Breach& breach) {
  require(false, contract::toString(breach).c_str());
}

void Framework::before(const contract::Function& function) {
  rule_.emplace(function.isLocked);
}

void Framework::after(const contract::Answer& answer) {
  rule_.reset();
  require(!fake_platform::holdsLock(), "the lock is free after a call");
  const int refusal = answer.function->isLocked ? lockError() : 0;
  require(answer.raised.starts_with(contract::kLockError) == (refusal != 0),
          "a failed lock is raised");
  require(refusal == 0 || answer.raised.ends_with(" " + std::to_string(refusal)),
          "a failed lock is raised with its code");
  if (refusal != 0 || answer.function != &contract::function("get_help_text")) return;
  require((answer.raised == contract::kLanguageError) == !readableText(kLanguageKey).has_value(),
          "no language is raised, and only that");
}

std::optional<std::size_t> Framework::sizeOf(const void* block) {
  require(__sanitizer_get_ownership(block) == 1, "what is handed out is a block of the heap");
  return __sanitizer_get_allocated_size(block);
}

void Framework::givesBack(void** items, int count) {
  contract::freeUncovered(items, count);
}

}  // namespace fuzz
