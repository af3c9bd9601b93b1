#include "provider.h"

#include <dlfcn.h>

#include <exception>
#include <stdexcept>
#include <utility>

namespace contract {

namespace {

template <typename Function>
void find(void* library, const char* name, Function& function) {
  function = reinterpret_cast<Function>(dlsym(library, name));
  if (function == nullptr) throw std::runtime_error(std::string("not exported: ") + name);
}

Exports exportsOf(void* library) {
  Exports exports{};
  find(library, "create_provider", exports.create_provider);
  find(library, "delete_provider", exports.delete_provider);
  find(library, "check_visibility_int", exports.check_visibility_int);
  find(library, "check_visibility_string", exports.check_visibility_string);
  find(library, "check_visibility_double", exports.check_visibility_double);
  find(library, "check_visibility_bool", exports.check_visibility_bool);
  find(library, "check_enable_int", exports.check_enable_int);
  find(library, "check_enable_string", exports.check_enable_string);
  find(library, "check_enable_double", exports.check_enable_double);
  find(library, "check_enable_bool", exports.check_enable_bool);
  return exports;
}

}  // namespace

Library::Library(std::string file, void* library) : file_(std::move(file)), library_(library) {}

Library::Library(const std::string& file)
    : Library(file, dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL)) {
  if (library_ == nullptr) throw std::runtime_error(dlerror());
  exports_ = exportsOf(library_);
}

// NOLINTNEXTLINE(bugprone-exception-escape)
Library::~Library() noexcept(false) {
  try {
    unload();
  } catch (...) {
    if (std::uncaught_exceptions() == 0) throw;
  }
}

void Library::unload() {
  void* library = std::exchange(library_, nullptr);
  if (library == nullptr) return;
  if (dlclose(library) != 0) throw std::runtime_error(dlerror());
  if (dlopen(file_.c_str(), RTLD_NOW | RTLD_NOLOAD) != nullptr) {
    throw std::runtime_error("still loaded: " + file_);
  }
}

Provider::Provider(const std::string& file)
    : library_(std::in_place, file), exports_(library_->exports()) {
  create();
}

Provider::Provider(const Exports& exports) : exports_(exports) {
  create();
}

void Provider::create() {
  if (exports_.create_provider(&table_) != 0 || table_ == nullptr) {
    throw std::runtime_error("create_provider gave no table");
  }
}

// NOLINTNEXTLINE(bugprone-exception-escape)
Provider::~Provider() noexcept(false) {
  const bool isDeleted = exports_.delete_provider(&table_) == 0;
  if (!isDeleted && std::uncaught_exceptions() == 0) {
    throw std::runtime_error("delete_provider did not take the table back");
  }
}

}  // namespace contract
