// Connecting to a saved network: the command, the network service's answer, and how it goes on.
#ifndef MENU_HOST_CONNECTION_H
#define MENU_HOST_CONNECTION_H

#include <functional>
#include <string>
#include <vector>

#include "main_loop.h"
#include "menu_model.h"
#include "notifications.h"

namespace menu {

// Asks for a connection to the first (1) or second (2) saved network, and leaves it to the network
// service. Returns the network's key and name. Raises what MenuModel::connect() raises, and
// RefusedError when the command could not be stored.
Item askToConnect(MenuModel& menu, int position);

// A connection that is asked for and followed until it has ended. It proceeds in the main loop; its
// functions and the callbacks belong to the thread that iterates that.
class Connection {
 public:
  // Starts the network service in this process unless there is one anywhere; returns whether it
  // did.
  using Serve = std::function<bool()>;
  // Told of the network whenever it is in a new state.
  using Changed = std::function<void(const Item& network)>;

  // Asks as askToConnect() does, and raises the same. When nobody runs the network service later,
  // it is started with `serve`. The menu and what the callbacks refer to must outlive the object.
  Connection(MenuModel& menu, int position, Serve serve, Changed changed);
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  // The network that was asked for: its key and name.
  const Item& network() const { return network_; }

  bool isConnected() const { return state_ == NetworkState::kConnected; }

  // Whether it is connected or will not be.
  bool hasEnded() const { return isConnected() || !problem_.empty(); }

  // Why it will not be connected.
  const std::string& problem() const { return problem_; }

 private:
  void readAnswer();
  void readState();
  void serveWhenNobodyDoes();
  void giveUp();

  MenuModel& menu_;
  int position_;
  Serve serve_;
  Changed changed_;
  Item network_;
  bool accepted_ = false;
  NetworkState state_ = NetworkState::kNone;
  std::string problem_;
  std::vector<Subscription> subscriptions_;
  Ticker serviceCheck_;
  Ticker limit_;
};

}  // namespace menu

#endif  // MENU_HOST_CONNECTION_H
