// The switch that lets a mobile device on the network turn the TV on (the wake-on-mobile mode). It
// keeps no value of its own: the platform does.
#ifndef VENTARO_CMOBILEDEVICETV_H
#define VENTARO_CMOBILEDEVICETV_H

#include "platform/connection.h"
#include "settings/on_off_list.h"

// All operations but construction and destruction run under the caller's ProviderMutex.
class CMobileDeviceTV {
 public:
  CMobileDeviceTV();
  virtual ~CMobileDeviceTV();
  CMobileDeviceTV(const CMobileDeviceTV&) = delete;
  CMobileDeviceTV& operator=(const CMobileDeviceTV&) = delete;

  // Puts the mode, 1 or 0, into `*value` and returns it too. Returns -1, `*value` untouched, when
  // it cannot be read. The key is not examined.
  virtual int getInt(const char* key, int* value);

  // Returns what connection_set_wakeOnMobile_mode() does. The key is not examined.
  virtual int setInt(const char* key, int value);

  // The mode: 1 enabled, 0 disabled, -1 when the platform does not say.
  int connection_get_wakeOnMobile_mode();

  // Switches the mode on (any value above 0) or off (0). Returns the mode as read back: 1 or 0; -1
  // for a negative value, a refused switch or a failed read.
  int connection_set_wakeOnMobile_mode(int value);

  // Translates the two entries again.
  void fillList();

  // Returns the two entries, Off and On, each in a block of a list text, and 2 in `*count`; the
  // caller owns the array and the blocks, all of the C heap. The key is not examined.
  const char** getListItems(const char* key, int* count);

  // Gives the caller the mode as a translated word, a copy of the C heap. When the mode cannot be
  // read, `*text` is untouched.
  void setOnOffStatus(char** text);

  // Gives the caller a copy of `source` in `*target`, of the C heap; null when memory runs out.
  static void string2cstr(const char* source, char** target);

 private:
  connection_h m_connection = nullptr;
  OnOffTexts m_itemTexts;
};

#endif  // VENTARO_CMOBILEDEVICETV_H
