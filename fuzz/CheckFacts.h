#ifndef FUZZ_CHECKFACTS_H
#define FUZZ_CHECKFACTS_H

#include <zor4data/CFileFacts.h>
#include <zor4data/CFileUnits.h>

#include <cstdio>
#include <cstdlib>

/// What is said of a file without loading it agrees with loading it.
/// @param bLoaded  was the file loaded as this kind?
inline void CheckFacts(enumPntCldFile eType, const char* pPath, bool bLoaded)
{
    const CFileFacts facts = FindFileFacts(pPath, eType);
    const bool bAgrees = (facts.eCause == FileCause_None) == bLoaded && facts.sCause.empty() == bLoaded &&
                         facts.eType == eType && facts.nAnnounced >= -1;
    const bool bLossesAgree = bLoaded || FindFileLosses(pPath, eType).empty();
    const CFileUnits units = FindFileUnits(pPath, eType);
    const bool bUnits = bLoaded || units.plan.sName.empty() || eType == PntCldFile_Las;
    if (bAgrees && bLossesAgree && bUnits)
        return;
    std::fprintf(stderr, "does not hold: facts (%s, but %d '%s')\n", bLoaded ? "loaded" : "not loaded",
                 facts.eCause, facts.sCause.c_str());
    std::abort();
}

#endif
