#ifndef ZOR0LANG_EXPORT_H
#define ZOR0LANG_EXPORT_H

/// Marks what a host may call: everything else stays out of the library's symbol table.
#define ZOR_API __attribute__((visibility("default")))

#endif
