// The fixture of the tests of the object that reads the saved networks' document.
#ifndef SAVED_NETWORKS_TEST_H
#define SAVED_NETWORKS_TEST_H

#include <optional>
#include <string>

#include "provider_test.h"
#include "saved_network_document.h"

class SavedNetworks : public ProviderTest {
 protected:
  // A provider whose object exists already.
  void createWithObject() {
    create();
    entries().check_enable_int(VENTARO_KEY_SAVED_NETWORK_1, 0);
    clearJournal();
  }

  // Makes the provider read this document, or none.
  void read(const std::optional<std::string>& text) const {
    store().erase(kSavedNetworksKey);
    if (text) store().set(kSavedNetworksKey, *text);
    clearJournal();
    entries().check_enable_int(VENTARO_KEY_SAVED_NETWORK_1, 0);
  }

  // What the journal of a reading should be: what was logged, how many networks were found.
  static Journal reading(const Journal& logged, int count) {
    return {locks(),
            mainLog(std::string("key = ") + VENTARO_KEY_SAVED_NETWORK_1),
            call("vconf_get_str", kSavedNetworksKey),
            logged,
            mainLog("Saved AP Count " + std::to_string(count)),
            unlocks()};
  }
};

#endif  // SAVED_NETWORKS_TEST_H
