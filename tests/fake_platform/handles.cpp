#include <algorithm>
#include <array>
#include <functional>

#include "call.h"

namespace fake_platform {
namespace {

struct Name {
  const char* kind;
  int number;
};

// A handle is the address of its name. This many are distinct; then they are reused from the first
// on.
constinit std::array<Name, 1U << 16U> names{};
std::size_t next = 0;

bool isName(const void* value) {
  const std::less<> isBefore;
  return !isBefore(value, names.begin()) && isBefore(value, names.end());
}

}  // namespace

void resetHandles() {
  std::ranges::fill(names, Name{});
}

void* newHandle(const char* kind, int number) {
  Name& name = names[next++ % names.size()];
  name = {kind, number};
  return &name;
}

std::string shown(Handle handle) {
  if (handle.value == nullptr) return "null";
  if (!isName(handle.value)) return "unknown";
  const StateLock lock(stateMutex());
  const Name& name = *static_cast<const Name*>(handle.value);
  if (name.kind == nullptr) return "unknown";
  return name.kind + (name.number != 0 ? " " + std::to_string(name.number) : "");
}

}  // namespace fake_platform
