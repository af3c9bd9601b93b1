// The fixture of the matrix: the real provider, called again and again while the platform's
// functions fail one after the other, and compared with the tables.
#ifndef FAULT_MATRIX_FAULT_MATRIX_H
#define FAULT_MATRIX_FAULT_MATRIX_H

#include <memory>
#include <string>
#include <vector>

#include "course.h"
#include "functions.h"
#include "provider_test.h"
#include "tables.h"
#include "world.h"

// Every platform function that can fail, including the lock's. GLib's timers cannot fail.
const std::vector<std::string>& failingFunctions();

const std::vector<Mode>& matrixModes();

// Counts a combination for the sums that are printed at the end.
void countCombination(const Walker& walker);

// Makes the platform fail like this, and cancels the previous fault.
void arm(const Fault& fault);
void disarm(const Fault& fault);

class FaultMatrix : public ProviderTest {
 protected:
  // Loads the provider over this world and creates it. The saved networks are watched from here on
  // unless said otherwise.
  void enter(const World& world, bool watching = true);

  // Calls these callbacks from here on; null for the exported functions alone.
  void useTable(const data_provider_cbs* table, bool memoryMayRunOut = false);

  Functions& functions() { return *functions_; }

  // Requires that two calls in a row, for every key and every fault, match the table.
  void expectTable(const Function& function, const Table& rows,
                   const std::vector<std::string>& keys = allKeys());

  // The same for one key and one fault.
  void expectTwoCalls(const Function& function, const Steps& steps, const std::string& key,
                      const Fault& fault);

  // Makes one call and returns its result, with standard output only if it is captured.
  Outcome callOnce(const Function& function, const std::string& key, bool capture);

  // How many texts of the platform the provider keeps after these calls: a product's device name is
  // never freed, because the platform may own it.
  static int keptTexts(const Journal& journal);

  void leave();
  void TearDown() override;

 private:
  void settle();

  World world_;
  Walker walker_;
  std::unique_ptr<Functions> functions_;
  int blocksBefore_ = 0;
};

#endif  // FAULT_MATRIX_FAULT_MATRIX_H
