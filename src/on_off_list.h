// What the option lists of the setting objects have in common.
#ifndef VENTARO_ON_OFF_LIST_H
#define VENTARO_ON_OFF_LIST_H

#include <cstddef>
#include <string>
#include <vector>

// Every text of a list stands in a block of its own of this many bytes. A longer text is cut to
// fill the block, without a terminating NUL, deliberately: who reads it reads no more than the
// block.
inline constexpr std::size_t kListTextSize = 256;

// Makes `texts` the two entries of an On/Off list in the user's language: Off, then On.
void fillOnOffTexts(std::vector<std::string>& texts);

// Returns an array with a block for each text and puts their number into `*count`. The caller owns
// the array and the blocks, all of the C heap.
const char** copyListTexts(const std::vector<std::string>& texts, int* count);

// Gives the caller a copy of the translated word On or Off in `*text`, of the C heap; null without
// memory.
void putOnOffText(bool on, char** text);

#endif  // VENTARO_ON_OFF_LIST_H
