#include "texts.h"

#include <algorithm>
#include <map>
#include <utility>

#include "language.h"
#include "menu_model.h"
#include "raw_call.h"

namespace menu {

namespace {

// A text that a callback gives, and how many bytes of it the ABI carries.
struct Source {
  const char* callback;
  const char* output;  // of several
  std::size_t most;
};

constexpr Source kName{"get_display_name", "", VENTARO_TEXT_SIZE - 1};
constexpr Source kHelp{"get_help_text", "", VENTARO_TEXT_SIZE - 1};
constexpr Source kValue{"get_string", "", 0};
constexpr Source kEntry{"get_list_item_display_value", "", VENTARO_LIST_TEXT_SIZE};
constexpr Source kBox[] = {{"get_messagebox_info", "text", VENTARO_MESSAGE_TEXT_SIZE - 1},
                           {"get_messagebox_info", "first", VENTARO_MESSAGE_BUTTON_SIZE - 1},
                           {"get_messagebox_info", "second", VENTARO_MESSAGE_BUTTON_SIZE - 1}};

// The texts of the menu as it is, by their places.
class Reading {
 public:
  Reading(const Provider& provider, MenuModel& menu, const std::vector<MenuNode>& tree)
      : provider_(provider) {
    for (const MenuNode* node : flatten(tree)) readItem(*node, menu.read(node->key));
  }

  // In the order in which they were read.
  std::vector<std::pair<TextPlace, std::string>> texts;

 private:
  void readItem(const MenuNode& node, const Item& item) {
    read(node, kName);
    if (!item.help.empty()) read(node, kHelp);
    if (item.value) read(node, kValue);
    for (std::size_t i = 0; i < item.list.size(); ++i) readEntry(node, item.list[i].text, i);
    if (!item.box) return;
    for (const Source& source : kBox) read(node, source);
  }

  // A list may be asked for with another key than the item.
  void readEntry(const MenuNode& node, const std::string& shown, std::size_t index) {
    const std::string number = std::to_string(index);
    std::string text = textOf(kEntry, node.listKey, number);
    if (text.starts_with("SID_")) text = shown;  // looked up by the menu
    add(node, kEntry, number, text);
  }

  void read(const MenuNode& node, const Source& source) {
    add(node, source, source.output, textOf(source, node.key, std::nullopt));
  }

  std::string textOf(const Source& source, const std::string& key,
                     const std::optional<std::string>& value) const {
    for (const auto& [name, output] : callRaw(provider_, source.callback, key, value).outputs) {
      if (*source.output != '\0' && name != source.output) continue;
      const auto* text = std::get_if<std::string>(&output);
      return text != nullptr ? *text : "";
    }
    return "";
  }

  void add(const MenuNode& node, const Source& source, const std::string& which, std::string text) {
    const std::string from = std::string(source.callback) + (which.empty() ? "" : " " + which);
    texts.emplace_back(TextPlace{node.key, from, "", source.most}, std::move(text));
  }

  const Provider& provider_;
};

class Collection {
 public:
  Collection(Provider& provider, const std::vector<MenuNode>& tree, std::string language)
      : provider_(provider), tree_(tree), menu_(provider, tree), language_(std::move(language)) {}

  // The texts of the menu as it is, but for those that were at the same place in another state.
  void collect(const std::string& state) {
    const Reading ids = readIn("C");
    const Reading english = readIn("en");
    const Reading own = readIn(language_);
    for (std::size_t i = 0; i < ids.texts.size(); ++i) {
      const auto& [place, id] = ids.texts[i];
      PlacedText text{id, english.texts.at(i).second, own.texts.at(i).second, place};
      text.place.state = state;
      if (text.id != text.english || text.id != text.text) add(std::move(text));
    }
  }

  // Each item that has a value, set to each of its values.
  void collectStates() {
    for (const MenuNode* node : flatten(tree_)) {
      const Item item = menu_.read(node->key);
      if (!item.position) continue;
      for (const Provider::ListEntry& entry : item.list) {
        if (provider_.setInt(node->key, entry.value).value_or(-1) < 0) continue;
        collect(node->key + " = " + std::to_string(entry.value));
      }
      provider_.setInt(node->key, *item.position);
    }
  }

  std::vector<PlacedText> texts;

 private:
  Reading readIn(const std::string& language) {
    useLanguage(language);
    return {provider_, menu_, tree_};
  }

  void add(PlacedText text) {
    const bool isKnown = std::ranges::any_of(texts, [&text](const PlacedText& known) {
      return known.place.item == text.place.item && known.place.from == text.place.from &&
             known.text == text.text && known.id == text.id && known.english == text.english;
    });
    if (!isKnown) texts.push_back(std::move(text));
  }

  Provider& provider_;
  const std::vector<MenuNode>& tree_;
  MenuModel menu_;
  std::string language_;
};

}  // namespace

std::vector<PlacedText> textsOf(Provider& provider, const std::vector<MenuNode>& tree,
                                const std::string& language) {
  Collection collection(provider, tree, language);
  collection.collect("");
  collection.collectStates();
  return std::move(collection.texts);
}

}  // namespace menu
