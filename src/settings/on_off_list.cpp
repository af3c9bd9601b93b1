#include "settings/on_off_list.h"

#include <algorithm>
#include <cstdlib>

#include "c_heap.h"
#include "translation.h"
#include "ventaro/data_provider.h"

char* newListText(std::string_view first, std::string_view second) {
  auto* block = static_cast<char*>(std::calloc(1, VENTARO_LIST_TEXT_SIZE));
  const std::size_t size = first.copy(block, VENTARO_LIST_TEXT_SIZE);
  second.copy(block + size, VENTARO_LIST_TEXT_SIZE - size);
  return block;
}

void OnOffTexts::fill() {
  texts_[0] = translate("SID_OFF");
  texts_[1] = translate("SID_ON");
}

const char** OnOffTexts::copy(int* count) const {
  auto** copies = static_cast<char**>(std::calloc(texts_.size(), sizeof(char*)));
  std::ranges::transform(texts_, copies, [](const char* text) { return newListText(text); });
  *count = this->count();
  return const_cast<const char**>(copies);
}

void putOnOffText(bool on, char** text) {
  copyToHeap(translate(on ? "SID_ON" : "SID_OFF"), text);
}
