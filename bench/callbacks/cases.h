// The measured cases: every callback for every key, in the provider and in its floor.
#ifndef BENCH_CALLBACKS_CASES_H
#define BENCH_CALLBACKS_CASES_H

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "stand_in.h"
#include "ventaro/data_provider.h"

// A list entry as the provider makes it.
struct ListEntry {
  char* text;
  int value;
  ITEM_FOLLOWING_ACTION_TYPE action;
};

// The inputs and outputs of a call.
struct Outputs {
  int result = 0;
  int number = 0;
  const char* word = nullptr;    // not owned by the caller
  char* text = nullptr;          // the caller's
  const void** items = nullptr;  // `number` of them, owned by the caller
  data_provider_cbs* table = nullptr;
  std::array<char, VENTARO_CURRENT_VALUE_SIZE> value{};
  std::array<char, VENTARO_MESSAGE_TEXT_SIZE> message{};
  std::array<char, VENTARO_MESSAGE_BUTTON_SIZE> first{};
  std::array<char, VENTARO_MESSAGE_BUTTON_SIZE> second{};

  ListEntry* entry(int index) const;
  // Frees what the caller owns.
  void giveBack();
};

// A callback of any type; the case knows it.
using Function = void (*)();

struct Case {
  std::string function = {};
  std::string key = {};
  // The callback's declaration in C++, with "@" for its name. An output parameter has the name of
  // its member in Outputs.
  std::string prototype = {};
  std::function<void(Function function, Outputs& outputs)> call = {};
  Function provider = nullptr;
  stand_in::Answers answers = {};
  int callsPerPage = 0;
  std::function<void(Outputs& outputs)> prepare = {};  // makes the inputs; not measured
  Function floor = nullptr;

  // Prepares one call, makes it, and frees its outputs.
  void callOnce(Function side, Outputs& outputs) const;
};

// The provider stays loaded for the process's lifetime. The platform's answers must be
// `Case::answers` during a call. Raises std::runtime_error when it cannot be loaded.
std::vector<Case> loadCases(const char* file);

// Sets each case's floor, from the library generated from the cases' recordings.
void loadFloors(const char* file, std::vector<Case>& cases);

#endif  // BENCH_CALLBACKS_CASES_H
