// A data provider as a menu framework uses it: its library loaded, its table created.
#ifndef CONTRACT_PROVIDER_H
#define CONTRACT_PROVIDER_H

#include <optional>
#include <string>

#include "ventaro/data_provider.h"

namespace contract {

// The ten functions that a provider exports.
struct Exports {
  decltype(&::create_provider) create_provider;
  decltype(&::delete_provider) delete_provider;
  decltype(&::check_visibility_int) check_visibility_int;
  decltype(&::check_visibility_string) check_visibility_string;
  decltype(&::check_visibility_double) check_visibility_double;
  decltype(&::check_visibility_bool) check_visibility_bool;
  decltype(&::check_enable_int) check_enable_int;
  decltype(&::check_enable_string) check_enable_string;
  decltype(&::check_enable_double) check_enable_double;
  decltype(&::check_enable_bool) check_enable_bool;
};

// The functions of the provider that this program is linked with.
inline Exports linkedExports() {
  return {&::create_provider,         &::delete_provider,         &::check_visibility_int,
          &::check_visibility_string, &::check_visibility_double, &::check_visibility_bool,
          &::check_enable_int,        &::check_enable_string,     &::check_enable_double,
          &::check_enable_bool};
}

// A provider's library.
class Library {
 public:
  // Loads it; the file is looked up as dlopen() does. Raises std::runtime_error when it cannot be
  // loaded or does not export all ten functions.
  explicit Library(const std::string& file);
  // Unloads it, and raises what unload() raises unless another exception is on its way.
  ~Library() noexcept(false);  // NOLINT(bugprone-exception-escape): said above
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;

  const Exports& exports() const { return exports_; }

  // Nothing in it may be used afterwards. Raises std::runtime_error when it stays loaded.
  void unload();

 private:
  Library(std::string file, void* library);

  std::string file_;
  void* library_;
  Exports exports_{};
};

// A provider with its table, which lives as long as this object.
class Provider {
 public:
  // Loads the library, and unloads it at the end. Raises what Library raises, and
  // std::runtime_error when no table is created.
  explicit Provider(const std::string& file);
  // The same for functions that are already linked in.
  explicit Provider(const Exports& exports);
  // Raises std::runtime_error when the table is not taken back or the library stays loaded, unless
  // another exception is on its way.
  ~Provider() noexcept(false);  // NOLINT(bugprone-exception-escape): said above
  Provider(const Provider&) = delete;
  Provider& operator=(const Provider&) = delete;

  const Exports& exports() const { return exports_; }
  const data_provider_cbs& table() const { return *table_; }

 private:
  void create();

  std::optional<Library> library_;
  Exports exports_;
  data_provider_cbs* table_ = nullptr;
};

}  // namespace contract

#endif  // CONTRACT_PROVIDER_H
