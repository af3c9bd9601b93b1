#include "session.h"

#include <filesystem>

#include "../host/language.h"
#include "../host/languages.h"
#include "environment.h"
#include "platform/host/config_store.h"
#include "platform/host/nearest.h"
#include "platform/host/product.h"
#include "platform/host/resources.h"
#include "stream.h"

namespace cli {

namespace {

// Some items have a variant for each region; a TV shows one.
std::string region() {
  const std::string region = variable("VENTARO_REGION");
  return region.empty() ? "us" : region;
}

std::filesystem::path menuFile() {
  const std::string file = variable("VENTARO_MENU");
  return !file.empty() ? std::filesystem::path(file) : platform::host::resourceRoot() / "menu.json";
}

void tellOfUnknownLanguage() {
  const std::string language = variable("LANGUAGE");
  if (language.size() > menu::kLongestLanguages) {
    complain("LANGUAGE has " + std::to_string(language.size()) + " bytes, more than the " +
             std::to_string(menu::kLongestLanguages) +
             " that names of languages may have; the menu is in English");
    return;
  }
  // Texts of somebody else's provider are elsewhere.
  if (language.empty() || !variable("VENTARO_PROVIDER").empty()) return;
  if (menu::hasTexts(language)) return;
  complain("LANGUAGE is \"" + language + "\", in which there are no texts; there are: " +
           platform::host::joined(menu::languages()));
}

}  // namespace

menu::MenuModel& Session::menu() {
  if (menu_ != nullptr) {
    menu::chooseLanguage();  // the TV's may have changed
    return *menu_;
  }
  // What is wrong with the store would else be told as what the provider makes of it.
  platform::host::ConfigStore::instance().open();
  menu::MenuTree tree = menuTree(region());
  platform::host::loadProduct();
  platform::host::openNetwork();
  tellOfUnknownLanguage();
  menu::chooseLanguage();
  provider_ = std::make_unique<menu::Provider>(providerFile_, tree.textDomain);
  menu_ = std::make_unique<menu::MenuModel>(*provider_, std::move(tree.items));
  return *menu_;
}

menu::MenuTree Session::menuTree(const std::string& region) {
  return menu::readMenuTree(menuFile(), region);
}

bool Session::serveNetwork() {
  if (servesNetwork()) return false;
  service_ = platform::host::NetworkService::start();
  return servesNetwork();
}

}  // namespace cli
