// The network service of the simulated network: publishes the saved networks and connects on
// command.
#ifndef PLATFORM_HOST_NETWORK_SERVICE_H
#define PLATFORM_HOST_NETWORK_SERVICE_H

#include <memory>
#include <optional>
#include <string>

#include "platform/export.h"

namespace platform::host {

// The store's key for the saved networks' document, which the network service publishes at each
// change.
inline constexpr char kSavedNetworksKey[] = "db/menu/network/TopSavedAP";

// Starts the simulated network of this process's environment, and loads the scenario if none is
// loaded. Raises ConfigurationError or StoreError.
PLATFORM_API void openNetwork();

// Loads the scenario that $VENTARO_SCENARIO names (default "home") over whatever the simulated
// network holds. Raises ConfigurationError or StoreError.
PLATFORM_API void loadScenario();

// Loads a scenario by its name or path over whatever the simulated network holds. Raises
// ConfigurationError or StoreError.
PLATFORM_API void loadScenario(const std::string& nameOrPath);

// The network service's last answer to a connect command. It answers before it does anything else,
// in the store's key kConnectAnswerKey.
struct ConnectAnswer {
  std::string ssid;
  std::string refusal;  // why it did not connect; empty when it did
};
inline constexpr char kConnectAnswerKey[] = "memory/host/network/answer";
inline constexpr char kConnectCommandKey[] = "memory/NW-Daemon/Command";

// Nothing when there is no answer yet. Raises StoreError.
PLATFORM_API std::optional<ConnectAnswer> lastConnectAnswer();

// The network that the stored connect command names; nothing when there is no such command. Raises
// StoreError.
PLATFORM_API std::optional<std::string> commandedNetwork();

// Runs while the object lives, from the default GLib main context. On a command it drops the
// previous network, is Connecting for the scenario's time, and then Connected; when the radio goes
// off, it drops the connection; when it comes on, it connects to the first saved network. It
// publishes each change.
class PLATFORM_API NetworkService {
 public:
  // Nothing when another process with the same runtime folder already runs the service. Raises
  // ConfigurationError or StoreError.
  static std::unique_ptr<NetworkService> start();

  // Completes a connection in progress, because nobody else would.
  ~NetworkService();
  NetworkService(const NetworkService&) = delete;
  NetworkService& operator=(const NetworkService&) = delete;

 private:
  NetworkService();
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace platform::host

#endif  // PLATFORM_HOST_NETWORK_SERVICE_H
