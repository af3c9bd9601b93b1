// GSettings with the backend that keeps a key file. It has only one way to write, so "volatile"
// depends only on the folder.
#define G_SETTINGS_ENABLE_BACKEND
#include <gio/gio.h>
#include <gio/gsettingsbackend.h>

#include <fstream>

#include "contents.h"
#include "store.h"

namespace bench {

namespace {

void writeSchema(const std::filesystem::path& folder, int count) {
  std::ofstream file(folder / "bench.gschema.xml");
  file << "<schemalist><schema id=\"bench.store\" path=\"/bench/store/\">\n";
  for (int index = 0; index < count; ++index) {
    const bool isNumber = kindOf(index) == Kind::kNumber;
    file << "<key name=\"" << nameOf(index) << "\" type=\"" << (isNumber ? "i" : "s")
         << "\"><default>" << (isNumber ? "0" : "''") << "</default></key>\n";
  }
  file << "</schema></schemalist>\n";
}

void compileSchema(const std::filesystem::path& folder) {
  const std::string command = "glib-compile-schemas '" + folder.string() + "'";
  int status = -1;
  const bool started =
      g_spawn_command_line_sync(command.c_str(), nullptr, nullptr, &status, nullptr) != FALSE;
  require(started && status == 0, "GSettings: failed: ", command);
}

class GsettingsReader : public Reader {
 public:
  explicit GsettingsReader(GSettings* settings) : settings_(settings) {}

  int number(const std::string& key) override { return g_settings_get_int(settings_, key.c_str()); }
  char* text(const std::string& key) override {
    return g_settings_get_string(settings_, key.c_str());
  }

 private:
  GSettings* settings_;
};

// Writes the backend's file directly. Through GSettings, each set would write the whole file, and
// more than 256 delayed keys crash the program.
void writeKeyFile(const std::filesystem::path& path, int count) {
  std::ofstream file(path);
  file << "[bench/store]\n";
  for (int index = 0; index < count; ++index) {
    file << nameOf(index) << '=';
    if (kindOf(index) == Kind::kNumber) {
      file << numberOf(index) << '\n';
    } else {
      file << '\'' << textOf(index) << "'\n";
    }
  }
}

class Gsettings : public Store {
 public:
  Gsettings(std::filesystem::path folder, int count) : folder_(std::move(folder)) {
    if (!std::filesystem::exists(folder_ / "gschemas.compiled")) {
      writeSchema(folder_, count);
      compileSchema(folder_);
    }
    openSettings();
  }
  ~Gsettings() override { g_object_unref(settings_); }

  void fill(int count) override {
    g_object_unref(settings_);
    writeKeyFile(folder_ / "keyfile", count);
    openSettings();
  }

  std::unique_ptr<Reader> reader() override { return std::make_unique<GsettingsReader>(settings_); }

  void setNumber(const std::string& key, int value) override {
    require(g_settings_set_int(settings_, key.c_str(), value) != FALSE, "GSettings: cannot set ",
            key);
  }

  void watch(const std::string& key, const std::function<void()>& changed) override {
    changed_ = changed;
    const auto call = +[](GSettings*, const char*, Gsettings* self) { self->changed_(); };
    g_signal_connect(settings_, ("changed::" + key).c_str(), G_CALLBACK(call), this);
    number(key);  // it only notifies about keys that were read before
  }

  // It also watches its own file.
  void rest() override {
    while (g_main_context_iteration(nullptr, FALSE) != FALSE) {
    }
  }

 private:
  void openSettings() {
    auto* const source =
        g_settings_schema_source_new_from_directory(folder_.c_str(), nullptr, TRUE, nullptr);
    require(source != nullptr, "GSettings: there is no compiled schema in ", folder_.native());
    auto* const schema = g_settings_schema_source_lookup(source, "bench.store", FALSE);
    auto* const backend =
        g_keyfile_settings_backend_new((folder_ / "keyfile").c_str(), "/", "root");
    settings_ = g_settings_new_full(schema, backend, nullptr);
    g_object_unref(backend);
    g_settings_schema_unref(schema);
    g_settings_schema_source_unref(source);
  }

  void number(const std::string& key) { g_settings_get_int(settings_, key.c_str()); }

  std::filesystem::path folder_;
  GSettings* settings_ = nullptr;
  std::function<void()> changed_;
};

}  // namespace

std::unique_ptr<Store> openGsettings(const std::filesystem::path& folder, Durability /*durability*/,
                                     int count) {
  return std::make_unique<Gsettings>(folder, count);
}

}  // namespace bench
