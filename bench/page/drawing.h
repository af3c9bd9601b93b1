// A framework's drawing of the whole Network branch.
#ifndef BENCH_PAGE_DRAWING_H
#define BENCH_PAGE_DRAWING_H

#include <functional>
#include <memory>
#include <string>

#include "contract/provider.h"
#include "platform/host/network_service.h"

// What a drawing gets, item by item. Without a receiver nothing is kept, as a framework would not.
using Receiver = std::function<void(const char* key, const char* callback, const std::string&)>;

// Draws the branch: asks every callback about every item and gives everything back. Returns the
// number of calls.
int draw(const contract::Provider& provider, const Receiver& receiver = nullptr);

// The provider in a process that has the platform ready, as a framework's is.
std::unique_ptr<contract::Provider> loadProvider(const char* file);

#endif  // BENCH_PAGE_DRAWING_H
