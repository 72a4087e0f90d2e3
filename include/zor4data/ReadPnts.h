#ifndef ZOR4DATA_READPNTS_H
#define ZOR4DATA_READPNTS_H

#include <zor0lang/String.h>
#include <zor4data/Export.h>
#include <zor4data/enumPntCldFile.h>

class IDlgProgress;
class IPntCldReadListener;

/// Reads the points of a file that is not the library's own without a cloud: files larger than memory can be
/// filtered, split or written elsewhere on the way.
///
/// @param listener   receives, in this order, the calls that `CPntCld::ReadFromFile` makes on itself:
///                   OnReadType, OnReadNumPnts with the number of points that the file announces, OnReadPnt
///                   once a point in the order of the file, OnReadEnd. The coordinates are those of the file,
///                   not rounded to 1/10000; points at one place all come.
/// @param pProgress  receives percent, one call a point and before it (none for ASCII grids); null: no calls.
/// @param eType      kind of the file. A native file is an image of a cloud and needs one to be read into: it
///                   is false without any call, like a kind that there is not.
/// @param sPath      the file.
/// @return whether the file was read to its end, as `CPntCld::ReadFromFile` would return it. False without
///         any call when the file is missing or refused at its head; false without OnReadEnd when it turns
///         out to be damaged on the way. `FindFileFacts` tells why.
///
/// To stop, throw: what leaves the listener or the progress object passes through, and the file is closed.
/// One exception counts as the file's fault: std::bad_alloc out of OnReadNumPnts of a LAS file that announces
/// more points than it can hold gives false. A PLY file without vertices calls OnReadEnd only.
///
/// Memory: below 64 MiB, however many points there are, beside what the file makes larger than any honest one
/// has it (a header, a word of text, a chunk of LAZ). An ASCII grid of more than four million values is read
/// twice, since OnReadNumPnts comes first. Throws std::bad_alloc, and nothing else of its own.
ZOR4DATA_API bool ReadPnts(IPntCldReadListener& listener, IDlgProgress* pProgress, enumPntCldFile eType,
                           const zor::String& sPath);

#endif
