// The Wi-Fi power switch. After every switch it asks the whole menu to refresh itself once the
// radio has settled.
#ifndef VENTARO_CWIFIONOFF_H
#define VENTARO_CWIFIONOFF_H

#include <atomic>

#include "platform/connection.h"
#include "settings/on_off_list.h"

// All operations but construction, destruction and the timer run under the caller's ProviderMutex.
class CWiFiOnOff {
 public:
  CWiFiOnOff();
  virtual ~CWiFiOnOff();
  CWiFiOnOff(const CWiFiOnOff&) = delete;
  CWiFiOnOff& operator=(const CWiFiOnOff&) = delete;

  // Puts the radio's state into `*value`. Returns 1, or -1 when it cannot be read. The key is not
  // examined.
  virtual int getInt(const char* key, int* value);

  // Switches the radio on (any value but 0) or off, records the value unchanged, and starts the
  // refresh timer. Returns 1, or -1 when the radio did not switch. The key is not examined.
  virtual int setInt(const char* key, int value);

  // Returns the two entries, Off and On, each in a block of a list text, and 2 in `*count`; the
  // caller owns the array and the blocks, all of the C heap. For any key other than the switch's
  // own, returns null and leaves `*count` untouched.
  const char** getListItems(const char* key, int* count);

  // Translates the two entries again.
  void fillList();

  // Gives the caller the state as a translated word, a copy of the C heap. When the radio's state
  // cannot be read, `*text` is untouched.
  void setOnOffStatus(char** text);

  // Starts the refresh timer, or restarts it.
  void UpdateWifiDirect();

  // Fires every two seconds, `data` being the object; asks for the refresh on the fourth firing.
  // Returns 1 to continue, 0 to stop. Runs on the thread of the GLib main context, without the
  // lock.
  static int OnTimerTimeOut(void* data);

 private:
  void stopTimer();

  // Shared by the timer, which takes no lock, and the callbacks.
  std::atomic<unsigned int> m_timerSource{0};
  std::atomic<int> m_tickCount{0};
  connection_h m_connection = nullptr;
  OnOffTexts m_itemTexts;
};

#endif  // VENTARO_CWIFIONOFF_H
