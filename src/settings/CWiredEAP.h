// The switch of 802.1X authentication on the wired connection (EAP over Ethernet).
#ifndef VENTARO_CWIREDEAP_H
#define VENTARO_CWIREDEAP_H

#include "platform/connection.h"
#include "settings/on_off_list.h"

// All operations but construction and destruction run under the caller's ProviderMutex.
class CWiredEAP {
 public:
  // Opens a connection and looks up the Ethernet profile, once in the library's lifetime.
  CWiredEAP();
  virtual ~CWiredEAP();
  CWiredEAP(const CWiredEAP&) = delete;
  CWiredEAP& operator=(const CWiredEAP&) = delete;

  // Puts the stored choice, 1 or 0, into `*value` and returns it too. The key is not examined.
  virtual int getInt(const char* key, int* value);

  // Switches 802.1X (0 or 1) and stores the choice. Returns the store's result, 0 for success.
  // Before the list was first requested, and for other values, changes nothing and returns -1. The
  // key is only logged.
  virtual int setInt(const char* key, int value);

  // Takes the first Ethernet profile of the connection.
  void m_GetConnectionProfile();

  // Switch 802.1X on the Ethernet profile, if there is one. A failure is printed to standard
  // output.
  void m_EnableEAP();
  void m_DisableEAP();

  // Translates the two entries again.
  void fillList();

  // Returns the two entries, Off and On, each in a block of a list text, and 2 in `*count`; the
  // caller owns the array and the blocks, all of the C heap. The key is not examined.
  const char** getListItems(const char* key, int* count);

  // Gives the caller the stored choice as a translated word, a copy of the C heap.
  void setOnOffStatus(char** text);

 private:
  connection_h m_connection = nullptr;
  // The profile and the iterator are freed with the connection, never separately.
  connection_profile_h m_ethernetProfile = nullptr;
  connection_profile_iterator_h m_profileIterator = nullptr;
  OnOffTexts m_itemTexts;
};

#endif  // VENTARO_CWIREDEAP_H
