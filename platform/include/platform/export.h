/* Marks the symbols that a platform library exports. */
#ifndef PLATFORM_EXPORT_H
#define PLATFORM_EXPORT_H

#if defined(__GNUC__)
#define PLATFORM_API __attribute__((visibility("default")))
#else
#define PLATFORM_API
#endif

#endif /* PLATFORM_EXPORT_H */
