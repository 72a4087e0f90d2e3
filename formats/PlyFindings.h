#ifndef FORMATS_PLYFINDINGS_H
#define FORMATS_PLYFINDINGS_H

#include <formats/CFinding.h>

#include <vector>

class CPlyMeaning;

/// What the library takes otherwise than the header of a PLY file means it: it tells types by the start of
/// their name, and takes coordinates and colours for one type each, whatever they are declared.
/// Nothing for a format that the library refuses.
std::vector<CFinding> FindPlyFindings(const CPlyMeaning& meaning);

#endif
