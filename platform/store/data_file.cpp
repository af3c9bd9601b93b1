#include "data_file.h"

#include <fcntl.h>
#include <lmdb.h>
#include <sys/mman.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "files.h"
#include "platform/host/config_store.h"
#include "transactions.h"

namespace platform {

namespace {

constexpr MDB_dbi kFreePages = 0;  // the table in which LMDB keeps the free pages

std::size_t pageSize() {
  return static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

bool isZero(const char* begin, std::size_t size) {
  return std::all_of(begin, begin + size, [](char byte) { return byte == 0; });
}

// A copy in memory, filled up with zeros to the wanted size.
File copyOf(int file, std::size_t is, std::size_t wanted) {
  File copy(memfd_create("store", MFD_CLOEXEC));
  if (!copy || ftruncate(copy.get(), static_cast<off_t>(wanted)) != 0) check(errno, "cannot open");
  off_t at = 0;
  while (at < static_cast<off_t>(is)) {
    const ssize_t size = sendfile(copy.get(), file, &at, is - static_cast<std::size_t>(at));
    if (size < 0) check(errno, "cannot open");
    if (size == 0) break;
  }
  return copy;
}

using Environment = std::unique_ptr<MDB_env, decltype(&mdb_env_close)>;

Environment openCopy(const File& copy, std::size_t size) {
  MDB_env* environment = nullptr;
  check(mdb_env_create(&environment), "cannot open");
  Environment owned(environment, &mdb_env_close);
  const std::string path = "/proc/self/fd/" + std::to_string(copy.get());
  check(mdb_env_set_mapsize(environment, size), "cannot open");
  check(mdb_env_open(environment, path.c_str(), MDB_RDONLY | MDB_NOLOCK | MDB_NOSUBDIR, 0),
        "cannot open");
  return owned;
}

// Whether the file is a whole store with smaller pages than this kernel's.
bool isWhole(const File& file) try {
  struct stat status {};
  if (fstat(file.get(), &status) != 0) check(errno, "cannot open");
  const auto size = static_cast<std::size_t>(status.st_size);
  const Environment environment = openCopy(copyOf(file.get(), size, size), size);
  return sizeOfPages(environment.get()) <= size;
} catch (const host::StoreError&) {
  return false;
}

// Whether the one page of the header that is there tells of a commit. LMDB knows its layout, and
// wants both.
bool wasCommitted(std::string_view page) try {
  const File copy(memfd_create("store", MFD_CLOEXEC));
  for (int i = 0; i < 2; ++i) {
    if (write(copy.get(), page.data(), page.size()) != static_cast<ssize_t>(page.size()))
      return true;
  }
  MDB_envinfo info{};
  check(mdb_env_info(openCopy(copy, 2 * page.size()).get(), &info), "cannot open");
  return info.me_last_txnid > 0;
} catch (const host::StoreError&) {
  return true;  // damaged, rather than never made
}

// The free pages from that one on. LMDB keeps them as lists of numbers, each preceded by its
// length.
std::set<std::size_t> freePages(MDB_env* environment, std::size_t first) {
  std::set<std::size_t> pages;
  const Transaction transaction(environment, Access::kRead);
  Cursor cursor(transaction.get(), kFreePages);
  MDB_val key{};
  MDB_val data{};
  while (cursor.move(key, data, MDB_NEXT)) {
    std::vector<std::size_t> list(data.mv_size / sizeof(std::size_t));
    std::memcpy(list.data(), data.mv_data, list.size() * sizeof(std::size_t));
    for (std::size_t i = 1; i < list.size(); ++i) {
      if (list[i] >= first) pages.insert(list[i]);
    }
  }
  return pages;
}

}  // namespace

bool hasHeader(const std::filesystem::path& path) {
  const File file = openFileIfAny(path, O_RDONLY);
  if (!file) return false;
  const std::size_t page = pageSize();
  std::vector<char> header(2 * page + 1);
  const ssize_t size = pread(file.get(), header.data(), header.size(), 0);
  if (size < 0) check(errno, "cannot open");
  if (static_cast<std::size_t>(size) < 2 * page) return isWhole(file);
  const bool isFirstZero = isZero(header.data(), page);
  const bool isSecondZero = isZero(header.data() + page, page);
  if (isFirstZero == isSecondZero) return !isFirstZero;
  const bool isHeaderAlone = static_cast<std::size_t>(size) == 2 * page;
  return !isHeaderAlone && wasCommitted({header.data() + (isFirstZero ? page : 0), page});
}

std::uint64_t sizeOfPages(MDB_env* environment) {
  MDB_envinfo info{};
  MDB_stat pages{};
  check(mdb_env_info(environment, &info), "cannot open");
  check(mdb_env_stat(environment, &pages), "cannot open");
  return (std::uint64_t{info.me_last_pgno} + 1) * pages.ms_psize;
}

void makeEmpty(const std::filesystem::path& path) {
  const File file = openFile(path, O_WRONLY | O_CREAT);
  if (ftruncate(file.get(), 0) != 0) check(errno, "cannot open");
}

bool lacksOnlyFreePages(int file, std::size_t is, std::size_t wanted) try {
  const std::size_t first = is / pageSize();
  const std::size_t end = wanted / pageSize();
  const File copy = copyOf(file, is, wanted);
  const Environment environment = openCopy(copy, wanted);
  return freePages(environment.get(), first).size() == end - first;
} catch (const host::StoreError&) {
  return false;  // the pages that list the free ones are missing too
}

}  // namespace platform
