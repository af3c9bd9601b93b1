#include "settings/CMobileDeviceTV.h"

#include "c_heap.h"
#include "log.h"
#include "platform/app_util.h"

CMobileDeviceTV::CMobileDeviceTV() {
  connection_create(&m_connection);
}

CMobileDeviceTV::~CMobileDeviceTV() {
  connection_destroy(m_connection);
  m_connection = nullptr;
}

int CMobileDeviceTV::getInt(const char* /*key*/, int* value) {
  const int mode = connection_get_wakeOnMobile_mode();
  LOG_MAIN("connection_get_wakeOnMobile_mode set to %d", mode);
  if (mode == -1) {
    // Readers of the log know this failure by the device name's message.
    LOG_MAIN("wifi_direct_get_device_name::status [0x%04x]", static_cast<unsigned>(mode));
    return -1;
  }
  *value = mode != 0 ? 1 : 0;
  return *value;
}

int CMobileDeviceTV::setInt(const char* /*key*/, int value) {
  LOG_MAIN("m_MobileDeviceTVList Value for provider is %d ", value);
  const int status = connection_set_wakeOnMobile_mode(value);
  LOG_MAIN("status %d ", status);
  return status;
}

int CMobileDeviceTV::connection_get_wakeOnMobile_mode() {
  bool enabled = false;
  const int result = util_get_wakeOnMobile_mode(&enabled);
  if (result != 0) {
    LOG_MAIN("Fail to get wakeOnMobile mode[0x%x]\n", static_cast<unsigned>(result));
    return -1;
  }
  LOG_MAIN("Request to get wakeOnMobile mode succeeded : ");
  if (!enabled) {
    LOG_MAIN("wakeOnMobile Disabled\n");
    return 0;
  }
  LOG_MAIN("wakeOnMobile Enabled\n");
  LOG_MAIN("_IsPowerOnWithMobileEnable =>%d", 1);
  return 1;
}

int CMobileDeviceTV::connection_set_wakeOnMobile_mode(int value) {
  // Readers of the log know this message in this form, worded like a console prompt.
  LOG_MAIN("Enter the wakeOnMobile Mode Value Enable ->1 ,Disable ->0:\n");
  if (value < 0) {
    LOG_MAIN("Failed to read input data Try Again..\n");
    return -1;
  }
  const int result = util_set_wakeOnMobile_mode(value != 0);
  if (result != 0) {
    LOG_MAIN("Fail to set wakeOnMobile mode [0x%x]\n", static_cast<unsigned>(result));
    return -1;
  }
  LOG_MAIN("Request to change wakeOnMobile Mode succeeded");
  return connection_get_wakeOnMobile_mode();
}

void CMobileDeviceTV::fillList() {
  m_itemTexts.fill();
}

const char** CMobileDeviceTV::getListItems(const char* /*key*/, int* count) {
  fillList();
  LOG_MAIN("listSize==%d\n", m_itemTexts.count());
  return m_itemTexts.copy(count);
}

void CMobileDeviceTV::setOnOffStatus(char** text) {
  const int mode = connection_get_wakeOnMobile_mode();
  LOG_MAIN("connection_get_wakeOnMobile_mode set to %d", mode);
  if (mode == -1) {
    LOG_MAIN("Invalid");
    return;
  }
  putOnOffText(mode != 0, text);
}

void CMobileDeviceTV::string2cstr(const char* source, char** target) {
  copyToHeap(source, target);
}
