/* Markup for text widgets. */
#ifndef PLATFORM_MARKUP_H
#define PLATFORM_MARKUP_H

#include "platform/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Escapes UTF-8 text for a text widget: "&" "<" ">" as entities, a line feed as "<br/>", a tab as
 * "<tab/>". `object` is the widget whose fonts apply; null is any. Returns a block that the caller
 * frees with free(), or null for a null text. Any thread. */
PLATFORM_API char* evas_textblock_text_utf8_to_markup(const void* object, const char* utf8);

#ifdef __cplusplus
}
#endif

#endif /* PLATFORM_MARKUP_H */
