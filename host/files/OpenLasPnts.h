#ifndef HOST_FILES_OPENLASPNTS_H
#define HOST_FILES_OPENLASPNTS_H

#include <formats/IPntSource.h>
#include <host/files/CClassChoice.h>

namespace zorcld
{

class CInputFile;

/// The points of a LAS or LAZ file with their attributes; only those of the classes that are asked for,
/// and the cause when there is none.
/// @throws CFailure when the file is of another kind, cannot be read, or this program has nothing that reads
///         attributes.
std::unique_ptr<IPntSource> OpenLasPnts(CInputFile& file, const CClassChoice& choice = {});

/// One call a point.
/// @throws CFailure when the file turns out to be damaged on the way.
void ForEachLasPnt(IPntSource& source, const CInputFile& file, const IPntSource::TOnPnt& onPnt);

} // namespace zorcld

#endif
