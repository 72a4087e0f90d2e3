#ifndef HOST_FILES_SAVECLOUD_H
#define HOST_FILES_SAVECLOUD_H

#include <string>

class CPntCld;

namespace zorcld
{

/// Saves the cloud with the library's SaveCloud, whose temporary file also goes away when the program is
/// interrupted.
///
/// REQUIRES: an octree.
/// @throws CFailure when that fails; a file that was there is then as it was.
void SaveCloud(CPntCld& cloud, const std::string& sPath);

/// The same without a look for temporary files that others have left in the folder: for whoever saves many
/// there.
void SaveCloudOnly(CPntCld& cloud, const std::string& sPath);

} // namespace zorcld

#endif
