#ifndef SUPPORT_LAZBYTES_H
#define SUPPORT_LAZBYTES_H

#include <tests/support/LasBytes.h>

#include <string>

/// The points of `file` as a LAZ file, written by LASzip. Of the rest it takes format, scale and offset.
///
/// @param nChunkSize  points of a chunk.
std::string LazBytes(const CLasFile& file, unsigned nChunkSize);

#endif
