// A framework's drawing of the whole Network branch.
#ifndef BENCH_PAGE_DRAWING_H
#define BENCH_PAGE_DRAWING_H

#include <memory>

#include "contract/provider.h"

// Draws the branch of menu/menu.json: calls every callback for every item and returns everything.
// Returns the number of calls.
int draw(const contract::Provider& provider);

// The provider in a process with the platform ready, as in a framework.
std::unique_ptr<contract::Provider> loadProvider(const char* file);

#endif  // BENCH_PAGE_DRAWING_H
