// The host platform's store for a fuzz target: below /dev/shm, so that nothing waits for a disk,
// and reset before every input.
#ifndef FUZZ_SCRATCH_STORE_H
#define FUZZ_SCRATCH_STORE_H

#include <string>

namespace fuzz {

// Makes a folder that is removed when the process ends, and points the host platform's variables
// there. Call it once, before anything in the host platform.
void makeScratchFolder();

// A file in that folder.
std::string scratchFile(const std::string& name);

// Remembers what the store holds now.
void rememberStore();

// Restores those contents without notifying anybody.
void restoreStore();

}  // namespace fuzz

#endif  // FUZZ_SCRATCH_STORE_H
