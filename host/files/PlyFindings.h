#ifndef HOST_FILES_PLYFINDINGS_H
#define HOST_FILES_PLYFINDINGS_H

#include <host/files/CFinding.h>

#include <string>
#include <vector>

namespace zorcld
{

/// What the library takes otherwise than the header of a PLY file means it: it tells types by the start of
/// their name, and takes coordinates as "float" and colours as "uchar" whatever they are declared.
/// Nothing for a header that cannot be read.
std::vector<CFinding> FindPlyFindings(const std::string& sPath);

} // namespace zorcld

#endif
