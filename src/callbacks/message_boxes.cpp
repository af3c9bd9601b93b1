// The callback that gives the confirmation box. There is only one: for switching Wi-Fi.
#include <cstring>

#include "c_heap.h"
#include "callbacks/callbacks.h"
#include "conditions.h"
#include "globals.h"
#include "log.h"
#include "platform/app_util.h"
#include "translation.h"

namespace {

constexpr int kTwoButtonBox = 2;

using Message = char[VENTARO_MESSAGE_TEXT_SIZE];

bool isWifiOff(const char* key) {
  int state = 0;
  CWiFiOnOffObj.getInt(key, &state);  // a radio that does not answer counts as off
  return state == 0;
}

// `message` holds zeroes. Switching Wi-Fi off disables some features; under the energy regulation
// the box instead warns that switching it on costs power.
void writeMessage(const char* key, Message& message) {
  const char* goAhead = translate("TV_SID_SETTINGS_MIX_CASEP_SOME_FEATURES_NOT_AVAIL_GO_AHEAD");
  CStringUtil::CombinateStrings(message, sizeof(message), goAhead, translate("COM_WI_FI"), nullptr,
                                "", "");
  if (IsWiFiON() && isWifiOff(key)) {
    std::memset(message, 0, sizeof(message));
    copyText(message, sizeof(message), translate("TV_SID_CHANGING_FEATURE_INCREASE_POWER"));
  }
}

// Appends at most `most` bytes of the text, and a NUL.
void append(char* buffer, const char* text, std::size_t most) {
  const std::size_t size = strnlen(text, most);
  char* end = buffer + std::strlen(buffer);
  std::memcpy(end, text, size);
  end[size] = '\0';
}

// Appends, because the framework expects its buffers to keep what they hold.
int get_messagebox_info(const char* key, char* text, char* first, char* second, int* type) {
  const ProviderLock lock(ProviderMutex);
  LOG_MAIN("START");
  Message message = {};
  writeMessage(key, message);
  append(text, message, VENTARO_MESSAGE_TEXT_SIZE - 1);
  append(first, translate("SID_YES"), VENTARO_MESSAGE_BUTTON_SIZE - 1);
  append(second, translate("SID_NO"), VENTARO_MESSAGE_BUTTON_SIZE - 1);
  *type = kTwoButtonBox;
  LOG_MAIN("END");
  return 0;
}

}  // namespace

void installMessageBoxCallbacks(data_provider_cbs& table) {
  table.get_messagebox_info = get_messagebox_info;
}
