#ifndef HOST_FILES_CLASSOURCE_H
#define HOST_FILES_CLASSOURCE_H

#include <host/files/IPntSource.h>

class CLasGuard;

namespace zorcld
{

/// The points of a LAS or LAZ file, with the colours of every format that has them.
///
/// @param sPath  named in failures.
/// @param guard  of that file, after its check; kept, not owned. The source moves the file's position.
/// @return null in a build without LASzip.
/// @throws CFailure with the guard's cause where it has refused the file.
std::unique_ptr<IPntSource> MakeLasSource(const std::string& sPath, CLasGuard& guard);

} // namespace zorcld

#endif
