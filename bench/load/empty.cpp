// A provider that offers nothing, with the libraries of the real one.
#include <cstdlib>

#include "ventaro/data_provider.h"

int create_provider(data_provider_cbs** cbs) {
  *cbs = static_cast<data_provider_cbs*>(std::calloc(1, sizeof(data_provider_cbs)));
  return 0;
}
