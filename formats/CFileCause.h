#ifndef FORMATS_CFILECAUSE_H
#define FORMATS_CFILECAUSE_H

#include <zor4data/enumFileCause.h>

#include <ostream>
#include <string>
#include <string_view>

/// Why the library does not load a file, or nothing useful from it. Reads as its text where the number does
/// not matter.
struct CFileCause
{
    bool empty() const noexcept { return sText.empty(); }

    /// @return whether the library refuses the file; else it loads what there is.
    bool IsRefusal() const noexcept { return eCause != FileCause_None; }

    operator const std::string&() const noexcept { return sText; }

    enumFileCause eCause = FileCause_None;
    std::string sText; ///< one line of English without path and full stop; empty: nothing found
};

inline bool operator==(std::string_view sText, const CFileCause& cause)
{
    return sText == cause.sText;
}

inline bool operator!=(std::string_view sText, const CFileCause& cause)
{
    return sText != cause.sText;
}

inline bool operator==(const CFileCause& a, const CFileCause& b)
{
    return a.eCause == b.eCause && a.sText == b.sText;
}

inline std::ostream& operator<<(std::ostream& stream, const CFileCause& cause)
{
    return stream << cause.eCause << ' ' << cause.sText;
}

#endif
