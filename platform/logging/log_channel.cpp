#include "log_channel.h"

#include <fcntl.h>
#include <spdlog/sinks/null_sink.h>
#include <spdlog/sinks/rotating_file_sink.h>
#include <spdlog/sinks/stdout_sinks.h>
#include <sys/stat.h>

#include <iostream>

#include "../host/environment.h"
#include "../host/never_destroyed.h"
#include "../store/files.h"
#include "platform/host/config_store.h"
#include "platform/host/folders.h"

namespace platform {

namespace {

constexpr std::size_t kFileSize = std::size_t{1} << 20;  // bytes
constexpr std::size_t kOldFiles = 3;

// Makes the file when it is missing, and refuses what is no file of this user's.
void makePrivate(const std::string& path) {
  const File file = openFile(path, O_WRONLY | O_CREAT);
  fchmod(file.get(), S_IRUSR | S_IWUSR);  // one of an earlier version could be read by others
}

spdlog::sink_ptr makeSink(const std::string& file) {
  if (variableOr("VENTARO_LOG") == "stderr") {
    return std::make_shared<spdlog::sinks::stderr_sink_mt>();
  }
  const auto folder = host::stateFolder();
  try {
    makeOwnFolder(folder);
  } catch (const host::StoreError&) {
    return std::make_shared<spdlog::sinks::null_sink_mt>();  // the store says why
  }
  try {
    makeOwnFolderIn(folder, "log");
    spdlog::file_event_handlers keepPrivate;
    keepPrivate.before_open = makePrivate;
    return std::make_shared<spdlog::sinks::rotating_file_sink_mt>(
        (folder / "log" / file).string(), kFileSize, kOldFiles, false, keepPrivate);
  } catch (const host::StoreError& error) {
    if (error.code() == host::StoreCode::kUnavailable) {
      std::cerr << "ventaro: no log is kept: " << error.what() << "\n";
    }
  } catch (const std::exception&) {
    // A full disk, for example.
  }
  return std::make_shared<spdlog::sinks::null_sink_mt>();
}

}  // namespace

spdlog::logger& makeLogger(const std::string& name, const std::string& file,
                           const std::string& pattern) {
  auto& logger = neverDestroyed(new spdlog::logger(name, makeSink(file)));
  logger.set_pattern(pattern);
  logger.flush_on(spdlog::level::info);
  // A log error, such as a full disk, must not make the callers fail.
  logger.set_error_handler([](const std::string& /*message*/) {});
  return logger;
}

Message formatMessage(const char* format, std::va_list arguments) {
  return {g_strdup_vprintf(format, arguments), &g_free};
}

}  // namespace platform
