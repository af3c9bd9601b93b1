// What is measured: every callback for every key, through the provider and through its floor.
#ifndef BENCH_CALLBACKS_CASES_H
#define BENCH_CALLBACKS_CASES_H

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "stand_in.h"
#include "ventaro/data_provider.h"

// What a call gave.
struct Outputs {
  int result = 0;
  int number = 0;
  char* text = nullptr;          // the caller's
  const void** items = nullptr;  // the caller's, `number` of them
  data_provider_cbs* table = nullptr;
  std::array<char, VENTARO_CURRENT_VALUE_SIZE> value{};
  std::array<char, VENTARO_MESSAGE_TEXT_SIZE> message{};
  std::array<char, VENTARO_MESSAGE_BUTTON_SIZE> first{};
  std::array<char, VENTARO_MESSAGE_BUTTON_SIZE> second{};

  // Fills the caller's buffers, so that what is not written does not look like zeroes that are.
  void fillBuffers();
  // All of it as text, to be compared: of a block every byte.
  std::string shown() const;
  // Frees what is the caller's.
  void giveBack();
};

using Call = std::function<void(Outputs& outputs)>;

struct Case {
  std::string function;
  std::string key;
  stand_in::Answers answers;
  Call provider;
  Call floor;
  int callsPerPage = 0;
  Call prepare = nullptr;  // makes what the call takes, for each anew; not measured
};

// A library of the provider's that is loaded for as long as the process runs.
class Provider {
 public:
  // std::runtime_error when it cannot be loaded.
  explicit Provider(const char* file);

  const data_provider_cbs& table() const { return *table_; }
  template <typename Function>
  Function* function(const char* name) const {
    return reinterpret_cast<Function*>(find(name));
  }

 private:
  void* find(const char* name) const;

  void* library_ = nullptr;
  data_provider_cbs* table_ = nullptr;
};

// The platform's answers are `Case::answers` while one is called.
std::vector<Case> allCases(const Provider& provider);

#endif  // BENCH_CALLBACKS_CASES_H
