// A framework's drawing of the whole Network branch.
#ifndef BENCH_PAGE_DRAWING_H
#define BENCH_PAGE_DRAWING_H

#include <memory>

#include "contract/provider.h"

// Draws the branch of menu/menu.json: asks every callback about every item and gives everything
// back. Returns the number of calls.
int draw(const contract::Provider& provider);

// The provider in a process that has the platform ready, as a framework's is.
std::unique_ptr<contract::Provider> loadProvider(const char* file);

#endif  // BENCH_PAGE_DRAWING_H
