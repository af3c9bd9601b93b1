// The record behind an entry of an option list, which the framework holds as a `void*`.
#ifndef VENTARO_LIST_ITEM_H
#define VENTARO_LIST_ITEM_H

#include <cstdlib>

#include "ventaro/data_provider.h"

// A block of the C heap. Its list owns it, and it owns its text.
struct ListItem {
  char* displayValue;
  int intValue;
  ITEM_FOLLOWING_ACTION_TYPE followingActionType;
};

// Releases a record and its text.
struct ListItemDeleter {
  void operator()(ListItem* record) const {
    if (record == nullptr) return;
    std::free(record->displayValue);
    record->displayValue = nullptr;
    std::free(record);
  }
};

#endif  // VENTARO_LIST_ITEM_H
