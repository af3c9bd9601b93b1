// A menu framework that calls a provider and checks every call against what ventaro/data_provider.h
// promises: which exceptions may leave it, which outputs stay untouched, the sizes and ends of its
// texts, its results, and that the provider takes back all that it hands out.
#ifndef CONTRACT_CALLS_H
#define CONTRACT_CALLS_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <optional>
#include <string>
#include <vector>

#include "answer.h"
#include "promises.h"
#include "provider.h"

namespace contract {

// A promise that was not kept.
struct Breach {
  std::string function;
  std::string key;
  std::string sentence;  // what was promised
  std::string answer;    // what happened instead
};
// The whole breach on one line.
std::string toString(const Breach& breach);

// How a user of the contract takes part. Called on the thread that makes the call.
class Observer {
 public:
  Observer() = default;
  Observer(const Observer&) = delete;
  Observer& operator=(const Observer&) = delete;
  virtual ~Observer() = default;

  // May end the process but must not raise: it may be called while something is being returned.
  virtual void broken(const Breach& breach) = 0;

  // Called right before and after every call. The answer holds only the function, the key and the
  // exception.
  virtual void before(const Function& /*function*/) {}
  virtual void after(const Answer& /*answer*/) {}

  // The size with which a heap block was allocated; nothing if unknown, and then a block only has
  // to be large enough.
  virtual std::optional<std::size_t> sizeOf(const void* /*block*/) { return std::nullopt; }

  // A list is about to be returned through free_list_items().
  virtual void givesBack(void** /*items*/, int /*count*/) {}
};

// In which ways the platform makes calls fail: an exception that these do not explain is a broken
// promise.
struct Conditions {
  bool lockMayFail = false;
  bool documentMayBeMisshapen = false;  // the saved networks' document
  bool languageMayBeMissing = false;
  bool memoryMayRunOut = false;
};

struct Box {
  std::string text = "+";
  std::string first = "+";
  std::string second = "+";
};

struct Entry {
  std::string text;
  int value = 0;
  int action = 0;
};

class Buffer;

// Each function makes one call and checks the promises. What the call hands out is returned when
// the answer is destroyed, and the answer must not outlive this object. For one thread; other
// threads may call the same provider.
class Calls {
 public:
  // The table may be null when only the exported functions are called. `more` is checked in
  // addition to the header's promises; the caller keeps owning it.
  Calls(const Exports& exports, const data_provider_cbs* table, Observer& observer,
        const Conditions& conditions = {}, const Promises* more = nullptr);
  Calls(const Provider& provider, Observer& observer, const Conditions& conditions = {},
        const Promises* more = nullptr);
  Calls(const Calls&) = delete;
  Calls& operator=(const Calls&) = delete;
  ~Calls() = default;

  // What an int output holds before a call; a text is "sentinel".
  static constexpr int kBefore = 77;

  Answer createProvider();
  Answer deleteProvider(data_provider_cbs** table);

  // The provider does not examine the value.
  Answer isVisibleInt(const std::string& key);
  Answer isVisibleString(const std::string& key);
  Answer isVisibleDouble(const std::string& key);
  Answer isVisibleBool(const std::string& key);
  Answer isEnabledInt(const std::string& key);
  Answer isEnabledString(const std::string& key);
  Answer isEnabledDouble(const std::string& key);
  Answer isEnabledBool(const std::string& key);

  // The six checks for values of other types than int.
  void otherChecks(const std::string& key);

  Answer setInt(const std::string& key, int value);
  Answer setString(const std::string& key, const std::string& value);
  Answer getInt(const std::string& key, int before = kBefore);
  // The output holds a text or null before the call.
  Answer getString(const std::string& key, bool holdsText = true);
  Answer currentValue(const std::string& key);
  Answer releaseString(char* text);

  Answer displayName(const std::string& key);
  Answer helpText(const std::string& key);
  Answer titleIcon(const std::string& key);
  Answer secondIcon(const std::string& key);
  Answer moduleInfo(const std::string& key);

  // The buffers already hold texts.
  Answer messageBox(const std::string& key, const Box& before = {});

  Answer listItems(const std::string& key);
  // An item without a handle is a null item.
  Answer itemDisplayValue(const Item& item);
  Answer itemIntValue(const Item& item);
  Answer itemAction(const Item& item);
  Answer freeListItems(void** items, int count);

  // Everything that is promised about a list's entries.
  std::vector<Entry> entries(const Answer& list);

  // Null items, a null list, a null table, a null text.
  void nulls();

  // Checks an answer against a promise that only this caller knows.
  void require(bool holds, const Answer& answer, const char* sentence);

  // How often the function was called, the number of all calls, and of broken promises.
  std::uint64_t made(const Function& function) const { return made_[indexOf(function)]; }
  std::uint64_t made() const {
    return std::accumulate(made_.begin(), made_.end(), std::uint64_t{});
  }
  std::uint64_t breaches() const { return breaches_; }

 private:
  using TextCallback = int (*)(const char* key, char** value);

  template <typename Call>
  Answer make(const Function& function, const std::string& key, const Call& call);
  Answer required(Answer answer);
  void requirePromises(const Promises& promises, const Answer& answer);
  bool mayRaise(const Answer& answer) const;

  std::size_t sizeOf(Answer& answer, const void* block);
  void requireBlock(Answer& answer, const void* block, std::size_t size);
  void takeText(Answer& answer, char* block, std::size_t size);
  void takeListText(Answer& answer, const char* block);
  std::string appended(const Answer& answer, const Buffer& buffer, const std::string& before);

  Answer text(const Function& function, TextCallback callback, const std::string& key,
              std::size_t blockSize, char* before);
  Answer textAlways(const Function& function, TextCallback callback, const std::string& key);
  bool isWithoutMemory(const Answer& answer) const;
  template <typename Call>
  Answer makeOfItem(const Function& function, const Item& item, const Call& call);
  Answer requiredOfItem(Answer answer, const Item& item);
  template <typename Check, typename Value>
  Answer check(const Function& function, Check ask, const std::string& key, Value value);

  const Exports exports_;
  const data_provider_cbs* table_;
  Observer& observer_;
  const Conditions conditions_;
  const Promises* more_;
  std::array<std::uint64_t, kFunctions.size()> made_{};
  std::uint64_t breaches_ = 0;
};

}  // namespace contract

#endif  // CONTRACT_CALLS_H
