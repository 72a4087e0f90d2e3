#ifndef HOST_FILES_PLYFINDINGS_H
#define HOST_FILES_PLYFINDINGS_H

#include <host/files/CFinding.h>

#include <vector>

class CPlyMeaning;

namespace zorcld
{

/// What the library takes otherwise than the header of a PLY file means it: it tells types by the start of
/// their name, and takes coordinates and colours for one type each, whatever they are declared.
/// Nothing for a format that the library refuses.
std::vector<CFinding> FindPlyFindings(const CPlyMeaning& meaning);

} // namespace zorcld

#endif
