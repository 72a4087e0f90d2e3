#ifndef HOST_FILES_CPLYSOURCE_H
#define HOST_FILES_CPLYSOURCE_H

#include <host/files/IPntSource.h>

class CByteReader;
class CPlyMeaning;

namespace zorcld
{

/// The points of a PLY file of any format, as its header means them.
///
/// @param sPath    named in failures.
/// @param meaning  of the file's header; kept, not owned.
/// @param reader   of the file; kept, not owned, and moved by every pass.
/// @throws CFailure with the cause where the header cannot be taken as it is meant, or its vertices cannot be
/// read.
std::unique_ptr<IPntSource> MakePlySource(const std::string& sPath, const CPlyMeaning& meaning,
                                          CByteReader& reader);

} // namespace zorcld

#endif
