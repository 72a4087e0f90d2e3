#ifndef ZOR4DATA_EXPORT_H
#define ZOR4DATA_EXPORT_H

#include <zor0lang/Export.h>

/// Marks what a host may call of this library.
#define ZOR4DATA_API ZOR_API

/// Keeps a private member of such a class inside the library.
#define ZOR4DATA_LOCAL __attribute__((visibility("hidden")))

#endif
