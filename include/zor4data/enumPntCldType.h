#ifndef ZOR4DATA_ENUMPNTCLDTYPE_H
#define ZOR4DATA_ENUMPNTCLDTYPE_H

#include <cstdint>

/// Which of a cloud's two stores is live. Every operation is inert for any other value.
enum enumPntCldType : std::int32_t
{
    PntCldType_Pnt = 0,      ///< points without colour, 12 bytes each
    PntCldType_PntColor = 1, ///< points with colour, 16 bytes each
};

#endif
