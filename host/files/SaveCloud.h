#ifndef HOST_FILES_SAVECLOUD_H
#define HOST_FILES_SAVECLOUD_H

#include <string>

class CPntCld;

namespace zorcld
{

/// Saves the cloud as a native file that appears whole or not at all: written under a temporary name beside
/// the target, checked byte for byte as to its length and its octree, brought to the disk, and renamed.
///
/// REQUIRES: at least one point, and an octree.
/// @throws CFailure when that fails; a file that was there is then as it was.
void SaveCloud(CPntCld& cloud, const std::string& sPath);

} // namespace zorcld

#endif
