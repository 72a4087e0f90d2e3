#ifndef FORMATS_OPENREGULARFILE_H
#define FORMATS_OPENREGULARFILE_H

#include <formats/CFileCause.h>
#include <formats/CFilePtr.h>

/// Opens a file that has bytes, to be read from its start.
///
/// @param pPath  not null.
/// @param cause  receives why there is none; empty where there is one.
/// @return null where there is none.
CFilePtr OpenRegularFile(const char* pPath, CFileCause& cause);

#endif
