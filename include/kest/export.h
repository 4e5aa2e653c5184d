// kest/export.h: how the library marks what it exports.
#ifndef KEST_EXPORT_H
#define KEST_EXPORT_H

#if defined(__GNUC__)
#define KEST_API __attribute__((visibility("default")))
#define KEST_PRINTF(text, arguments) __attribute__((format(printf, text, arguments)))
#else
#define KEST_API
#define KEST_PRINTF(text, arguments)
#endif

#endif
