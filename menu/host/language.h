// The language of the menu's texts.
#ifndef MENU_HOST_LANGUAGE_H
#define MENU_HOST_LANGUAGE_H

namespace menu {

// Makes texts come in the language of $LANGUAGE, else in the TV's own (the store's
// "db/menu_widget/language"), and in English where that has none; always in UTF-8. To be called
// before the first text is asked for, and before any thread is started.
void chooseLanguage();

}  // namespace menu

#endif  // MENU_HOST_LANGUAGE_H
