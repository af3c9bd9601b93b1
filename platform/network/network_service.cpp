#include "platform/host/network_service.h"

#include <fcntl.h>
#include <glib.h>
#include <json/value.h>
#include <sys/file.h>

#include <algorithm>
#include <vector>

#include "../host/json_text.h"
#include "../store/files.h"
#include "platform/host/config_store.h"
#include "platform/host/errors.h"
#include "platform/host/folders.h"
#include "platform/host/resources.h"
#include "platform/log.h"
#include "saved_networks.h"
#include "simulated_network.h"

namespace platform::host {

namespace {

constexpr char kRadioKey[] = "memory/host/network/radio";
constexpr char kConnect[] = "1";

// Held by the one process that runs the service; the kernel frees it with the process.
class ServiceLock {
 public:
  bool isHeld() const { return held_; }

 private:
  File file_ = openFile(runtimeFolder() / "network-service.lock", O_RDWR | O_CREAT);
  bool held_ = flock(file_.get(), LOCK_EX | LOCK_NB) == 0;
};

void logLine(const std::string& text) {
  __dlog_print(PLATFORM_LOG_MAIN, PLATFORM_LOG_INFO, "NETWORK_SERVICE", "%s", text.c_str());
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
  SimulatedNetwork& network = simulatedNetwork();
  ServiceLock lock;
  Subscription commands;
  Subscription radio;
  unsigned timer = 0;
  bool radioWasOn = false;

  void start() {
    radioWasOn = network.isRadioOn();
    if (!radioWasOn) drop();
    // A connection that a killed service left half-done starts again.
    if (const std::string ssid = network.connecting(); !ssid.empty()) connect(ssid);
    commands = onSet(kConnectCommandKey, [this] { obeyCommand(); });
    radio = onSet(kRadioKey, [this] { followRadio(); });
  }

  // An error cannot reach anybody from the main loop; it is logged, and the service goes on.
  static void guarded(const std::function<void()>& action) {
    try {
      action();
    } catch (const std::exception& error) {
      logLine(error.what());
    }
  }

  static Subscription onSet(const std::string& key, const std::function<void()>& act) {
    return ConfigStore::instance().subscribe(key, [key, act](const std::string& changed) {
      if (changed == key) guarded(act);
    });
  }

  void obeyCommand() {
    const auto ssid = commandedNetwork();
    if (!ssid) return logLine("ignored a command that is not to connect");
    connect(*ssid);
  }

  void followRadio() {
    const bool on = network.isRadioOn();
    // A scenario that brings the radio on may bring a connection, too.
    if (on && !radioWasOn && network.connected().empty()) connectToFirstSaved();
    if (!on) drop();
    radioWasOn = on;
  }

  void connectToFirstSaved() {
    const std::vector<AccessPoint> points = network.accessPoints();
    const auto first = std::ranges::find(points, true, &AccessPoint::saved);
    if (first != points.end()) connect(first->ssid);
  }

  void connect(const std::string& ssid) {
    const std::vector<AccessPoint> points = network.accessPoints();
    if (!network.isRadioOn()) return answer(ssid, "Wi-Fi is off");
    if (std::ranges::find(points, ssid, &AccessPoint::ssid) == points.end()) {
      return answer(ssid, "there is no such network within reach");
    }
    stopTimer();
    if (!tryTo(ssid, [this, &ssid] { setAndPublish("", ssid); })) return;
    answer(ssid, "");
    const auto time = static_cast<guint>(network.connectTime().count());
    timer = g_timeout_add(
        time,
        [](void* self) {
          auto& impl = *static_cast<Impl*>(self);
          impl.timer = 0;
          guarded([&impl] { impl.complete(); });
          return gboolean{G_SOURCE_REMOVE};
        },
        this);
  }

  // Carries out a step of a connection. One that the store does not take ends the connection: who
  // asked for it would wait for the next state in vain.
  bool tryTo(const std::string& ssid, const std::function<void()>& step) {
    try {
      step();
      return true;
    } catch (const StoreError& error) {
      logRefusal(ssid, error.what());
      guarded([this] { network.setConnection("", ""); });
      tell(ssid, error.what());
      return false;
    }
  }

  void answer(const std::string& ssid, const char* refusal) const {
    if (*refusal != '\0') {
      logRefusal(ssid, refusal);
      guarded([this] {
        publishStates(network.accessPoints(), network.connected(), network.connecting());
      });
    }
    tell(ssid, refusal);
  }

  static void logRefusal(const std::string& ssid, const char* refusal) {
    logLine("cannot connect to \"" + ssid + "\": " + refusal);
  }

  static void tell(const std::string& ssid, const char* refusal) {
    Json::Value answer(Json::objectValue);
    answer["ssid"] = ssid;
    answer["refusal"] = refusal;
    ConfigStore::instance().set(kConnectAnswerKey, jsonLine(answer));
  }

  void complete() {
    const std::string ssid = network.connecting();
    // Nothing is when the radio went off, or another scenario was loaded, meanwhile.
    if (ssid.empty()) return setAndPublish(network.connected(), "");
    tryTo(ssid, [this, &ssid] { setAndPublish(ssid, ""); });
  }

  void drop() {
    stopTimer();
    if (!network.connected().empty() || !network.connecting().empty() || radioWasOn) {
      setAndPublish("", "");
    }
  }

  void setAndPublish(const std::string& connected, const std::string& connecting) {
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
  std::unique_ptr<NetworkService> service(new NetworkService);
  if (!service->impl_->lock.isHeld()) return nullptr;
  service->impl_->start();
  return service;
}

std::optional<ConnectAnswer> lastConnectAnswer() {
  const Json::Value answer = readStoredJson(kConnectAnswerKey, Json::objectValue);
  if (!answer["ssid"].isString() || !answer["refusal"].isString()) return std::nullopt;
  return ConnectAnswer{answer["ssid"].asString(), answer["refusal"].asString()};
}

std::optional<std::string> commandedNetwork() {
  const Json::Value command = readStoredJson(kConnectCommandKey, Json::objectValue);
  if (command["COMMAND"] != kConnect || !command["SSID"].isString()) return std::nullopt;
  return command["SSID"].asString();
}

void openNetwork() {
  network();
}

void loadScenario() {
  SimulatedNetwork::loadWanted();
}

void loadScenario(const std::string& nameOrPath) {
  SimulatedNetwork::load(readScenario(findResource("scenarios", nameOrPath)), nameOrPath);
}

}  // namespace platform::host
