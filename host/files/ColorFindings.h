#ifndef HOST_FILES_COLORFINDINGS_H
#define HOST_FILES_COLORFINDINGS_H

#include <formats/CFinding.h>

namespace zorcld
{

/// @return that a file has colours which were never filled. Every command that shows them goes by this line.
/// @param bTaken  does the library take the colours of the file?
inline CFinding FindZeroColors(bool bTaken)
{
    return {"color-zero",
            bTaken
                ? "its colour fields are all 0: pictures show heights instead, unless --color file is given"
                : "its colour fields are all 0",
            false, ""};
}

/// @return that the colours of a file lie behind the points that the library reads.
inline CFinding FindZeroColorsRead()
{
    return {
        "color-zero",
        "the colour fields of the points that are read are all 0, those behind them are not: pictures show "
        "heights instead",
        true, ""};
}

} // namespace zorcld

#endif
