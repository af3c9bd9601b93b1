// The language of the menu's texts.
#ifndef MENU_HOST_LANGUAGE_H
#define MENU_HOST_LANGUAGE_H

#include <string>

namespace menu {

// Sets the language of all texts: that of $LANGUAGE, else the TV's own (VENTARO_STORE_LANGUAGE).
// What is not translated is in English; all texts are UTF-8. Call it before the first text is asked
// for and before any thread is started.
void chooseLanguage();

// The program's own word in the language of the menu, from the catalogue ventaro-menu; the English
// word where that has none.
std::string translated(const char* english);

}  // namespace menu

#endif  // MENU_HOST_LANGUAGE_H
