// The provider's functions as the matrix calls them, through contract/, which checks for each call
// what always holds.
#ifndef FAULT_MATRIX_FUNCTIONS_H
#define FAULT_MATRIX_FUNCTIONS_H

#include <functional>
#include <string>
#include <vector>

#include "../broken_promises.h"

// The result and the outputs, as in the tables' texts. An entry's text is requested again.
std::string shown(contract::Calls& calls, const contract::Answer& answer);

struct Function {
  std::string name;
  // What was handed out is returned when the answer is destroyed.
  std::function<contract::Answer(const std::string& key)> call;
  // Prepares what the function needs before anything fails; once for each coming call.
  std::function<void(const std::string& key)> prepare = nullptr;
};

class Functions {
 public:
  // The table may be null when only the exported functions are called.
  Functions(const contract::Exports& exports, const data_provider_cbs* table,
            bool memoryMayRunOut = false);

  // The 27 functions of the ABI; set_int() with the value 1.
  const std::vector<Function>& all() const { return all_; }
  // By its name; raises std::logic_error when there is none.
  const Function& named(const std::string& name) const;

  Function setInt(int value);
  Function switchAndEightSeconds();
  static Function notification();

  contract::Calls& calls() { return calls_; }

 private:
  class Observer : public FailsTheTest {
    void givesBack(void** items, int count) override;
  };

  using OfItem = contract::Answer (contract::Calls::*)(const contract::Item& item);
  Function ofItem(const char* name, OfItem call);
  Function freeList();
  Function deleteProvider();

  Observer observer_;
  contract::Calls calls_;
  std::vector<contract::Answer> prepared_;  // lists or tables, the next one last
  std::vector<Function> all_;
};

#endif  // FAULT_MATRIX_FUNCTIONS_H
