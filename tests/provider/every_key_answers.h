// What each of the answers in every_key_table.h is made of: the result with the outputs as a line
// of text, and the whole journal.
#ifndef EVERY_KEY_ANSWERS_H
#define EVERY_KEY_ANSWERS_H

#include <iosfwd>
#include <string>

#include "every_key_table.h"
#include "fake_platform.h"

using namespace fake_platform;  // NOLINT(google-build-using-namespace): the tests' vocabulary

inline constexpr char kDocument[] = "db/menu/network/TopSavedAP";
inline constexpr char kTvName[] = "db/menu/network/devicename/tv_name";

// What came back, as a line of text, and the whole journal.
struct Answer {
  std::string result;
  Journal journal;
  bool operator==(const Answer&) const = default;
};
void PrintTo(const Answer& answer, std::ostream* out);

Journal b2bOption();
// With the screen whole or split, and with that many saved networks.
Answer enabled(const std::string& key, Rule rule, bool split, int count);
Answer intOf(const std::string& key, Owner owner);
// Of setting 0.
Answer setOf(const std::string& key, Owner owner);
Answer textOf(Owner owner);
Answer nameOf(const std::string& key, const char* name);
// Without the log lines of texts that depend on the product: they are many, and no other item has
// them.
Answer helpOf(const char* help);
Answer listOf(const std::string& key, List list);
Answer titleOf(const std::string& key, Icon icon);
Answer statusOf(const std::string& key, Icon icon);

#endif  // EVERY_KEY_ANSWERS_H
