#include "session.h"

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

}  // namespace

menu::MenuModel& Session::menu() {
  if (menu_ != nullptr) return *menu_;
  // What is wrong with the store would else be told as what the provider makes of it.
  platform::host::ConfigStore::instance().open();
  auto tree = menu::readMenuTree(platform::host::resourceRoot() / "menu.json", region());
  platform::host::loadProduct();
  platform::host::openNetwork();
  menu::chooseLanguage();
  provider_ = std::make_unique<menu::Provider>(providerFile_);
  menu_ = std::make_unique<menu::MenuModel>(*provider_, std::move(tree));
  return *menu_;
}

bool Session::serveNetwork() {
  if (servesNetwork()) return false;
  service_ = platform::host::NetworkService::start();
  return servesNetwork();
}

}  // namespace cli
