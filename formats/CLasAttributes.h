#ifndef FORMATS_CLASATTRIBUTES_H
#define FORMATS_CLASATTRIBUTES_H

#include <cstdint>

/// One of the things that LAS files say of a point beside its place and colour.
enum enumLasAttribute : std::uint8_t
{
    LasAttribute_None,
    LasAttribute_Class,
    LasAttribute_Intensity,
    LasAttribute_Return
};

/// What a LAS file says of a point beside its place and colour; nothing (zeros) of points of other files.
struct CLasAttributes
{
    /// Bits of `nFlags`, as they stand in formats 6 to 10. Formats 0 to 5 have the first three.
    enum enumFlag : std::uint8_t
    {
        Flag_Synthetic = 1, ///< made by something else than the scanner
        Flag_KeyPoint = 2,
        Flag_Withheld = 4, ///< deleted: not to be used
        Flag_Overlap = 8
    };

    std::uint16_t nIntensity = 0;
    std::uint8_t nClass = 0;  ///< formats 0 to 5: up to 31
    std::uint8_t nReturn = 0; ///< from 1 on; 0: not told. Formats 0 to 5: up to 7, others up to 15
    std::uint8_t nFlags = 0;

    std::uint16_t Get(enumLasAttribute eAttribute) const
    {
        switch (eAttribute)
        {
        case LasAttribute_Class:
            return nClass;
        case LasAttribute_Intensity:
            return nIntensity;
        case LasAttribute_Return:
            return nReturn;
        case LasAttribute_None:
            break;
        }
        return 0;
    }
};

#endif
