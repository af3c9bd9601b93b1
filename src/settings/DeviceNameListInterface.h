// The selection list of the TV's name, as other devices on the network see it: the TV's default
// name, and an entry for typing one. The list is built once and shared; the last entry is always
// the one for a typed name.
#ifndef VENTARO_DEVICE_NAME_LIST_INTERFACE_H
#define VENTARO_DEVICE_NAME_LIST_INTERFACE_H

#include <string>
#include <vector>

// All operations but construction and destruction run under the caller's ProviderMutex.
class DeviceNameListInterface {
 public:
  virtual ~DeviceNameListInterface() = default;

  // Puts the index of an item into `*value`. The item is a terminated text, compared by content
  // with those of getListItems(); an unknown text counts as the last entry. Returns 0, or -1 for
  // null.
  virtual int getListItemIntValue(void* item, int* value);

  // Returns the texts as display markup, each in a block of a list text, and their number in
  // `*count`. The caller owns the array and the blocks, all of the C heap. The key is not examined.
  virtual const char** getListItems(const char* key, int* count);

  // The text of an item is the item itself, not a copy. Returns 0.
  virtual int getListItemDisplayValue(void* item, char** text);

  // Puts the index of the stored name into `*value`. Returns 0; -1 when no name is stored. The key
  // is not examined.
  virtual int getInt(const char* key, int* value);

  // Selects an entry. Any but the last stores the default name and returns the store's result; the
  // last one and indexes outside the list store nothing and return -1. The key is not examined.
  virtual int setInt(const char* key, int value);

  // This list has no icons: returns 0, `*icon` untouched.
  virtual int getListItemIcon(void* item, char** icon);

  // Builds the list at its first call only: a default name stored later takes effect when the
  // library is loaded again.
  static void fillDeviceNameList();

  // The name as display markup that keeps its left-to-right order; empty for an empty name.
  static std::string MakeMarkup(const std::string& name);

  static std::vector<std::string> m_DevicenameList;
  static std::string m_DefaultDeviceName;
  static bool m_IsFillDeviceNameList;
};

#endif  // VENTARO_DEVICE_NAME_LIST_INTERFACE_H
