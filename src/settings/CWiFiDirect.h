// The Wi-Fi Direct switch: a stored preference, shown as On only while the TV is connected to a 6
// GHz access point.
#ifndef VENTARO_CWIFIDIRECT_H
#define VENTARO_CWIFIDIRECT_H

#include "settings/on_off_list.h"

// All operations but construction and destruction run under the caller's ProviderMutex.
class CWiFiDirect {
 public:
  // Initialises the stored preference, see setInitialValue().
  CWiFiDirect();
  virtual ~CWiFiDirect() = default;
  CWiFiDirect(const CWiFiDirect&) = delete;
  CWiFiDirect& operator=(const CWiFiDirect&) = delete;

  // Puts what the menu shows into `*value`, 1 or 0. Returns 1. The key is not examined.
  virtual int getInt(const char* key, int* value);

  // Stores the preference: On for 1, Off for any other value. Returns the store's result, 0 for
  // success. The key is not examined.
  virtual int setInt(const char* key, int value);

  // Returns the two entries, Off and On, each in a block of a list text, and 2 in `*count`; the
  // caller owns the array and the blocks, all of the C heap. For any key other than the switch's
  // own, returns null and leaves `*count` untouched.
  const char** getListItems(const char* key, int* count);

  // Translates the two entries again.
  void fillList();

  // Gives the caller what the menu shows as a translated word, a copy of the C heap.
  void setOnOffStatus(char** text);

  // What the menu shows: On if the access point is in the 6 GHz band and the preference is On or
  // was never chosen.
  bool getWifiDirectStatus();

  // Whether the TV is connected to an access point in the 6 GHz band.
  bool IsConnectedAP6G();

  // The stored preference: 0 never chosen, 1 On, 2 Off; -1 when it cannot be read.
  int getVconfValue();

  // Stores On when the TV is on a 6 GHz access point and the preference was never chosen.
  void setInitialValue();

 private:
  OnOffTexts m_itemTexts;
};

#endif  // VENTARO_CWIFIDIRECT_H
