// A test's own texts instead of the catalogues'.
#ifndef PROVIDER_TEST_TEXTS_H
#define PROVIDER_TEST_TEXTS_H

#include <map>
#include <string>

// Sets a user's language in which these string IDs have these texts and every other text is its
// string ID. Takes effect with the next create_provider or bindCatalogues().
void useTexts(const std::map<std::string, std::string>& texts);

#endif  // PROVIDER_TEST_TEXTS_H
