// The host platform's store for a fuzz target: below /dev/shm, so that nothing waits for a disk,
// and for every input the same at its start.
#ifndef FUZZ_SCRATCH_STORE_H
#define FUZZ_SCRATCH_STORE_H

#include <string>

namespace fuzz {

// Makes a folder of this process, which goes with it, and points the host platform's variables
// there. To be called once, before anything of the host platform.
void makeScratchFolder();

// A file in that folder.
std::string scratchFile(const std::string& name);

// Remembers what the store holds now.
void rememberStore();

// Makes the store hold that again. Nobody is told of it.
void restoreStore();

}  // namespace fuzz

#endif  // FUZZ_SCRATCH_STORE_H
