// The language of the menu's texts.
#ifndef MENU_HOST_LANGUAGE_H
#define MENU_HOST_LANGUAGE_H

#include <string>

namespace menu {

// Sets the language of all texts: that of $LANGUAGE, else the TV's own (VENTARO_STORE_LANGUAGE).
// What is not translated is in English, and all texts where the list has more than
// kLongestLanguages bytes; all texts are UTF-8. Call it before the first text is asked for and
// before any thread is started.
void chooseLanguage();

// The language that chooseLanguage() starts from: a list like $LANGUAGE's.
std::string wantedLanguage();

// Sets the language of all texts to exactly that list, without English behind it; "C" for string
// IDs. May be called again: gettext forgets what it found before. Nobody may be inside a provider.
void useLanguage(const std::string& list);

// The program's own word in the language of the menu, from the catalogue ventaro-menu; the English
// word where that has none.
std::string translated(const char* english);

}  // namespace menu

#endif  // MENU_HOST_LANGUAGE_H
