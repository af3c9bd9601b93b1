#include "completion.h"

#include <algorithm>
#include <map>
#include <set>

#include "../host/raw_call.h"
#include "platform/host/config_store.h"
#include "platform/host/faults.h"
#include "platform/host/product.h"
#include "platform/host/resources.h"
#include "session.h"

namespace cli {

namespace {

using Words = std::vector<std::string>;

template <typename Value>
Words namesOf(const std::map<std::string, Value>& values) {
  Words names;
  for (const auto& [name, value] : values) names.push_back(name);
  return names;
}

bool beginsWith(const Words& words, const Words& beginning) {
  return beginning.size() <= words.size() &&
         std::equal(beginning.begin(), beginning.end(), words.begin());
}

bool isOption(const std::string& word) {
  return word.starts_with("-");
}

// What stands where one of a command's arguments is to be, by what was given before.
class Place {
 public:
  Place(const Command& command, const Words& given) : command_(command) {
    for (const std::string& word : given) {
      if (option_ != nullptr) {
        option_ = nullptr;
      } else if (isOption(word)) {
        option_ = optionWithValue(word);
      } else {
        before_.push_back(word);
      }
    }
  }

  Words offers(Session& session) const {
    if (option_ != nullptr) return valuesOf(*option_, session);
    Words offers = {"--help"};
    std::size_t left = before_.size();
    bool isFound = false;
    for (const Argument& argument : command_.arguments) {
      if (argument.synopsis == nullptr) break;
      if (isOption(argument.name())) {
        offers.push_back(argument.name());
      } else if (!isFound && (left == 0 || argument.takes == Takes::kTexts)) {
        std::ranges::copy(valuesOf(argument, session), std::back_inserter(offers));
        isFound = true;
      } else {
        --left;
      }
    }
    return offers;
  }

 private:
  const Argument* optionWithValue(const std::string& word) const {
    const auto* const found =
        std::ranges::find_if(command_.arguments, [&word](const Argument& argument) {
          return argument.synopsis != nullptr && argument.takes != Takes::kNothing &&
                 argument.name() == word;
        });
    return found != std::end(command_.arguments) ? found : nullptr;
  }

  Words valuesOf(const Argument& argument, Session& session) const {
    return argument.values != nullptr ? argument.values(session, before_)
                                      : wordsOf(argument.offers);
  }

  const Command& command_;
  Words before_;                      // the arguments that are no options
  const Argument* option_ = nullptr;  // whose value comes next
};

}  // namespace

std::vector<std::string> whatMayFollow(std::span<const Command> table, Session& session,
                                       const std::vector<std::string>& words) {
  std::set<std::string> all;
  for (const Command& command : table) {
    const Words own = wordsOf(command.words);
    if (own.size() > words.size()) {
      if (beginsWith(own, words)) all.insert(own[words.size()]);
    } else if (command.action != nullptr && beginsWith(words, own)) {
      const Words given(words.begin() + std::ssize(own), words.end());
      return Place(command, given).offers(session);
    }
  }
  return {all.begin(), all.end()};
}

std::vector<std::string> menuKeys(Session& session, const std::vector<std::string>& /*before*/) {
  return session.menu().keys();
}

std::vector<std::string> choices(Session& session, const std::vector<std::string>& before) {
  Words texts;
  for (const auto& entry : session.menu().list(before.front())) texts.push_back(entry.text);
  return texts;
}

std::vector<std::string> storeKeys(Session& /*session*/,
                                   const std::vector<std::string>& /*before*/) {
  return namesOf(platform::host::ConfigStore::instance().list(""));
}

std::vector<std::string> scenarios(Session& /*session*/,
                                   const std::vector<std::string>& /*before*/) {
  return platform::host::resourceNames("scenarios");
}

std::vector<std::string> faultyFunctions(Session& /*session*/,
                                         const std::vector<std::string>& /*before*/) {
  return platform::host::functionsThatCanFail();
}

std::vector<std::string> featureFlags(Session& /*session*/,
                                      const std::vector<std::string>& /*before*/) {
  return namesOf(platform::host::knownFlags());
}

std::vector<std::string> callbacks(Session& /*session*/,
                                   const std::vector<std::string>& /*before*/) {
  return menu::rawFunctions();
}

}  // namespace cli
