// The provider's functions as the matrix calls them: with outputs that are preset, so that what a
// function does not touch shows.
#ifndef FAULT_MATRIX_FUNCTIONS_H
#define FAULT_MATRIX_FUNCTIONS_H

#include <functional>
#include <string>
#include <vector>

#include "provider_test.h"

// All that the functions write to, preset.
struct Outputs {
  Outputs();
  bool areUntouched() const;

  static constexpr int kPresetValue = 77;

  int value = kPresetValue;
  char* text;
  std::string buffer;  // "sentinel", then a filling
  data_provider_cbs* table;
  void** items;
  ITEM_FOLLOWING_ACTION_TYPE action;
  std::string message;
  std::string first;
  std::string second;
};

struct Function {
  std::string name;
  // Returns the result as text.
  std::function<std::string(Outputs& out, const char* key)> call;
  // What the outputs hold as text; for functions that have some.
  std::function<std::string(const Outputs& out)> outputs;
  // Returns to the provider what the function handed out.
  std::function<void(Outputs& out)> giveBack;
  // What the function needs, made before anything fails; once for each call to come.
  std::function<void(const char* key)> prepare;
};

class Functions {
 public:
  Functions(const Exports& exports, const data_provider_cbs& table)
      : exports_(exports), table_(table) {}

  Function getInt() const;
  Function setInt(int value) const;
  Function setString() const;
  Function currentValue() const;
  Function getString() const;
  Function displayName() const;
  Function helpText() const;
  Function titleIcon() const;
  Function secondIcon() const;
  Function moduleInfo() const;
  Function messageBox() const;
  Function listItems() const;
  Function createProvider() const;

  // These need something to work on.
  Function itemDisplayValue();
  Function itemIntValue();
  Function itemAction();
  Function freeList();
  Function deleteProvider();
  Function releaseString();

  Function visibilityInt() const;
  Function visibilityString() const;
  Function visibilityDouble() const;
  Function visibilityBool() const;
  Function enableInt() const;
  Function enableString() const;
  Function enableDouble() const;
  Function enableBool() const;

  Function switchAndEightSeconds() const;
  Function notification() const;

 private:
  Function textFunction(const char* name, int (*callback)(const char*, char**)) const;
  void prepareList(const char* key);
  // The second entry of the list prepared for this call.
  void* item();
  void freeLast();

  const Exports& exports_;
  const data_provider_cbs& table_;

  struct List {
    void** items;
    int count;
  };
  std::vector<List> lists_;
  std::vector<data_provider_cbs*> tables_;
  std::vector<char*> texts_;
};

#endif  // FAULT_MATRIX_FUNCTIONS_H
