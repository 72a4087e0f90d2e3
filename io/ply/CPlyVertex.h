#ifndef IO_PLY_CPLYVERTEX_H
#define IO_PLY_CPLYVERTEX_H

#include <formats/PlyTypes.h>
#include <io/ply/CPlyLayout.h>
#include <zor4data/IPntCldReadListener.h>

#include <array>
#include <cstring>

/// Delivers vertices from bytes in which each value has a fixed place.
class CPlyVertexBytes
{
public:
    /// @param anOffset  where the values lie, by role.
    CPlyVertexBytes(const CPlyOffsets& anOffset, bool bColor) : m_anOffset(anOffset), m_bColor(bColor) {}

    /// @param pBytes  the bytes of the vertex.
    void Deliver(IPntCldReadListener& listener, const unsigned char* pBytes) const
    {
        if (m_bColor)
            Deliver<true>(listener, pBytes);
        else
            Deliver<false>(listener, pBytes);
    }

    /// Delivers one vertex after the other.
    ///
    /// @param nSize  bytes of a vertex.
    /// @param pEnd   where the last vertex ends.
    void DeliverAll(IPntCldReadListener& listener, const unsigned char* pBytes, std::size_t nSize,
                    const unsigned char* pEnd) const
    {
        // A copy on the stack: for all the compiler knows the listener could change the offsets behind
        // `this`.
        const CPlyVertexBytes vertex = *this;
        if (m_bColor)
            for (; pBytes != pEnd; pBytes += nSize)
                vertex.Deliver<true>(listener, pBytes);
        else
            for (; pBytes != pEnd; pBytes += nSize)
                vertex.Deliver<false>(listener, pBytes);
    }

private:
    template <bool WithColor>
    void Deliver(IPntCldReadListener& listener, const unsigned char* pBytes) const
    {
        const auto Coord = [&](enumPlyRole eRole) { return CoordFromBytes(pBytes + m_anOffset[eRole]); };
        // KEPT: a channel is the first byte of the property, whatever its type: only c_plyByteType gives its
        // value (Read_ColorsAreTheFirstByte_Kept).
        const auto Channel = [&](enumPlyRole eRole) { return pBytes[m_anOffset[eRole]]; };
        if constexpr (WithColor)
            listener.OnReadPnt(Coord(PlyRole_X), Coord(PlyRole_Y), Coord(PlyRole_Z), Channel(PlyRole_Red),
                               Channel(PlyRole_Green), Channel(PlyRole_Blue));
        else
            listener.OnReadPnt(Coord(PlyRole_X), Coord(PlyRole_Y), Coord(PlyRole_Z));
    }

    // KEPT: a coordinate is the first four bytes of the property as a 32-bit float, whatever its type: only
    // c_plyCoordType gives its value (Read_DoubleCoordinatesAreTakenAsFloats_Kept,
    // Read_IntegerCoordinatesAreTakenAsFloats_Kept).
    static float CoordFromBytes(const unsigned char* pBytes)
    {
        float f = 0.0F;
        std::memcpy(&f, pBytes, sizeof f);
        return f;
    }

    CPlyOffsets m_anOffset;
    bool m_bColor;
};

/// The values of a vertex that is read value by value: of each its bytes as they stand in the file, then
/// zeros. Of several values of one role the last one counts; a list is no value.
class CPlyVertexSlots
{
public:
    void Set(enumPlyRole eRole, const unsigned char* pBytes, std::size_t nSize)
    {
        unsigned char* const pSlot = m_acBytes.data() + c_anOffset[eRole];
        std::memset(pSlot, 0, c_nSize);
        std::memcpy(pSlot, pBytes, nSize);
    }

    void Deliver(IPntCldReadListener& listener, bool bColor) const
    {
        CPlyVertexBytes(c_anOffset, bColor).Deliver(listener, m_acBytes.data());
    }

private:
    static constexpr std::size_t c_nSize = c_nMaxPlySize;
    static constexpr CPlyOffsets c_anOffset = {0,           c_nSize,     2 * c_nSize, 3 * c_nSize,
                                               4 * c_nSize, 5 * c_nSize, 6 * c_nSize};
    std::array<unsigned char, c_anOffset.size() * c_nSize> m_acBytes{};
};

#endif
