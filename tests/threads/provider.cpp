#include "provider.h"

#include <dlfcn.h>

#include <exception>
#include <stdexcept>

namespace provider_calls {

namespace {

template <typename Function>
void find(void* library, const char* name, Function& function) {
  function = reinterpret_cast<Function>(dlsym(library, name));
  if (function == nullptr) throw std::runtime_error(std::string("not exported: ") + name);
}

}  // namespace

Provider::Provider(const std::string& file)
    : file_(file), library_(dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL)) {
  if (library_ == nullptr) throw std::runtime_error(dlerror());
  find(library_, "create_provider", create);
  find(library_, "delete_provider", destroy);
  find(library_, "check_visibility_int", isVisibleInt);
  find(library_, "check_visibility_string", isVisibleString);
  find(library_, "check_visibility_double", isVisibleDouble);
  find(library_, "check_visibility_bool", isVisibleBool);
  find(library_, "check_enable_int", isEnabledInt);
  find(library_, "check_enable_string", isEnabledString);
  find(library_, "check_enable_double", isEnabledDouble);
  find(library_, "check_enable_bool", isEnabledBool);
  create(&table_);
}

Provider::~Provider() noexcept(false) {
  destroy(&table_);
  dlclose(library_);
  const bool stayed = dlopen(file_.c_str(), RTLD_NOW | RTLD_NOLOAD) != nullptr;
  if (stayed && std::uncaught_exceptions() == 0) throw std::runtime_error("still loaded: " + file_);
}

}  // namespace provider_calls
