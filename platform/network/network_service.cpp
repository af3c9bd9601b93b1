#include "platform/host/network_service.h"

#include <fcntl.h>
#include <glib.h>
#include <json/value.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <vector>

#include "../config_store/folders.h"
#include "platform/host/config_store.h"
#include "platform/host/errors.h"
#include "platform/host/resources.h"
#include "platform/log.h"
#include "saved_networks.h"
#include "simulated_network.h"
#include "stored_json.h"

namespace platform::host {

namespace {

constexpr char kRadioKey[] = "memory/host/network/radio";
constexpr char kConnect[] = "1";

// Held by the one process that runs the service; the kernel frees it with the process.
class ServiceLock {
 public:
  ServiceLock() {
    const auto path = runtimeFolder() / "network-service.lock";
    file_ = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (file_ < 0) {
      throw StoreError(StoreCode::kUnavailable,
                       "cannot open " + path.string() + ": " + std::strerror(errno));
    }
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

// The object that a key's text holds; an empty one when it holds none.
Json::Value storedObject(const char* key) {
  const Json::Value value = readStoredJson(key);
  return value.isObject() ? value : Json::objectValue;
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
    if (!radioWasOn) drop();
    // A connection that a killed service left half-done starts again.
    if (const std::string ssid = simulatedNetwork().connecting(); !ssid.empty()) connect(ssid);
    commands =
        ConfigStore::instance().subscribe(kConnectCommandKey, [this](const std::string& key) {
          if (key == kConnectCommandKey) obeyCommand();
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
      const auto ssid = commandedNetwork();
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
    if (!network.isRadioOn()) return answer(ssid, "Wi-Fi is off");
    if (std::ranges::find(points, ssid, &AccessPoint::ssid) == points.end()) {
      return answer(ssid, "there is no such network within reach");
    }
    stopTimer();
    setAndPublish("", ssid);
    answer(ssid, "");
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

  static void answer(const std::string& ssid, const char* refusal) {
    if (*refusal != '\0') {
      logLine("cannot connect to \"" + ssid + "\": " + refusal);
      const SimulatedNetwork& network = simulatedNetwork();
      publishStates(network.accessPoints(), network.connected(), network.connecting());
    }
    Json::Value answer(Json::objectValue);
    answer["ssid"] = ssid;
    answer["refusal"] = refusal;
    ConfigStore::instance().set(kConnectAnswerKey, jsonLine(answer));
  }

  void complete() {
    const SimulatedNetwork& network = simulatedNetwork();
    const std::string ssid = network.connecting();
    // Nothing is when the radio went off, or another scenario was loaded, meanwhile.
    setAndPublish(ssid.empty() ? network.connected() : ssid, "");
  }

  void drop() {
    stopTimer();
    const SimulatedNetwork& network = simulatedNetwork();
    if (!network.connected().empty() || !network.connecting().empty() || radioWasOn) {
      setAndPublish("", "");
    }
  }

  void setAndPublish(const std::string& connected, const std::string& connecting) {
    SimulatedNetwork& network = simulatedNetwork();
    network.setConnection(connected, connecting);
    publishStates(network.accessPoints(), connected, connecting);
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

std::optional<ConnectAnswer> lastConnectAnswer() {
  const Json::Value answer = storedObject(kConnectAnswerKey);
  if (!answer["ssid"].isString() || !answer["refusal"].isString()) return std::nullopt;
  return ConnectAnswer{answer["ssid"].asString(), answer["refusal"].asString()};
}

std::optional<std::string> commandedNetwork() {
  const Json::Value command = storedObject(kConnectCommandKey);
  if (command["COMMAND"] != kConnect || !command["SSID"].isString()) return std::nullopt;
  return command["SSID"].asString();
}

void openNetwork() {
  network();
}

void loadScenario(const std::string& nameOrPath) {
  SimulatedNetwork::load(readScenario(findResource("scenarios", nameOrPath)), nameOrPath);
}

}  // namespace platform::host
