// The provider as a framework has it: loaded, with its table and its exported checks.
#ifndef TESTS_THREADS_PROVIDER_H
#define TESTS_THREADS_PROVIDER_H

#include <string>

#include "ventaro/data_provider.h"

namespace provider_calls {

// Creates the provider when it is made, and deletes and unloads it when it goes. Raises
// std::runtime_error when the library cannot be loaded, or is still there after it was unloaded.
class Provider {
 public:
  explicit Provider(const std::string& file);
  ~Provider() noexcept(false);
  Provider(const Provider&) = delete;
  Provider& operator=(const Provider&) = delete;

  const data_provider_cbs& table() const { return *table_; }

  decltype(&::create_provider) create;
  decltype(&::delete_provider) destroy;
  decltype(&::check_visibility_int) isVisibleInt;
  decltype(&::check_visibility_string) isVisibleString;
  decltype(&::check_visibility_double) isVisibleDouble;
  decltype(&::check_visibility_bool) isVisibleBool;
  decltype(&::check_enable_int) isEnabledInt;
  decltype(&::check_enable_string) isEnabledString;
  decltype(&::check_enable_double) isEnabledDouble;
  decltype(&::check_enable_bool) isEnabledBool;

 private:
  std::string file_;
  void* library_;
  data_provider_cbs* table_ = nullptr;
};

}  // namespace provider_calls

#endif  // TESTS_THREADS_PROVIDER_H
