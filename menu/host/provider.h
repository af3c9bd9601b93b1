// A data provider in this process: its library, its table, and its callbacks as C++ functions.
#ifndef MENU_HOST_PROVIDER_H
#define MENU_HOST_PROVIDER_H

#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "ventaro/data_provider.h"

namespace menu {

// The library could not be loaded or is no data provider. The message says which file and why.
class LoadError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// An exception left a callback. The message names the callback.
class CallbackError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Calls a function of the provider. An exception that leaves it becomes a CallbackError with its
// name.
template <typename Result, typename... Parameters>
Result call(const char* name, Result (*function)(Parameters...),
            std::type_identity_t<Parameters>... arguments) {
  try {
    return function(arguments...);
  } catch (const std::exception& error) {
    throw CallbackError(std::string(name) + " raised an exception: " + error.what());
  }
}

// Texts come back as display text. A slot of the table that is null is something that the provider
// does not offer: a text is empty then, a list has no entries. All functions but the constructor
// raise CallbackError.
class Provider {
 public:
  // Loads the library and creates the provider. The file is searched as dlopen() does. String IDs
  // are looked up in the text domain; an empty one leaves them as they are. Raises LoadError.
  Provider(const std::string& file, std::string textDomain);
  ~Provider();
  Provider(const Provider&) = delete;
  Provider& operator=(const Provider&) = delete;

  std::string displayName(const std::string& key) const;

  // The value as text; nothing when the provider has none.
  std::optional<std::string> stringValue(const std::string& key) const;

  // Nothing when it cannot be read.
  std::optional<int> intValue(const std::string& key) const;

  // These return what the callbacks return; nothing when they are not offered.
  std::optional<int> setInt(const std::string& key, int value) const;
  std::optional<int> setString(const std::string& key, const std::string& value) const;

  std::string helpText(const std::string& key) const;

  // An image path.
  std::string titleIcon(const std::string& key) const;

  // An image path, "loading", or empty.
  std::string statusIcon(const std::string& key) const;

  struct MessageBox {
    std::string text;
    std::string yes;
    std::string no;
    int type;
  };
  // Nothing when it is not offered.
  std::optional<MessageBox> messageBox(const std::string& key) const;

  struct ListEntry {
    std::string text;
    int value;  // the entry's position, where the provider gives no values
    ITEM_FOLLOWING_ACTION_TYPE action;
  };
  std::vector<ListEntry> list(const std::string& key) const;

  // The table as the provider gave it, and what its library exports by that name; null for nothing.
  // Both stay the provider's.
  const data_provider_cbs& table() const { return *table_; }
  void* find(const char* name) const;

  bool isVisible(const std::string& key) const;
  bool isEnabled(const std::string& key) const;

 private:
  struct CloseLibrary {
    void operator()(void* library) const;
  };
  struct Exports {
    decltype(&create_provider) create;
    decltype(&delete_provider) destroy;
    decltype(&check_visibility_int) isVisible;
    decltype(&check_enable_int) isEnabled;
  };

  template <typename Function>
  Function symbol(const char* name) const;
  std::string takeText(char* text) const;
  std::string text(const char* callback, int (*function)(const char*, char**),
                   const std::string& key) const;
  std::string translated(std::string_view text) const;
  ListEntry entry(void* item, int position) const;

  std::string file_;
  std::string textDomain_;
  std::unique_ptr<void, CloseLibrary> library_;
  Exports exports_{};
  data_provider_cbs* table_ = nullptr;
};

}  // namespace menu

#endif  // MENU_HOST_PROVIDER_H
