#ifndef FORMATS_CPLAINPNTS_H
#define FORMATS_CPLAINPNTS_H

#include <formats/CSourcePnt.h>
#include <formats/LittleEndian.h>

#include <array>
#include <cstddef>
#include <cstdint>

/// How points stand in a file whose records are all of one size and begin with x, y and z, an int32 each:
/// coordinate = number * scale + offset.
struct CPlainPnts
{
    std::array<double, 3> adScale{};
    std::array<double, 3> adOffset{};
    std::size_t nSize = 0;     ///< bytes of a record
    std::size_t nPosColor = 0; ///< in a record: red, green and blue, a uint16 each; 0: none

    /// @param nAxis  0, 1, 2. @param nNumber  as it stands there.
    double CalcCoord(std::size_t nAxis, std::int32_t nNumber) const
    {
        return nNumber * adScale[nAxis] + adOffset[nAxis];
    }

    /// The point without its attributes.
    CSourcePnt Read(const unsigned char* pRecord) const
    {
        CSourcePnt pnt;
        pnt.x = CalcCoord(0, LittleEndian::Get<std::int32_t>(pRecord));
        pnt.y = CalcCoord(1, LittleEndian::Get<std::int32_t>(pRecord + 4));
        pnt.z = CalcCoord(2, LittleEndian::Get<std::int32_t>(pRecord + 8));
        if (nPosColor == 0)
            return pnt;
        pnt.r = LittleEndian::Get<std::uint16_t>(pRecord + nPosColor);
        pnt.g = LittleEndian::Get<std::uint16_t>(pRecord + nPosColor + 2);
        pnt.b = LittleEndian::Get<std::uint16_t>(pRecord + nPosColor + 4);
        return pnt;
    }
};

#endif
