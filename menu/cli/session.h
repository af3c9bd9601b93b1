// What the commands share: one provider, one menu, and the network service, each started when it is
// first needed.
#ifndef MENU_CLI_SESSION_H
#define MENU_CLI_SESSION_H

#include <memory>
#include <optional>
#include <string>

#include "../host/menu_model.h"
#include "../host/provider.h"
#include "line_reader.h"
#include "platform/host/network_service.h"

namespace cli {

class Session {
 public:
  // The provider's library, searched as dlopen() does.
  explicit Session(std::string providerFile) : providerFile_(std::move(providerFile)) {}

  // Opens the store, checks the product and the network that the environment names, loads the
  // provider and reads the menu tree, at the first call.
  menu::MenuModel& menu();

  // Whether that has been done.
  bool isLoaded() const { return menu_ != nullptr; }

  // The provider of that menu.
  menu::Provider& provider() {
    menu();
    return *provider_;
  }

  // The menu's tree in a region.
  static menu::MenuTree menuTree(const std::string& region);

  // Runs the network service in this process, unless another one does already, until stopNetwork()
  // or the end of the session. Returns whether this call started it.
  bool serveNetwork();
  void stopNetwork() { service_.reset(); }
  bool servesNetwork() const { return service_ != nullptr; }

  // The next line of standard input; nothing at its end, or when the program is asked to end.
  // Timers and notifications run meanwhile.
  std::optional<std::string> readLine(const menu::Interruption& interruption) {
    return input_.next(interruption);
  }

  // The next byte of standard input, likewise.
  std::optional<char> readByte(const menu::Interruption& interruption) {
    return input_.nextByte(interruption);
  }

 private:
  std::string providerFile_;
  LineReader input_;
  std::unique_ptr<menu::Provider> provider_;
  std::unique_ptr<menu::MenuModel> menu_;
  std::unique_ptr<platform::host::NetworkService> service_;
};

}  // namespace cli

#endif  // MENU_CLI_SESSION_H
