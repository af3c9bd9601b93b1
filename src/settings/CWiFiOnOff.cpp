#include "settings/CWiFiOnOff.h"

#include <glib.h>

#include <cstring>

#include "log.h"
#include "platform/config_store.h"
#include "platform/wifi.h"
#include "ventaro/data_provider.h"

namespace {

constexpr unsigned kTimerPeriodSeconds = 2;
constexpr int kSilentFirings = 3;

}  // namespace

CWiFiOnOff::CWiFiOnOff() {
  connection_create(&m_connection);
}

CWiFiOnOff::~CWiFiOnOff() {
  stopTimer();
  connection_destroy(m_connection);
  m_connection = nullptr;
}

int CWiFiOnOff::getInt(const char* /*key*/, int* value) {
  const int result = wifi_get_enable_qx(value);
  LOG_MAIN("wifi_get_power_state  ret = [%d], value = [%d]", result, *value);
  return result == 0 ? 1 : -1;
}

int CWiFiOnOff::setInt(const char* /*key*/, int value) {
  const int result = wifi_set_enable_qx(value != 0 ? 1 : 0);
  // The value is recorded and the menu refreshed even when the radio refused.
  vconf_set_int("memory/menu/network/wifionui_enabled", value);
  LOG_MAIN("wifi_set_power_state ret = [%d], value = [%d]", result, value);
  UpdateWifiDirect();
  return result == 0 ? 1 : -1;
}

const char** CWiFiOnOff::getListItems(const char* key, int* count) {
  fillList();
  if (std::strcmp(key, VENTARO_KEY_WIFI) != 0) return nullptr;
  LOG_MAIN("listSize==%d\n", m_itemTexts.count());
  return m_itemTexts.copy(count);
}

void CWiFiOnOff::fillList() {
  m_itemTexts.fill();
}

void CWiFiOnOff::setOnOffStatus(char** text) {
  int state = 0;
  const int result = wifi_get_enable_qx(&state);
  // Readers of the log know this line by power-on-with-mobile's message.
  LOG_MAIN("connection_get_wakeOnMobile_mode set to %d", result);
  if (result != 0) {
    LOG_MAIN("Invalid");
    return;
  }
  putOnOffText(state >= 1, text);
}

void CWiFiOnOff::UpdateWifiDirect() {
  stopTimer();
  m_timerSource = g_timeout_add_seconds(kTimerPeriodSeconds, OnTimerTimeOut, this);
}

int CWiFiOnOff::OnTimerTimeOut(void* data) {
  if (data == nullptr) return G_SOURCE_REMOVE;
  auto& self = *static_cast<CWiFiOnOff*>(data);
  // Meanwhile, a switch may remove this timer and start the next one. It resets the count before it
  // takes the id. Here the id is read before the count, so when the count says that this is the
  // last firing, the id is not the next timer's.
  unsigned int source = self.m_timerSource;
  int firings = self.m_tickCount;
  if (firings != kSilentFirings) {
    self.m_tickCount.compare_exchange_strong(firings, firings + 1);  // unless it was reset
    return G_SOURCE_CONTINUE;
  }
  if (!self.m_tickCount.compare_exchange_strong(firings, 0)) return G_SOURCE_CONTINUE;
  // Whoever takes the id removes the timer.
  if (self.m_timerSource.compare_exchange_strong(source, 0)) g_source_remove(source);
  if (vconf_set_int(VENTARO_STORE_REFRESH, VENTARO_REFRESH_WHOLE_MENU) != 0) {
    LOG_MAIN("Failed to set REFRESH_MENU_VCONF ");
  } else {
    LOG_MAIN("Success to Set REFRESH_MENU_VCONF");
  }
  return G_SOURCE_REMOVE;
}

void CWiFiOnOff::stopTimer() {
  if (m_timerSource == 0) return;
  m_tickCount = 0;  // before the id, see OnTimerTimeOut()
  const unsigned int source = m_timerSource.exchange(0);
  if (source == 0) return;  // the timer has ended itself
  g_source_remove(source);
  m_tickCount = 0;  // again: the timer may have fired since
}
