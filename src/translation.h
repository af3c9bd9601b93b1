// The provider's text domain.
#ifndef VENTARO_TRANSLATION_H
#define VENTARO_TRANSLATION_H

#include <libintl.h>

#include "ventaro/data_provider.h"

inline constexpr char kTextDomain[] = VENTARO_TEXT_DOMAIN;

// The translation of a string ID in the user's language, or the ID itself when the catalogue has
// none. The text belongs to gettext and stays valid while the domain is bound.
inline const char* translate(const char* sid) {
  return dgettext(kTextDomain, sid);
}

#endif  // VENTARO_TRANSLATION_H
