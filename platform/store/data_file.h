// What LMDB does not tell about its data file, and needs to be known before it is opened. All
// functions raise StoreError.
#ifndef PLATFORM_STORE_DATA_FILE_H
#define PLATFORM_STORE_DATA_FILE_H

#include <lmdb.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>

namespace platform {

// Whether a store was ever made in the file. A power cut or a full disk during the first opening
// leaves a part of LMDB's header, or zeros in its place.
bool hasHeader(const std::filesystem::path& path);

// How long the file must be for all pages in use, in bytes.
std::uint64_t sizeOfPages(MDB_env* environment);

// Empties the file, and makes it when missing.
void makeEmpty(const std::filesystem::path& path);

// Whether the pages between the sizes `is` and `wanted` (bytes) hold nothing. They are then missing
// because a process was killed, or the disk was full, between a commit and the filling up of the
// file. The file is only read.
bool lacksOnlyFreePages(int file, std::size_t is, std::size_t wanted);

}  // namespace platform

#endif  // PLATFORM_STORE_DATA_FILE_H
