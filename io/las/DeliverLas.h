#ifndef IO_LAS_DELIVERLAS_H
#define IO_LAS_DELIVERLAS_H

#include <formats/ByteFromChannel.h>
#include <formats/Compact.h>
#include <zor4data/IDlgProgress.h>
#include <zor4data/IPntCldReadListener.h>

#include <cstdint>

/// The number of points of a file as the listener gets it: the lower 32 bits, negative where the highest of
/// them is set.
inline std::int32_t CountFromNumPnts(std::int64_t nNumPnts) noexcept
{
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(nNumPnts));
}

/// Percentage of points delivered, of those announced. Every count is allowed: the percentage exceeds 100
/// where more are delivered, saturates where none were announced, and is 0 for 0 of 0; it is never negative.
///
/// @param nAnnounced  the whole count, where the listener gets the lower 32 bits: of an honest file of very
///                    many points these alone would make percentages that are negative or beyond 100. A
///                    negative one is the file's, of 64 bits without a sign.
inline int CalcLasProgress(std::int64_t nDelivered, std::int64_t nAnnounced) noexcept
{
    const auto dAnnounced = static_cast<double>(static_cast<std::uint64_t>(nAnnounced));
    return SaturateToInt32(static_cast<double>(nDelivered) / dAnnounced * 100.0);
}

/// Delivers the points that `reader` gives, before each of them the progress.
///
/// @param reader     a LASreader before its first point, or what has its members.
/// @param bColor     whether the points are delivered with colour.
/// @param nMax       points that the file can hold: behind them the library would take other bytes for
///                   points.
/// @param pProgress  null: no calls.
template <class Reader>
void DeliverLasPnts(Reader& reader, bool bColor, std::int64_t nMax, IPntCldReadListener& listener,
                    IDlgProgress* pProgress)
{
    const std::int64_t nAnnounced = reader.npoints;
    const auto& point = reader.point;
    const auto& scale = *point.quantizer;
    for (std::int64_t i = 0; i < nMax && reader.read_point() != 0; ++i)
    {
        if (pProgress != nullptr)
            pProgress->SetPos(CalcLasProgress(i, nAnnounced));
        const double x = point.get_X() * scale.x_scale_factor + scale.x_offset;
        const double y = point.get_Y() * scale.y_scale_factor + scale.y_offset;
        const double z = point.get_Z() * scale.z_scale_factor + scale.z_offset;
        if (bColor)
            listener.OnReadPnt(x, y, z, ByteFromChannel(point.rgb[0]), ByteFromChannel(point.rgb[1]),
                               ByteFromChannel(point.rgb[2]));
        else
            listener.OnReadPnt(x, y, z);
    }
}

#endif
