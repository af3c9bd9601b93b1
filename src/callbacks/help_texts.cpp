// The callback that gives an item's help text.
#include <stdexcept>

#include "c_heap.h"
#include "callbacks/callbacks.h"
#include "items.h"
#include "log.h"
#include "platform/config_store.h"
#include "translation.h"
#include "ventaro/data_provider.h"

namespace {

void writeHelp(const char* key, char* block) {
  const HelpText& help = itemWithHelpOf(key).help;
  if (help.write != nullptr) {
    help.write(block);
  } else if (help.sid != nullptr) {
    copyText(block, VENTARO_TEXT_SIZE, translate(help.sid));
  } else {
    LOG_MAIN("Key does not Match");
  }
}

// A TV always has a menu language: without one, no help text is returned, although none depends on
// it.
void requireMenuLanguage() {
  const CText language(vconf_get_str(VENTARO_STORE_LANGUAGE));
  if (language == nullptr) throw std::logic_error(VENTARO_STORE_LANGUAGE " has no value");
}

int get_help_text(const char* key, char** value) {
  LOG_MAIN("START");
  const ProviderLock lock(ProviderMutex);
  CText block = zeroedBlock(VENTARO_TEXT_SIZE);
  if (block == nullptr) {
    LOG_MAIN("Memory not allocated");
    return -1;
  }
  requireMenuLanguage();
  writeHelp(key, block.get());
  *value = block.release();
  LOG_MAIN("END");
  return 0;
}

}  // namespace

void installHelpTextCallbacks(data_provider_cbs& table) {
  table.get_help_text = get_help_text;
}
