// The list that a setting object hands out, as texts.
#ifndef LIST_COPY_H
#define LIST_COPY_H

#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

// Asks the object for its list and frees the array and the blocks. Each text is at most the 256
// bytes of its block.
template <typename Setting>
std::vector<std::string> takeList(Setting& setting, const char* key) {
  constexpr std::size_t kBlockSize = 256;
  int count = -1;
  auto** blocks = const_cast<char**>(setting.getListItems(key, &count));
  std::vector<std::string> texts;
  for (int i = 0; i < count; ++i) {
    texts.emplace_back(blocks[i], strnlen(blocks[i], kBlockSize));
    std::free(blocks[i]);
  }
  std::free(blocks);
  return texts;
}

#endif  // LIST_COPY_H
