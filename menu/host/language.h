// The language of the menu's texts.
#ifndef MENU_HOST_LANGUAGE_H
#define MENU_HOST_LANGUAGE_H

namespace menu {

// Sets the language of all texts: that of $LANGUAGE, else the TV's own (VENTARO_STORE_LANGUAGE).
// What is not translated is in English; all texts are UTF-8. Call it before the first text is asked
// for and before any thread is started.
void chooseLanguage();

}  // namespace menu

#endif  // MENU_HOST_LANGUAGE_H
