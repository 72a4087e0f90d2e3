#ifndef FORMATS_ASCIIGRIDFINDINGS_H
#define FORMATS_ASCIIGRIDFINDINGS_H

#include <formats/CFinding.h>

#include <vector>

struct CAsciiGridMeaning;

/// What the library takes otherwise than the header of an ESRI ASCII grid means it. Nothing for a header that
/// the library refuses.
std::vector<CFinding> FindAsciiGridFindings(const CAsciiGridMeaning& meaning);

/// @return that tabs separate values.
CFinding FindAsciiGridTabs();

#endif
