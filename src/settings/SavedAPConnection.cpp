#include "settings/SavedAPConnection.h"

#include <json/reader.h>
#include <json/value.h>
#include <json/writer.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <memory>
#include <new>
#include <string>
#include <utility>

#include "c_heap.h"
#include "json_document.h"
#include "log.h"
#include "ventaro/data_provider.h"

namespace {

constexpr char kDocumentKey[] = "db/menu/network/TopSavedAP";
constexpr char kCommandKey[] = "memory/NW-Daemon/Command";
constexpr char kConnectCommand[] = "1";  // the network service reads a string

constexpr std::size_t kFirst = 0;
constexpr std::size_t kSecond = 1;

constexpr int kNoSignal = -100;
// The highest strength, in dBm, of each icon level but the last.
constexpr std::array kLevelLimits = {-89, -83, -75, -64};

std::unique_ptr<SavedAPConnection> Instance;

void logItem(const SavedAPData& item) {
  LOG_MAIN(" AP Name = %s status = %s ", item.ssid.c_str(), item.status.c_str());
}

}  // namespace

SavedAPConnection* SavedAPConnection::GetInstance() {
  if (Instance == nullptr) Instance.reset(new SavedAPConnection);
  return Instance.get();
}

SavedAPConnection::SavedAPConnection() {
  vconf_notify_key_changed(kDocumentKey, _VconfSavedAPCommandChnage, this);
}

void SavedAPConnection::ReadVconf() {
  const CText document(vconf_get_str(kDocumentKey));
  if (document != nullptr && m_isComplete && m_document == document.get()) {
    for (const SavedAPData& item : m_savedAPs) logItem(item);
    return;
  }
  m_isComplete = false;
  m_savedAPs.clear();
  if (document == nullptr) return;
  m_document = document.get();
  m_isComplete = usingJson([this] { return Parse(); });
}

bool SavedAPConnection::Parse() {
  Json::Value root;
  std::string errors;
  if (!parseJson(m_document, JsonRules::kStrict, root, errors)) {
    LOG_MAIN("reader.parse() - return false errs=%s", errors.c_str());
    return false;
  }
  const int count = root.get("count", "").asInt();
  const Json::Value& values = std::as_const(root)["values"];
  if (values.empty()) {
    LOG_MAIN("request.empty() - return");
    return false;
  }
  for (int i = 0; i < count; ++i) {
    const Json::Value& item = values[static_cast<Json::ArrayIndex>(i)];
    if (item.empty()) {
      LOG_MAIN("itemdata.empty() - return");
      return false;
    }
    const std::string ssid = item.get("SSID", "").asString();
    const int strength = item.get("SIGNAL_STRENGTH", "").asInt();
    const std::string status = item.get("STATUS", "").asString();
    const SavedAPData network{ssid, status, strength};
    logItem(network);
    m_savedAPs.push_back(network);
  }
  return true;
}

std::string SavedAPConnection::GetFirstItemName() {
  return ItemName(kFirst);
}
std::string SavedAPConnection::GetSecondItemName() {
  return ItemName(kSecond);
}
std::string SavedAPConnection::GetFirstItemStatus() {
  return ItemStatus(kFirst);
}
std::string SavedAPConnection::GetSecondItemStatus() {
  return ItemStatus(kSecond);
}
std::string SavedAPConnection::GetFirstItemIcon() {
  return ItemIcon(kFirst);
}
std::string SavedAPConnection::GetSecondItemIcon() {
  return ItemIcon(kSecond);
}

std::string SavedAPConnection::GetSignalStrength(int strength) {
  const auto* const limit = std::ranges::lower_bound(kLevelLimits, strength);
  const auto level = std::distance(kLevelLimits.begin(), limit);
  std::string path =
      "/usr/apps/com.norvane.tv.theme-resource/shared/res/ug-SystemSetupNetworkUG-efl/res/"
      "systemsetup/icon_wifi/oobe_icon_n_wifi_0.svg";
  path[path.size() - sizeof(".svg")] = static_cast<char>('0' + level);
  return path;
}

void SavedAPConnection::Connect(int index) {
  WriteConnectToVconf(index == 0 ? GetFirstItemName() : GetSecondItemName());
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the operation takes its own copy.
void SavedAPConnection::WriteConnectToVconf(std::string ssid) {
  const auto write = [&] {
    Json::Value command(Json::objectValue);
    command["COMMAND"] = kConnectCommand;
    command["SSID"] = ssid;
    return Json::writeString(Json::StreamWriterBuilder(), command);
  };
  const std::string text = usingJson(write);
  // What writeString() has written when memory runs out lacks the end of the object.
  if (!text.ends_with("\n}")) throw std::bad_alloc();
  vconf_set_str(kCommandKey, text.c_str());
}

void SavedAPConnection::_VconfSavedAPCommandChnage(keynode_t* /*node*/, void* /*data*/) {
  vconf_set_int(VENTARO_STORE_REFRESH, VENTARO_REFRESH_NETWORK_MENU);
}

const SavedAPData* SavedAPConnection::ReadItem(std::size_t position) {
  ReadVconf();
  if (position >= m_savedAPs.size()) return nullptr;
  return &*std::next(m_savedAPs.begin(), static_cast<std::ptrdiff_t>(position));
}

std::string SavedAPConnection::ItemName(std::size_t position) {
  const SavedAPData* item = ReadItem(position);
  if (item == nullptr) return {};
  logItem(*item);
  return item->ssid;
}

std::string SavedAPConnection::ItemStatus(std::size_t position) {
  LOG_MAIN("START");
  const SavedAPData* item = ReadItem(position);
  if (item == nullptr) return {};
  logItem(*item);
  return item->status;
}

std::string SavedAPConnection::ItemIcon(std::size_t position) {
  const SavedAPData* item = ReadItem(position);
  if (item == nullptr) return GetSignalStrength(kNoSignal);
  LOG_MAIN(" AP Name = %s status = %s SignalStrength =  %u", item->ssid.c_str(),
           item->status.c_str(), static_cast<unsigned>(item->signalStrength));
  return GetSignalStrength(item->signalStrength);
}
