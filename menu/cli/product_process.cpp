#include "product_process.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <system_error>

#include "environment.h"
#include "exit_codes.h"
#include "stream.h"

namespace cli {

namespace {

constexpr char kProduct[] = "VENTARO_PRODUCT";

[[noreturn]] void fail(const char* what) {
  throw std::system_error(errno, std::generic_category(), what);
}

std::string readToEnd(int file) {
  std::string text;
  std::array<char, 65536> part{};
  ssize_t size = 0;
  while ((size = read(file, part.data(), part.size())) > 0 || (size < 0 && errno == EINTR)) {
    if (size > 0) text.append(part.data(), static_cast<std::size_t>(size));
  }
  return text;
}

bool writeAll(int file, const std::string& text) {
  std::size_t written = 0;
  while (written < text.size()) {
    const ssize_t size = write(file, text.data() + written, text.size() - written);
    if (size < 0 && errno != EINTR) return false;
    if (size > 0) written += static_cast<std::size_t>(size);
  }
  return true;
}

int carryOut(const std::string& product, const std::function<int(std::string& output)>& action,
             std::string& output) {
  try {
    setenv(kProduct, product.c_str(), 1);
    return action(output);
  } catch (const std::exception& error) {
    complain(error.what());
    return kFailed;
  }
}

}  // namespace

bool wantsAllProducts() {
  return variable(kProduct) == "all";
}

ProcessResult inProcessOf(const std::string& product,
                          const std::function<int(std::string& output)>& action) {
  int pipe[2];
  if (pipe2(pipe, O_CLOEXEC) != 0) fail("cannot make a pipe");
  const pid_t child = fork();
  if (child < 0) fail("cannot start a process");
  if (child == 0) {
    std::string output;
    const int result = carryOut(product, action, output);
    const bool isWritten = writeAll(pipe[1], output);
    std::fflush(nullptr);
    _exit(isWritten ? result : kFailed);
  }
  close(pipe[1]);
  ProcessResult done{kFailed, readToEnd(pipe[0])};
  close(pipe[0]);
  int status = 0;
  while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  if (WIFEXITED(status)) done.result = WEXITSTATUS(status);
  return done;
}

}  // namespace cli
