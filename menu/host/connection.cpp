#include "connection.h"

#include <utility>

#include "platform/host/network_service.h"
#include "platform/host/visible_text.h"

namespace menu {

namespace {

using platform::host::validText;

// No scenario connects for longer than a minute.
constexpr std::chrono::seconds kLongest{70};
constexpr std::chrono::seconds kServiceCheck{1};

// The answer names another network than the one that was asked for.
const char* whyAnotherWasAnswered(const std::string& asked) {
  // The command is JSON text.
  if (asked.find("\uFFFD") != std::string::npos) return "its name cannot be sent: it is no UTF-8";
  return "another connection was asked for meanwhile";
}

// Gives the command and leaves the network in `asked`, before anybody can answer.
void giveCommand(MenuModel& menu, int position, Item& asked) {
  bool isStored = false;
  const Subscription subscription =
      onSet(platform::host::kConnectCommandKey, [&isStored] { isStored = true; });
  asked = menu.connect(position);
  runPending();
  if (!isStored) {
    throw RefusedError("the command to connect could not be stored; VENTARO_LOG=stderr shows why");
  }
}

}  // namespace

Item askToConnect(MenuModel& menu, int position) {
  Item asked;
  giveCommand(menu, position, asked);
  return asked;
}

Connection::Connection(MenuModel& menu, int position, Serve serve, Changed changed)
    : menu_(menu),
      position_(position),
      serve_(std::move(serve)),
      changed_(std::move(changed)),
      serviceCheck_(kServiceCheck, [this] { serveWhenNobodyDoes(); }),
      limit_(kLongest, [this] { giveUp(); }) {
  subscriptions_.push_back(onSet(platform::host::kConnectAnswerKey, [this] { readAnswer(); }));
  subscriptions_.push_back(onSet(platform::host::kSavedNetworksKey, [this] { readState(); }));
  giveCommand(menu_, position_, network_);
}

void Connection::readAnswer() {
  const auto answer = platform::host::lastConnectAnswer();
  if (!answer) return;
  const bool isOfThis = validText(answer->ssid) == network_.name;
  if (accepted_ && (!isOfThis || answer->refusal.empty())) return;
  if (!isOfThis) {
    const auto commanded = platform::host::commandedNetwork();
    const bool isOurs = commanded && validText(*commanded) == network_.name;
    if (!isOurs) problem_ = whyAnotherWasAnswered(network_.name);
    return;
  }
  accepted_ = answer->refusal.empty();
  problem_ = answer->refusal;
  readState();
}

// At every notification, not later: the next state may be published before the main loop is back.
void Connection::readState() {
  if (!accepted_ || isConnected()) return;
  const NetworkState state = menu_.stateOf(network_);
  const bool isNew = state != std::exchange(state_, state);
  if (state == NetworkState::kNone) {
    problem_ = "the connection was dropped";
  } else if (isNew) {
    Item network = network_;
    network.state = state;
    changed_(network);
  }
}

void Connection::serveWhenNobodyDoes() {
  if (serve_() && !accepted_) network_ = menu_.connect(position_);
}

void Connection::giveUp() {
  if (!hasEnded()) problem_ = "nothing answered";
}

}  // namespace menu
