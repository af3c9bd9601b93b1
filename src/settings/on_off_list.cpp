#include "settings/on_off_list.h"

#include "c_heap.h"
#include "translation.h"
#include "ventaro/data_provider.h"

char* newListText(std::string_view first, std::string_view second) {
  char* block = newZeroed<char>(VENTARO_LIST_TEXT_SIZE);
  const std::size_t size = first.copy(block, VENTARO_LIST_TEXT_SIZE);
  second.copy(block + size, VENTARO_LIST_TEXT_SIZE - size);
  return block;
}

void OnOffTexts::fill() {
  texts_[0] = translate("SID_OFF");
  texts_[1] = translate("SID_ON");
}

const char** OnOffTexts::copy(int* count) const {
  CArray<char> copies(texts_.size());
  for (std::size_t i = 0; i < texts_.size(); ++i) copies[i] = newListText(texts_[i]);
  *count = this->count();
  return const_cast<const char**>(copies.release());
}

void putOnOffText(bool on, char** text) {
  copyToHeap(translate(on ? "SID_ON" : "SID_OFF"), text);
}
