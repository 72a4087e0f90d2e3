#ifndef IO_READFOREIGN_H
#define IO_READFOREIGN_H

#include <zor0lang/String.h>
#include <zor4data/enumPntCldFile.h>

#include <cstdint>
#include <limits>

class IDlgProgress;
class IPntCldReadListener;

/// Reads a file that is not the library's own with the reader of its kind.
///
/// @param listener   receives type, count and points of the file, see IPntCldReadListener.
/// @param pProgress  receives percent before each item; null: no calls.
/// @param eType      the kind of the file; a kind without a reader, or any other value: false.
/// @param nMaxWaiting  points of a kind that must be counted first that may wait in memory for it; a file of
///                     more is read twice.
/// @return whether the file was read to its end; if not, OnReadEnd has not been called.
bool ReadForeign(IPntCldReadListener& listener, IDlgProgress* pProgress, enumPntCldFile eType,
                 const zor::String& sPath,
                 std::int64_t nMaxWaiting = std::numeric_limits<std::int64_t>::max());

#endif
