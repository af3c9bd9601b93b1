// The menu framework in a fuzz target: calls the provider's functions and requires of every call
// what ventaro/data_provider.h promises for it: the exceptions that may leave it, the lock free
// again, the sizes and ends of its texts, its outputs untouched where they are to be.
#ifndef FUZZ_FRAMEWORK_H
#define FUZZ_FRAMEWORK_H

#include <optional>
#include <string>
#include <vector>

#include "ventaro/data_provider.h"

namespace fuzz {

// What left a function. Anything else ends the process.
enum class Raised {
  kNothing,
  kLock,        // std::system_error: the lock could not be taken
  kJson,        // Json::LogicError: the saved-network document is misshapen
  kNoLanguage,  // std::logic_error: the store has no menu language
};

// The icons that the provider gives.
bool isSignalIcon(const std::string& path);
bool isStatusIcon(const std::string& path);

// The cut of a text to what fits into a block of that size, NUL included.
std::string cut(const std::string& text, std::size_t blockSize);

class Framework {
 public:
  Framework();
  ~Framework();
  Framework(const Framework&) = delete;
  Framework& operator=(const Framework&) = delete;

  Raised displayName(const std::string& key, std::string& name);
  Raised helpText(const std::string& key, std::string& text);
  Raised titleIcon(const std::string& key, std::string& path);
  Raised statusIcon(const std::string& key, std::string& path);
  Raised stringValue(const std::string& key, bool isPreset, std::optional<std::string>& value);
  Raised intValue(const std::string& key, int& value, int& result);
  Raised setInt(const std::string& key, int value, int& result);
  Raised setString(const std::string& key, const std::string& value, int& result);
  Raised isEnabled(const std::string& key, bool& enabled);
  Raised isVisible(const std::string& key, bool& visible);
  Raised moduleInfo(const std::string& key);

  // Without the lock. Nothing when there is no device name.
  std::optional<std::string> currentValue(const std::string& key);

  struct Box {
    std::string text;
    std::string first;
    std::string second;
  };
  // The box's texts, appended to what the buffers hold already.
  Raised messageBox(const std::string& key, const Box& before, Box& after);

  struct Entry {
    std::optional<std::string> text;
    int value;
    ITEM_FOLLOWING_ACTION_TYPE action;
  };
  // The list, which goes back; or its array alone does, as with a count below 1.
  Raised list(const std::string& key, bool givesBackArrayAlone, std::vector<Entry>& entries);

  // What the other functions do with any key and with nulls.
  void checksWithoutRule(const std::string& key);
  Raised nulls();

 private:
  Raised block(int (*function)(const char*, char**), const std::string& key, unsigned mayRaise,
               std::string& text);
  Entry entry(const std::string& key, void* item, int position);
  void giveBack(void** items, int count, bool arrayAlone);

  data_provider_cbs* table_ = nullptr;
};

}  // namespace fuzz

#endif  // FUZZ_FRAMEWORK_H
