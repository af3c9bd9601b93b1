#include "menu_tree.h"

#include <algorithm>
#include <set>
#include <string_view>

#include "platform/host/json_file.h"

namespace menu {

namespace {

using platform::host::JsonFile;

struct KindName {
  ItemKind kind;
  std::string_view name;
};

constexpr KindName kKindNames[] = {
    {ItemKind::kPage, "page"},
    {ItemKind::kAction, "action"},
    {ItemKind::kChoice, "choice"},
    {ItemKind::kDeviceName, "device-name"},
    {ItemKind::kSavedNetwork, "saved-network"},
};

ItemKind readKind(const JsonFile& file, const Json::Value& entry) {
  const std::string name = file.text(entry, "kind");
  const auto* const found = std::ranges::find(kKindNames, name, &KindName::name);
  if (found == std::end(kKindNames)) {
    file.expected("\"page\", \"action\", \"choice\", \"device-name\" or \"saved-network\"", "kind",
                  entry["kind"]);
  }
  return found->kind;
}

// Empty when it is missing.
std::string optionalText(const JsonFile& file, const Json::Value& object, const char* member) {
  return object.isMember(member) ? file.text(object, member) : "";
}

bool isOfRegion(const JsonFile& file, const Json::Value& entry, const std::string& region) {
  if (!entry.isMember("region")) return true;
  const std::string own = file.text(entry, "region");
  if (own != "us" && own != "other") {
    file.expected("\"us\" or \"other\"", "region", entry["region"]);
  }
  return own == region;
}

// The list of a saved network is that of its states, and has a key of its own.
std::string readListKey(const JsonFile& file, const Json::Value& entry, const MenuNode& node) {
  switch (node.kind) {
    case ItemKind::kPage:
    case ItemKind::kAction:
      return {};
    case ItemKind::kChoice:
    case ItemKind::kDeviceName:
      return node.key;
    case ItemKind::kSavedNetwork:
      return optionalText(file, entry, "states");
  }
  return {};
}

// A member that items of one kind have, and no others.
void allowOnlyIn(ItemKind kind, const char* member, const JsonFile& file, const Json::Value& entry,
                 const MenuNode& node) {
  if (node.kind == kind || !entry.isMember(member)) return;
  file.fail(entry[member], "only a " + std::string(kindName(kind)) + " has \"" + member + "\"");
}

MenuNode readNode(const JsonFile& file, const Json::Value& entry) {
  file.allowOnly(entry, {"key", "kind", "items", "states", "region"});
  MenuNode node{file.text(entry, "key"), readKind(file, entry), {}, {}};
  if (node.key.empty()) file.expected("a menu key", "key", entry["key"]);
  allowOnlyIn(ItemKind::kPage, "items", file, entry, node);
  allowOnlyIn(ItemKind::kSavedNetwork, "states", file, entry, node);
  node.listKey = readListKey(file, entry, node);
  return node;
}

// The items of a region; no key may stand among them twice.
std::vector<MenuNode> readItems(const JsonFile& file, const Json::Value& parent,
                                const std::string& region, std::set<std::string>& keys) {
  std::vector<MenuNode> nodes;
  for (const Json::Value& entry : file.array(parent, "items")) {
    MenuNode node = readNode(file, entry);
    const bool isShown = isOfRegion(file, entry, region);
    if (isShown && !keys.insert(node.key).second) {
      file.fail(entry["key"], "the key \"" + node.key + "\" stands here twice");
    }
    if (node.kind == ItemKind::kPage) node.items = readItems(file, entry, region, keys);
    if (isShown) nodes.push_back(std::move(node));
  }
  return nodes;
}

void collect(const std::vector<MenuNode>& nodes, std::vector<const MenuNode*>& all) {
  for (const MenuNode& node : nodes) {
    all.push_back(&node);
    collect(node.items, all);
  }
}

}  // namespace

const char* kindName(ItemKind kind) {
  return std::ranges::find(kKindNames, kind, &KindName::kind)->name.data();
}

MenuTree readMenuTree(const std::filesystem::path& path, const std::string& region) {
  const JsonFile file(path);
  file.allowOnly(file.root(), {"text_domain", "items"});
  std::set<std::string> keys;
  return {optionalText(file, file.root(), "text_domain"),
          readItems(file, file.root(), region, keys)};
}

std::vector<const MenuNode*> flatten(const std::vector<MenuNode>& nodes) {
  std::vector<const MenuNode*> all;
  collect(nodes, all);
  return all;
}

}  // namespace menu
