#ifndef HOST_FILES_CGRIDSOURCE_H
#define HOST_FILES_CGRIDSOURCE_H

#include <host/files/IPntSource.h>

class CByteReader;
struct CAsciiGridMeaning;

namespace zorcld
{

/// The points of an ESRI ASCII grid, one a cell with a height.
///
/// @param sPath    named in failures.
/// @param meaning  of the file's header; kept, not owned.
/// @param reader   of the file; kept, not owned, and moved by every pass.
/// @throws CFailure with the cause where the header is not that of a grid.
std::unique_ptr<IPntSource> MakeGridSource(const std::string& sPath, const CAsciiGridMeaning& meaning,
                                           CByteReader& reader);

} // namespace zorcld

#endif
