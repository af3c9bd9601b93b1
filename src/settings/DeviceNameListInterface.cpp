#include "settings/DeviceNameListInterface.h"

#include "c_heap.h"
#include "log.h"
#include "platform/config_store.h"
#include "platform/markup.h"
#include "settings/on_off_list.h"

namespace {

constexpr char kDefaultNameKey[] = "db/menu/network/devicename/default_tv_name";
constexpr char kNameKey[] = "db/menu/network/devicename/tv_name";

int lastIndex() {
  return static_cast<int>(DeviceNameListInterface::m_DevicenameList.size()) - 1;
}

// Before each name: the left-to-right override, opened and never closed, since the
// name ends the text.
constexpr char kOverride[] = "&#x202d;";

// The name as text-widget markup; null when the platform returns null.
CText markupOf(const std::string& name) {
  CText markup(evas_textblock_text_utf8_to_markup(nullptr, name.c_str()));
  if (markup == nullptr) LOG_MAIN("evas_textblock_text_utf8_to_markup returned NULL");
  return markup;
}

bool hasText(const CText& text) {
  return text != nullptr && *text != '\0';
}

const std::string& entry(int index) {
  return DeviceNameListInterface::m_DevicenameList.at(static_cast<std::size_t>(index));
}

}  // namespace

int DeviceNameListInterface::getListItemIntValue(void* item, int* value) {
  int result = -1;
  int index = 0;
  const int last = lastIndex();
  if (item == nullptr) {
    // Readers of the log know this failure by another setting's message.
    LOG_MAIN("wifi_direct_get_device_name::status [0x%04x]", static_cast<unsigned>(result));
  } else {
    result = 0;
    const auto* text = static_cast<const char*>(item);
    while (index < last && MakeMarkup(entry(index)) != text) ++index;
    if (index < last) {
      LOG_MAIN("dName=%s\n", text);
      *value = index;
    }
  }
  if (index == last) *value = last;
  return result;
}

const char** DeviceNameListInterface::getListItems(const char* /*key*/, int* count) {
  CArray<char> texts(m_DevicenameList.size());
  const int last = lastIndex();
  for (int i = 0; i < last; ++i) {
    const CText markup = markupOf(entry(i));
    texts[static_cast<std::size_t>(i)] =
        hasText(markup) ? newListText(kOverride, markup.get()) : newListText({});
  }
  if (last >= 0) texts[static_cast<std::size_t>(last)] = newListText(entry(last));
  *count = last + 1;
  return const_cast<const char**>(texts.release());
}

int DeviceNameListInterface::getListItemDisplayValue(void* item, char** text) {
  *text = static_cast<char*>(item);
  return 0;
}

int DeviceNameListInterface::getInt(const char* /*key*/, int* value) {
  int result = -1;
  int index = 0;
  const int last = lastIndex();
  const CText name(vconf_get_str(kNameKey));
  if (name == nullptr) {
    LOG_MAIN("wifi_direct_get_device_name::status [0x%04x]", static_cast<unsigned>(result));
  } else {
    result = 0;
    while (index < last && entry(index) != name.get()) ++index;
    if (index < last) {
      LOG_MAIN("dName==%s\n", name.get());
      *value = index;
    }
  }
  if (index == last) *value = last;
  LOG_MAIN("value=%d\n", *value);
  return result;
}

int DeviceNameListInterface::setInt(const char* /*key*/, int value) {
  int result = -1;
  // Every entry but the last stands for the default name.
  if (value >= 0 && value < lastIndex()) {
    result = vconf_set_str(kNameKey, m_DefaultDeviceName.c_str());
  }
  if (result == 0) {
    LOG_MAIN("Device Name set to %s", m_DefaultDeviceName.c_str());
  } else {
    LOG_MAIN("set_device_name::status [0x%04x]", static_cast<unsigned>(result));
  }
  return result;
}

int DeviceNameListInterface::getListItemIcon(void* /*item*/, char** /*icon*/) {
  return 0;
}

void DeviceNameListInterface::fillDeviceNameList() {
  if (m_IsFillDeviceNameList) return;
  m_DevicenameList.clear();
  const CText name(vconf_get_str(kDefaultNameKey));
  LOG_MAIN("dName==%s\n", name.get());
  if (name != nullptr) {
    m_DefaultDeviceName = name.get();
    m_DevicenameList.push_back(m_DefaultDeviceName);
  }
  // Handed out as it is: the framework looks this ID up itself.
  m_DevicenameList.emplace_back("SID_USER_INPUT");
  m_IsFillDeviceNameList = true;
}

std::string DeviceNameListInterface::MakeMarkup(const std::string& name) {
  const CText markup = markupOf(name);
  return hasText(markup) ? kOverride + std::string(markup.get()) : std::string();
}
