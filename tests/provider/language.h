// The user's language, and the texts that the provider should give in it.
#ifndef PROVIDER_TEST_LANGUAGE_H
#define PROVIDER_TEST_LANGUAGE_H

#include <string>

// Sets the user's language: one with a catalogue ("en", "ko"), or any other word for a language
// without one, in which every text is its string ID.
void useLanguage(const std::string& language);

// Sets a language of over-long texts, see locale/over_long.po.in: On and Off have exactly this many
// bytes (255, 256 or 300). Takes effect with the next create_provider or bindCatalogues().
void useLongTexts(int onOffSize);

// Binds the text domain to the resource root's catalogues, as create_provider does.
void bindCatalogues();

// The translation of a string ID from the bound catalogues.
std::string tr(const char* sid);

#endif  // PROVIDER_TEST_LANGUAGE_H
