// What the option lists of the setting objects have in common.
#ifndef VENTARO_ON_OFF_LIST_H
#define VENTARO_ON_OFF_LIST_H

#include <array>
#include <string_view>

// Returns a block of VENTARO_LIST_TEXT_SIZE bytes of the C heap, the caller's, with the two texts
// joined. Longer text is cut to fill the block, without a NUL: the framework never reads beyond the
// block. Raises std::bad_alloc when memory runs out.
char* newListText(std::string_view first, std::string_view second = {});

// The two entries of an On/Off list in the user's language: Off, then On. gettext owns the texts.
class OnOffTexts {
 public:
  // Translates them again.
  void fill();

  // 0 before the first fill().
  int count() const { return texts_[0] == nullptr ? 0 : static_cast<int>(texts_.size()); }

  // Returns an array with a block for each text and puts their number into `*count`. The
  // caller owns the array and the blocks, all of the C heap. Raises std::bad_alloc when memory runs
  // out, `*count` untouched.
  const char** copy(int* count) const;

 private:
  std::array<const char*, 2> texts_{};
};

// Gives the caller a copy of the translated word On or Off in `*text`, of the C heap; null when
// memory runs out.
void putOnOffText(bool on, char** text);

#endif  // VENTARO_ON_OFF_LIST_H
