#ifndef FORMATS_FINDPATHCAUSE_H
#define FORMATS_FINDPATHCAUSE_H

#include <formats/CFileCause.h>

/// @param pPath  not null.
/// @return why there is no file to look into, as far as its name tells: a pipe could be read once only.
CFileCause FindPathCause(const char* pPath);

#endif
