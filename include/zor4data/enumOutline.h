#ifndef ZOR4DATA_ENUMOUTLINE_H
#define ZOR4DATA_ENUMOUTLINE_H

#include <cstdint>

/// What became of the search for an outline.
enum enumOutline : std::int32_t
{
    Outline_Closed = 0, ///< found and delivered
    Outline_None = 1,   ///< there is none
    Outline_LeftOff = 2 ///< the walk took more than it was given
};

#endif
