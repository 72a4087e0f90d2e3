#ifndef FORMATS_CNATIVEHEADER_H
#define FORMATS_CNATIVEHEADER_H

#include <formats/CFileCause.h>
#include <formats/NativeFormat.h>

#include <array>
#include <cstddef>
#include <cstdint>

/// What stands in a native file before its points. Bytes behind the end of the file count as zero.
struct CNativeHeader
{
    /// @param acBytes  the first bytes of the file, then zeros.
    /// @param nSize    how many of them the file holds.
    static CNativeHeader FromBytes(const std::array<unsigned char, c_nNativeHeaderSize>& acBytes,
                                   std::size_t nSize) noexcept;

    /// @return whether the points are of one of the two types; the library refuses others.
    bool IsTypeKnown() const noexcept { return nType == 0 || nType == 1; }

    /// Bytes of a point. REQUIRES: IsTypeKnown().
    std::size_t GetPntSize() const noexcept { return nType == 0 ? c_nNativePntSize : c_nNativeColorPntSize; }

    /// @param nNumBytes  those of the file behind the header.
    /// @return how many of the announced points the file holds whole; a negative count is none.
    ///         REQUIRES: IsTypeKnown().
    std::int32_t CalcNumHeld(std::uint64_t nNumBytes) const noexcept;

    bool IsOriginFinite() const noexcept;

    /// @return why the library does not load the file, or nothing useful from it.
    CFileCause FindCause() const;

    std::size_t nSize = 0;  ///< bytes of the header that are there
    bool bPrologue = false; ///< the first five bytes are as they are written; the library takes any
    std::int32_t nVersion = 0;
    std::int16_t nType = 0;       ///< of the points: 0 without colour, 1 with
    std::array<float, 3> afOrg{}; ///< the place that offsets count from, coordinate units
    std::int32_t nNumPnts = 0;    ///< announced
};

#endif
