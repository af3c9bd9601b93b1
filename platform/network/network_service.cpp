#include "platform/host/network_service.h"

#include <fcntl.h>
#include <glib.h>
#include <json/reader.h>
#include <json/value.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <vector>

#include "../config_store/folders.h"
#include "platform/host/config_store.h"
#include "platform/host/errors.h"
#include "platform/host/resources.h"
#include "platform/log.h"
#include "saved_networks.h"
#include "simulated_network.h"

namespace platform::host {

namespace {

constexpr char kCommandKey[] = "memory/NW-Daemon/Command";
constexpr char kRadioKey[] = "memory/host/network/radio";
constexpr char kConnect[] = "1";

// Held by the one process that runs the service; the kernel frees it with the process.
class ServiceLock {
 public:
  ServiceLock() {
    const auto path = runtimeFolder() / "network-service.lock";
    file_ = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (file_ < 0) throw StoreError(StoreCode::kReadOnly, "cannot open " + path.string());
    held_ = flock(file_, LOCK_EX | LOCK_NB) == 0;
  }
  ~ServiceLock() { close(file_); }
  ServiceLock(const ServiceLock&) = delete;
  ServiceLock& operator=(const ServiceLock&) = delete;

  bool isHeld() const { return held_; }

 private:
  int file_ = -1;
  bool held_ = false;
};

void logLine(const std::string& text) {
  __dlog_print(PLATFORM_LOG_MAIN, PLATFORM_LOG_INFO, "NETWORK_SERVICE", "%s", text.c_str());
}

// The network that a command asks to connect to; nothing for any other text.
std::optional<std::string> networkToConnect(const std::string& command) {
  Json::Value root;
  std::string errors;
  const std::unique_ptr<Json::CharReader> reader(Json::CharReaderBuilder().newCharReader());
  try {
    const bool parsed =
        reader->parse(command.data(), command.data() + command.size(), &root, &errors);
    if (!parsed || !root.isObject() || root["COMMAND"] != kConnect || !root["SSID"].isString()) {
      return std::nullopt;
    }
    return root["SSID"].asString();
  } catch (const Json::Exception&) {
    return std::nullopt;
  }
}

SimulatedNetwork& simulatedNetwork() {
  auto* simulated = dynamic_cast<SimulatedNetwork*>(&network());
  if (simulated == nullptr) {
    throw ConfigurationError("the network service belongs to the simulated network");
  }
  return *simulated;
}

}  // namespace

struct NetworkService::Impl {
  ServiceLock lock;
  Subscription commands;
  Subscription radio;
  unsigned timer = 0;
  bool radioWasOn = false;

  void start() {
    radioWasOn = simulatedNetwork().isRadioOn();
    // A connection that a killed service left half-done starts again.
    if (const std::string ssid = simulatedNetwork().connecting(); !ssid.empty()) connect(ssid);
    commands = ConfigStore::instance().subscribe(kCommandKey, [this](const std::string& key) {
      if (key == kCommandKey) obeyCommand();
    });
    radio = ConfigStore::instance().subscribe(kRadioKey, [this](const std::string& key) {
      if (key == kRadioKey) followRadio();
    });
  }

  // An error cannot reach anybody from the main loop; it is logged, and the service goes on.
  template <typename Action>
  void guarded(const Action& action) {
    try {
      action();
    } catch (const std::exception& error) {
      logLine(error.what());
    }
  }

  void obeyCommand() {
    guarded([this] {
      const auto value = ConfigStore::instance().get(kCommandKey);
      const auto* text = value ? std::get_if<std::string>(&*value) : nullptr;
      const auto ssid = text != nullptr ? networkToConnect(*text) : std::nullopt;
      if (!ssid) return logLine("ignored a command that is not to connect");
      connect(*ssid);
    });
  }

  void followRadio() {
    guarded([this] {
      const bool on = simulatedNetwork().isRadioOn();
      // A scenario that brings the radio on may bring a connection, too.
      if (on && !radioWasOn && simulatedNetwork().connected().empty()) connectToFirstSaved();
      if (!on) drop();
      radioWasOn = on;
    });
  }

  void connectToFirstSaved() {
    const std::vector<AccessPoint> points = simulatedNetwork().accessPoints();
    const auto first = std::ranges::find(points, true, &AccessPoint::saved);
    if (first != points.end()) connect(first->ssid);
  }

  void connect(const std::string& ssid) {
    SimulatedNetwork& network = simulatedNetwork();
    const std::vector<AccessPoint> points = network.accessPoints();
    if (!network.isRadioOn()) return refuse(ssid, "Wi-Fi is off");
    if (std::ranges::find(points, ssid, &AccessPoint::ssid) == points.end()) {
      return refuse(ssid, "there is no such network");
    }
    stopTimer();
    setAndPublish("", ssid);
    const auto time = static_cast<guint>(network.connectTime().count());
    timer = g_timeout_add(
        time,
        [](void* self) {
          auto& impl = *static_cast<Impl*>(self);
          impl.timer = 0;
          impl.guarded([&impl] { impl.complete(); });
          return gboolean{G_SOURCE_REMOVE};
        },
        this);
  }

  // The state is published all the same: whoever asked waits for an answer.
  void refuse(const std::string& ssid, const char* reason) {
    logLine("cannot connect to \"" + ssid + "\": " + reason);
    const SimulatedNetwork& network = simulatedNetwork();
    publishSavedNetworks(network.accessPoints(), network.connected(), network.connecting());
  }

  void complete() {
    const SimulatedNetwork& network = simulatedNetwork();
    const std::string ssid = network.connecting();
    // Nothing is when the radio went off, or another scenario was loaded, meanwhile.
    setAndPublish(ssid.empty() ? network.connected() : ssid, "");
  }

  void drop() {
    stopTimer();
    setAndPublish("", "");
  }

  void setAndPublish(const std::string& connected, const std::string& connecting) {
    SimulatedNetwork& network = simulatedNetwork();
    network.setConnection(connected, connecting);
    publishSavedNetworks(network.accessPoints(), connected, connecting);
  }

  void stopTimer() {
    if (timer != 0) g_source_remove(timer);
    timer = 0;
  }

  void finish() {
    if (timer == 0) return;
    stopTimer();
    guarded([this] { complete(); });
  }
};

NetworkService::NetworkService() : impl_(std::make_unique<Impl>()) {}

NetworkService::~NetworkService() {
  impl_->finish();
}

std::unique_ptr<NetworkService> NetworkService::start() {
  simulatedNetwork();
  std::unique_ptr<NetworkService> service(new NetworkService);
  if (!service->impl_->lock.isHeld()) return nullptr;
  service->impl_->start();
  return service;
}

void openNetwork() {
  network();
}

void loadScenario(const std::string& nameOrPath) {
  simulatedNetwork();
  SimulatedNetwork::load(readScenario(findResource("scenarios", nameOrPath)), nameOrPath,
                         SimulatedNetwork::Publish::kAlways);
}

}  // namespace platform::host
