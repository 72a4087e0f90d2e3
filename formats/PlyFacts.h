#ifndef FORMATS_PLYFACTS_H
#define FORMATS_PLYFACTS_H

#include <zor4data/CFileFacts.h>

class CPlyHeader;

/// @return what the header of a PLY file tells of its points; no cause.
CFileFacts FindPlyFacts(const CPlyHeader& header);

#endif
