// The program `ventaro`: the input is typed into its shell, over the real provider and the host
// platform. Wherever it would wait for the user or for time to pass, it gets a Ctrl-C.
#include <fcntl.h>
#include <glib.h>
#include <json/reader.h>
#include <json/value.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "../menu/cli/commands.h"
#include "../menu/cli/exit_codes.h"
#include "../menu/cli/output.h"
#include "../menu/cli/session.h"
#include "../menu/host/main_loop.h"
#include "platform/host/config_store.h"
#include "require.h"
#include "scratch_store.h"

using namespace fuzz;
using platform::host::ConfigStore;

namespace {

constexpr std::size_t kLongest = 4096;  // bytes of typed input

int input = -1;   // a file in memory instead of standard input
int output = -1;  // and instead of standard output

bool interrupted = false;  // Ctrl-C came

// Connecting takes no time.
constexpr char kScenario[] =
    "{\"radio\": true, \"connected\": \"Attic 6E\", \"connect_milliseconds\": 0, \"access_points\":"
    "[{\"ssid\": \"Attic 6E\", \"frequency_mhz\": 6135, \"signal_dbm\": -52, \"saved\": true},"
    "{\"ssid\": \"Garden Shed\", \"frequency_mhz\": 2437, \"signal_dbm\": -78, \"saved\": true}],"
    "\"profiles\": [{\"name\": \"wifi0\", \"type\": \"wifi\"},"
    "{\"name\": \"eth0\", \"type\": \"ethernet\"}]}";

void fill(int file, const char* bytes, std::size_t size) {
  require(ftruncate(file, 0) == 0 && lseek(file, 0, SEEK_SET) == 0, "a file in memory is emptied");
  require(write(file, bytes, size) == static_cast<ssize_t>(size), "and filled");
  lseek(file, 0, SEEK_SET);
}

std::string printed() {
  const auto size = static_cast<std::size_t>(lseek(output, 0, SEEK_END));
  std::string text(size, '\0');
  require(pread(output, text.data(), size, 0) == static_cast<ssize_t>(size), "output is read");
  return text;
}

int run(const std::vector<std::string>& words) {
  fill(output, "", 0);
  cli::Session session(FUZZ_PROVIDER);
  const int result = cli::runCommand(session, words);
  require(cli::standardOutputIsWritten(), "what is printed is written");
  const menu::Interruption none;  // a program that was interrupted would be ended soon
  return result;
}

Json::Value printedJson() {
  const std::string text = printed();
  Json::CharReaderBuilder strict;
  Json::CharReaderBuilder::strictMode(&strict.settings_);
  const std::unique_ptr<Json::CharReader> reader(strict.newCharReader());
  Json::Value root;
  std::string errors;
  require(reader->parse(text.data(), text.data() + text.size(), &root, &errors),
          "--json writes JSON");
  require(g_utf8_validate(text.data(), static_cast<gssize>(text.size()), nullptr) != FALSE,
          "JSON is UTF-8");
  return root;
}

// Whether a command that may wait was typed, however it was quoted.
bool mayWait(std::string typed) {
  std::erase_if(typed,
                [](char c) { return std::string_view("\"'\\").find(c) != std::string::npos; });
  constexpr std::array<std::string_view, 4> kWaiting = {"watch", "serve", "connect", "--wait"};
  return std::ranges::any_of(
      kWaiting, [&](std::string_view word) { return typed.find(word) != std::string::npos; });
}

// What must hold whatever was typed before.
void requireOrder(bool alsoOfTheMenu) {
  const auto values = ConfigStore::instance().list("");
  for (const auto& [key, value] : values) {
    require(key.starts_with("db/") || key.starts_with("memory/"), "a key is of one of the areas");
    require(ConfigStore::instance().get(key) == value, "what is listed can be read");
  }
  require(run({"store", "list", "--json"}) == cli::kDone, "the store can be listed");
  require(printedJson().size() == values.size(), "all of it");
  if (!alsoOfTheMenu) return;
  const int shown = run({"show", "--json"});
  require(shown == cli::kDone || shown == cli::kFailed, "the menu is shown, or says what failed");
  require(printedJson().isArray(), "as JSON");
}

void type(const std::uint8_t* data, std::size_t size) {
  const auto* text = reinterpret_cast<const char*>(data);
  fill(input, text, size);
  interrupted = false;
  const int result = run({"shell"});
  require(!interrupted || mayWait({text, size}), "nothing waits that is not to");
  require(result == cli::kDone || result == cli::kFailed || result == cli::kUnknown ||
              result == cli::kUnanswered || (result == cli::kInterrupted && interrupted),
          "the program ends with one of its codes");
}

// The program's descriptors: files in memory for its input and output, and no messages.
void takeStandardStreams() {
  static std::ofstream nowhere("/dev/null");
  std::cerr.rdbuf(nowhere.rdbuf());
  input = memfd_create("input", MFD_CLOEXEC);
  output = memfd_create("output", MFD_CLOEXEC);
  const int standardOutput = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 3);
  dup2(input, STDIN_FILENO);
  dup2(output, STDOUT_FILENO);
  cli::claimStandardOutput();
  dup2(standardOutput, STDOUT_FILENO);
  close(standardOutput);
}

}  // namespace

extern "C" {

const char* __asan_default_options();
const char* __lsan_default_suppressions();
gboolean __real_g_main_context_iteration(GMainContext* context, gboolean mayBlock);
gboolean __wrap_g_main_context_iteration(GMainContext* context, gboolean mayBlock);

// When the program would wait, nothing else is pending, so this sends Ctrl-C.
gboolean __wrap_g_main_context_iteration(GMainContext* context, gboolean mayBlock) {
  const gboolean worked = __real_g_main_context_iteration(context, FALSE);
  if (worked != FALSE || mayBlock == FALSE) return worked;
  interrupted = true;
  std::raise(SIGINT);
  return __real_g_main_context_iteration(context, TRUE);
}

// Short allocation traces, because they take most of the time.
const char* __asan_default_options() {
  return "malloc_context_size=5";
}

// The provider never frees the text of the device's string ID: the platform may own it.
const char* __lsan_default_suppressions() {
  return "leak:system_info_get_custom_string";
}

int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
  makeScratchFolder();
  const std::string scenario = scratchFile("scenario.json");
  std::ofstream(scenario) << kScenario;
  setenv("VENTARO_SCENARIO", scenario.c_str(), 1);
  setenv("VENTARO_RESOURCE_ROOT", FUZZ_RESOURCES, 1);
  for (const char* variable : {"LANGUAGE", "VENTARO_PRODUCT", "VENTARO_REGION"}) unsetenv(variable);
  takeStandardStreams();
  // The provider stays loaded, because its coverage counters must.
  static const auto& loaded = *new cli::Session(FUZZ_PROVIDER);
  const_cast<cli::Session&>(loaded).menu();
  ConfigStore::instance().list("");
  rememberStore();
  return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > kLongest) return -1;
  type(data, size);
  requireOrder(size % 4 == 0);  // because it is slow
  restoreStore();
  menu::runPending();
  return 0;
}

}  // extern "C"
