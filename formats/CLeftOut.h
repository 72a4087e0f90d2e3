#ifndef FORMATS_CLEFTOUT_H
#define FORMATS_CLEFTOUT_H

#include <cstdint>
#include <string>
#include <string_view>

/// Something that a file has beside the places and colours of its points, which no cloud takes.
struct CLeftOut
{
    bool HasSameNum(const CLeftOut& other) const
    {
        return nNum == other.nNum && std::string_view(pNoun) == other.pNoun;
    }

    std::string sName;           ///< for people: "intensity", "times"
    std::int64_t nNum = -1;      ///< things that have it; -1: it is one of the whole file
    const char* pNoun = "point"; ///< what they are
};

#endif
