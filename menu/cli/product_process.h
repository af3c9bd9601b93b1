// A provider reads its product once, so that each product needs a process of its own.
#ifndef MENU_CLI_PRODUCT_PROCESS_H
#define MENU_CLI_PRODUCT_PROCESS_H

#include <functional>
#include <string>

namespace cli {

// Whether $VENTARO_PRODUCT asks for every product, one after the other.
bool wantsAllProducts();

// Carries out the action in a copy of this process, with that product, and returns what it puts
// into `output`. `result` is the action's, kFailed when it raises an exception, which is complained
// of. Nothing of the store or a provider may be open in this process: a copy cannot use it.
struct ProcessResult {
  int result;
  std::string output;
};
ProcessResult inProcessOf(const std::string& product,
                          const std::function<int(std::string& output)>& action);

}  // namespace cli

#endif  // MENU_CLI_PRODUCT_PROCESS_H
