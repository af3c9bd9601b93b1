// The saved Wi-Fi networks that the network service publishes in the configuration store, and
// connecting to the first two of them.
#ifndef VENTARO_SAVED_AP_CONNECTION_H
#define VENTARO_SAVED_AP_CONNECTION_H

#include <cstddef>
#include <list>
#include <string>

#include "platform/config_store.h"

struct SavedAPData {
  std::string ssid;
  std::string status;  // as published; "Connecting" and "Connected" have icons of their own
  int signalStrength;  // in dBm
};

// All operations but the notification run under the caller's ProviderMutex. Names, states, icons
// and Connect() read the published document first, so they raise jsoncpp's Json::LogicError when
// its structure is wrong. Nothing here catches them: the framework does.
class SavedAPConnection {
 public:
  // The only object, made at the first call. The library owns it until it is unloaded.
  static SavedAPConnection* GetInstance();

  SavedAPConnection(const SavedAPConnection&) = delete;
  SavedAPConnection& operator=(const SavedAPConnection&) = delete;

  // Reads the published document into the list. The list is empty when there is no document, and
  // ends at the first missing element. An unchanged document that was read to its end is not parsed
  // again: nearly every call of the menu needs it.
  void ReadVconf();

  // How many networks the last ReadVconf() found.
  std::size_t GetCount() const { return m_savedAPs.size(); }

  // The network's name; empty when there is no such network.
  std::string GetFirstItemName();
  std::string GetSecondItemName();

  // The network's state as published; empty when there is no such network.
  std::string GetFirstItemStatus();
  std::string GetSecondItemStatus();

  // The path of the icon for the network's signal, the lowest when there is no such network.
  std::string GetFirstItemIcon();
  std::string GetSecondItemIcon();

  // The path of the icon for a strength in dBm. Does not read the document.
  static std::string GetSignalStrength(int strength);

  // Asks the network service to connect: 0 to the first network, any other index to the second. The
  // command is written even when there is no such network, with an empty name.
  void Connect(int index);

  // Writes the connect command for a name. A failed write is ignored.
  void WriteConnectToVconf(std::string ssid);

  // Called by the store when the document changed, on any thread and without the lock. Asks the
  // menu to refresh; touches no member.
  // NOLINTNEXTLINE(bugprone-reserved-identifier): the handler has always had this name.
  static void _VconfSavedAPCommandChnage(keynode_t* node, void* data);

 private:
  SavedAPConnection();

  // Reads the document again and returns the network at that position, or null.
  const SavedAPData* ReadItem(std::size_t position);
  std::string ItemName(std::size_t position);
  std::string ItemStatus(std::size_t position);
  std::string ItemIcon(std::size_t position);

  // Reads m_document into the list. Returns whether it reached the end.
  bool Parse();

  std::list<SavedAPData> m_savedAPs;
  std::string m_document;     // what the list was read from
  bool m_isComplete = false;  // whether all of it was read
};

#endif  // VENTARO_SAVED_AP_CONNECTION_H
