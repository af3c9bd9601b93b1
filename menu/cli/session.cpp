#include "session.h"

#include <filesystem>

#include "../host/language.h"
#include "environment.h"
#include "platform/host/config_store.h"
#include "platform/host/errors.h"
#include "platform/host/product.h"
#include "platform/host/resources.h"

namespace cli {

namespace {

// Some items have a variant for each region; a TV shows one.
std::string region() {
  const std::string region = variable("VENTARO_REGION");
  if (region.empty()) return "us";
  if (region == "us" || region == "other") return region;
  throw platform::host::ConfigurationError("VENTARO_REGION is \"" + region +
                                           "\"; there are: us, other");
}

std::filesystem::path menuFile() {
  const std::string file = variable("VENTARO_MENU");
  return !file.empty() ? std::filesystem::path(file) : platform::host::resourceRoot() / "menu.json";
}

}  // namespace

menu::MenuModel& Session::menu() {
  if (menu_ != nullptr) return *menu_;
  // What is wrong with the store would else be told as what the provider makes of it.
  platform::host::ConfigStore::instance().open();
  menu::MenuTree tree = menu::readMenuTree(menuFile(), region());
  platform::host::loadProduct();
  platform::host::openNetwork();
  menu::chooseLanguage();
  provider_ = std::make_unique<menu::Provider>(providerFile_, tree.textDomain);
  menu_ = std::make_unique<menu::MenuModel>(*provider_, std::move(tree.items));
  return *menu_;
}

bool Session::serveNetwork() {
  if (servesNetwork()) return false;
  service_ = platform::host::NetworkService::start();
  return servesNetwork();
}

}  // namespace cli
