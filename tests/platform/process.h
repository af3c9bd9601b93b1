// Other processes on the same TV, which exchange lines of text with the test.
#ifndef TESTS_PLATFORM_PROCESS_H
#define TESTS_PLATFORM_PROCESS_H

#include <sys/types.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace platform_tests {

// One end of a conversation between two processes.
class Channel {
 public:
  explicit Channel(int socket) : socket_(socket) {}
  ~Channel();
  Channel(const Channel&) = delete;
  Channel& operator=(const Channel&) = delete;

  void sendLine(const std::string& line) const;

  // Waits for the other's next line. Returns nothing when the other has ended, or is silent for a
  // very long time, which fails the test.
  std::optional<std::string> receiveLine();

  int socket() const { return socket_; }

 private:
  int socket_;
  std::string received_;
};

// A fork of the test that carries out a function and ends. An expectation that fails in it is
// reported like any other, and makes it end without success.
//
// LMDB forbids to use a store that was opened before a fork, so a test makes its processes before
// it first uses the store itself; to do otherwise fails.
class Process {
 public:
  explicit Process(const std::function<void(Channel& test)>& work);
  // Kills the process if it still runs.
  ~Process();
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  Channel& channel() { return channel_; }
  pid_t id() const { return process_; }

  // Waits for it to end, and expects that it did so with success.
  void join();

  // Kills it, as by a crash: it cannot run any more code.
  void kill();

 private:
  explicit Process(const std::function<void(Channel& test)>& work, int (&&sockets)[2]);
  int wait();

  pid_t process_;
  Channel channel_;
};

// Runs the function in a child process and waits for its end.
void inOwnProcess(const std::function<void()>& work);

// Drops root rights, which would hide errors. No effect for other users.
void becomeOrdinaryUser();

// Switches to a user; needs root rights.
void becomeUser(uid_t user);

}  // namespace platform_tests

#endif  // TESTS_PLATFORM_PROCESS_H
