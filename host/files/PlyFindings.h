#ifndef HOST_FILES_PLYFINDINGS_H
#define HOST_FILES_PLYFINDINGS_H

#include <host/files/CFinding.h>

#include <vector>

namespace zorcld
{

struct CPlyLayout;

/// What the library takes otherwise than the header of a PLY file means it: it tells types by the start of
/// their name, and takes coordinates as "float" and colours as "uchar" whatever they are declared.
/// Nothing for a format that the library refuses.
std::vector<CFinding> FindPlyFindings(const CPlyLayout& layout);

} // namespace zorcld

#endif
