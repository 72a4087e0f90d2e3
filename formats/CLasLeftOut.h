#ifndef FORMATS_CLASLEFTOUT_H
#define FORMATS_CLASLEFTOUT_H

#include <formats/CLeftOut.h>

#include <array>
#include <cstdint>
#include <vector>

struct laszip_point;

/// Counts what the points of a LAS or LAZ file have beside place and colour. What is 0 counts as not given.
class CLasLeftOut
{
public:
    void Add(const laszip_point& pnt);

    /// @param bInfrared   the point format has it.
    /// @param bWaveforms  likewise; without, LASzip leaves behind what it likes.
    std::vector<CLeftOut> List(bool bInfrared, bool bWaveforms) const;

private:
    enum enumField : std::uint8_t
    {
        Field_Intensity,
        Field_Class,
        Field_Return,
        Field_Time,
        Field_ScanAngle,
        Field_UserData,
        Field_SourceId,
        Field_Flags,
        Field_Channel,
        Field_Infrared,
        Field_Waveform,
        Field_ExtraBytes,
        Field_Count,
    };

    std::array<std::int64_t, Field_Count> m_anNum{};
};

#endif
