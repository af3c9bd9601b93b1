// The saved Wi-Fi networks that the network service publishes in the configuration store, and the
// quick connection to the first two of them.
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
// and Connect() read the published document first, and so raise jsoncpp's exceptions
// (Json::LogicError) when that has a wrong shape. Nothing here catches them: the framework does.
class SavedAPConnection {
 public:
  // The one object, made at the first call and kept until the library is unloaded; it is the
  // library's.
  static SavedAPConnection* GetInstance();

  SavedAPConnection(const SavedAPConnection&) = delete;
  SavedAPConnection& operator=(const SavedAPConnection&) = delete;

  // Makes the list what the published document says. The list is empty when there is no document,
  // and ends at the first missing element. A document that was read to its end is not parsed again
  // while it stays the same: the menu asks for it with nearly every call.
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

  // Told by the store, on a thread of its choice and without the lock, that the document changed.
  // Asks the menu to refresh; touches no member.
  // NOLINTNEXTLINE(bugprone-reserved-identifier): the handler is known by this name.
  static void _VconfSavedAPCommandChnage(keynode_t* node, void* data);

 private:
  SavedAPConnection();

  // The network at a position after a fresh reading, or null.
  const SavedAPData* ReadItem(std::size_t position);
  std::string ItemName(std::size_t position);
  std::string ItemStatus(std::size_t position);
  std::string ItemIcon(std::size_t position);

  // Reads m_document into the list. Whether it came to its end.
  bool Parse();

  std::list<SavedAPData> m_savedAPs;
  std::string m_document;     // what the list was read from
  bool m_isComplete = false;  // whether the list is all that it says
};

#endif  // VENTARO_SAVED_AP_CONNECTION_H
