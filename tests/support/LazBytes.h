#ifndef SUPPORT_LAZBYTES_H
#define SUPPORT_LAZBYTES_H

#include <tests/support/LasBytes.h>

#include <string>

/// The points of `file` as a LAZ file, written by LASzip. Of the rest it takes format, scale and offset.
///
/// @param nChunkSize  points of a chunk.
/// @param bScan       what else points have differs from point to point, by a rule; else it is 0.
std::string LazBytes(const CLasFile& file, unsigned nChunkSize, bool bScan = false);

#endif
