// Names as people type them: in any letter case, and sometimes a little wrong.
#ifndef MENU_HOST_TYPED_NAME_H
#define MENU_HOST_TYPED_NAME_H

#include <string>
#include <vector>

namespace menu {

// Whether both are the same text but for the letter case.
bool isSameName(const std::string& typed, const std::string& name);

// Whether `typed` is the path or its last parts, in any letter case: "volume" and "sound/Volume"
// end "menu/sound/Volume", "me" does not.
bool endsPath(const std::string& typed, const std::string& path);

// Whether the path or its last parts begin so, in any letter case: "vol" and "sound/V" begin
// "menu/sound/Volume", "ume" does not.
bool beginsPath(const std::string& typed, const std::string& path);

// "; did you mean \"a\" or \"b\"?" with the names that are nearest to what was typed: those that
// contain it, else those that few letters turn into it. Of a path the last parts count as well.
// Empty when none is near, or so many that naming them does not help.
std::string didYouMean(const std::string& typed, const std::vector<std::string>& names);

}  // namespace menu

#endif  // MENU_HOST_TYPED_NAME_H
