// What is measured: every callback for every key, through the provider and through its floor.
#ifndef BENCH_CALLBACKS_CASES_H
#define BENCH_CALLBACKS_CASES_H

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "stand_in.h"
#include "ventaro/data_provider.h"

// A list's entry, as the provider makes it.
struct ListEntry {
  char* text;
  int value;
  ITEM_FOLLOWING_ACTION_TYPE action;
};

// What a call is given, and what it gave.
struct Outputs {
  int result = 0;
  int number = 0;
  const char* word = nullptr;    // not the caller's
  char* text = nullptr;          // the caller's
  const void** items = nullptr;  // the caller's, `number` of them
  data_provider_cbs* table = nullptr;
  std::array<char, VENTARO_CURRENT_VALUE_SIZE> value{};
  std::array<char, VENTARO_MESSAGE_TEXT_SIZE> message{};
  std::array<char, VENTARO_MESSAGE_BUTTON_SIZE> first{};
  std::array<char, VENTARO_MESSAGE_BUTTON_SIZE> second{};

  ListEntry* entry(int index) const;
  // Frees what is the caller's.
  void giveBack();
};

// A callback of whichever type; the case knows it.
using Function = void (*)();

struct Case {
  std::string function = {};
  std::string key = {};
  // The callback's in C++, with "@" for its name. A parameter through which it gives something has
  // the name of the member of Outputs.
  std::string prototype = {};
  std::function<void(Function function, Outputs& outputs)> call = {};
  Function provider = nullptr;
  stand_in::Answers answers = {};
  int callsPerPage = 0;
  std::function<void(Outputs& outputs)> prepare = {};  // makes what it is given; not measured
  Function floor = nullptr;

  // Prepares one call, makes it, and frees what it gave.
  void callOnce(Function side, Outputs& outputs) const;
};

// The provider is loaded for as long as the process runs. The platform's answers must be
// `Case::answers` while one is called. Raises std::runtime_error when it cannot be loaded.
std::vector<Case> loadCases(const char* file);

// Sets each case's floor, from the library that was made of the cases' recordings.
void loadFloors(const char* file, std::vector<Case>& cases);

#endif  // BENCH_CALLBACKS_CASES_H
