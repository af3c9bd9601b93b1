// A menu framework that calls a provider and requires of every call what ventaro/data_provider.h
// promises: which exceptions may leave it, that its outputs are untouched where they are to be, the
// sizes and ends of its texts, its results, and that all it hands out is taken back.
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
  std::string sentence;  // what should have been
  std::string answer;    // what was
};
// All of it in one line.
std::string toString(const Breach& breach);

// What a user of the contract does with it. Called on the thread that makes the call.
class Observer {
 public:
  Observer() = default;
  Observer(const Observer&) = delete;
  Observer& operator=(const Observer&) = delete;
  virtual ~Observer() = default;

  // May end the process, must not raise: it may come while something goes back.
  virtual void broken(const Breach& breach) = 0;

  // Right before and after every call. Of the answer are known the function, the key, and what was
  // raised.
  virtual void before(const Function& /*function*/) {}
  virtual void after(const Answer& /*answer*/) {}

  // How many bytes a block of the heap was asked for with. Nothing: it is not known, and only
  // required that so many bytes are there.
  virtual std::optional<std::size_t> sizeOf(const void* /*block*/) { return std::nullopt; }

  // A list is about to go back through free_list_items().
  virtual void givesBack(void** /*items*/, int /*count*/) {}
};

// In which ways the platform lets calls fail: an exception that these do not account for is a
// broken promise. There is memory enough, so std::bad_alloc always is one.
struct Conditions {
  bool lockMayFail = false;
  bool documentMayBeMisshapen = false;  // of the saved networks
  bool languageMayBeMissing = false;
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

// Each function makes one call and requires what is promised; what it hands out goes back with the
// answer, which must not outlive this. For one thread; the provider may have others.
class Calls {
 public:
  // The table may be null when only the exported functions are called. `more` is required beside
  // the header's promises, and stays the caller's.
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

  // The value is one that is not examined.
  Answer isVisibleInt(const std::string& key);
  Answer isVisibleString(const std::string& key);
  Answer isVisibleDouble(const std::string& key);
  Answer isVisibleBool(const std::string& key);
  Answer isEnabledInt(const std::string& key);
  Answer isEnabledString(const std::string& key);
  Answer isEnabledDouble(const std::string& key);
  Answer isEnabledBool(const std::string& key);

  // The six of them that are of another kind of value than int.
  void otherChecks(const std::string& key);

  Answer setInt(const std::string& key, int value);
  Answer setString(const std::string& key, const std::string& value);
  Answer getInt(const std::string& key, int before = kBefore);
  // The output holds before the call a text, or null.
  Answer getString(const std::string& key, bool holdsText = true);
  Answer currentValue(const std::string& key);
  Answer releaseString(char* text);

  Answer displayName(const std::string& key);
  Answer helpText(const std::string& key);
  Answer titleIcon(const std::string& key);
  Answer secondIcon(const std::string& key);
  Answer moduleInfo(const std::string& key);

  // The buffers hold texts already.
  Answer messageBox(const std::string& key, const Box& before = {});

  Answer listItems(const std::string& key);
  // An item without a handle is a null item.
  Answer itemDisplayValue(const Item& item);
  Answer itemIntValue(const Item& item);
  Answer itemAction(const Item& item);
  Answer freeListItems(void** items, int count);

  // All that is said of a list's entries.
  std::vector<Entry> entries(const Answer& list);

  // Null items, a null list, a null table, a null text.
  void nulls();

  // A promise that this caller knows of, required of an answer that it got.
  void require(bool holds, const Answer& answer, const char* sentence);

  // How often the function was called, how many calls were made, and how many promises were broken.
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
