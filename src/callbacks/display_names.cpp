// The callback that gives an item's name.
#include <string>

#include "c_heap.h"
#include "callbacks/callbacks.h"
#include "items.h"
#include "log.h"
#include "settings/SavedAPConnection.h"
#include "translation.h"

namespace {

// The network's own name, unchanged, up to a NUL.
void writeNetworkName(int network, char* block) {
  SavedAPConnection* saved = SavedAPConnection::GetInstance();
  const std::string name = network == 1 ? saved->GetFirstItemName() : saved->GetSecondItemName();
  copyText(block, VENTARO_TEXT_SIZE, name.c_str());
}

void writeName(const char* key, char* block) {
  const Item& item = itemWithNameOf(key);
  if (item.name != nullptr) {
    if (item.beforeName != nullptr) item.beforeName(key);
    copyText(block, VENTARO_TEXT_SIZE, translate(item.name));
  } else if (item.savedNetwork != 0) {
    writeNetworkName(item.savedNetwork, block);
  } else {
    LOG_MAIN("Key does not Match");
  }
}

int get_display_name(const char* key, char** value) {
  LOG_MAIN("START");
  const ProviderLock lock(ProviderMutex);
  LOG_MAIN("Key ---->%s\n", key);
  CText name(newZeroed<char>(VENTARO_TEXT_SIZE));
  writeName(key, name.get());
  *value = name.release();
  return 0;  // without "END": tools that read the log expect none here
}

}  // namespace

void installDisplayNameCallbacks(data_provider_cbs& table) {
  table.get_display_name = get_display_name;
}
