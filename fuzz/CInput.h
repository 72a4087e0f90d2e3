#ifndef FUZZ_CINPUT_H
#define FUZZ_CINPUT_H

#include <zor3geom/PNT_2D.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

/// The input of a fuzz target, read from its front; zeros behind its end.
class CInput
{
public:
    CInput(const std::uint8_t* pBytes, std::size_t nSize) : m_pBytes(pBytes), m_nSize(nSize) {}

    bool IsAtEnd() const { return m_nSize == 0; }

    template <class T>
    T Get()
    {
        T value{};
        const std::size_t nTake = std::min(m_nSize, sizeof value);
        if (nTake > 0)
            std::memcpy(&value, m_pBytes, nTake);
        m_pBytes += nTake;
        m_nSize -= nTake;
        return value;
    }

    /// @return 0 to nEnd - 1; nEnd at most 256.
    int Below(int nEnd) { return Get<std::uint8_t>() % nEnd; }

    bool Bool() { return Below(2) == 1; }

    std::string Text(int nMaxSize)
    {
        const std::size_t nTake = std::min(m_nSize, static_cast<std::size_t>(Below(nMaxSize + 1)));
        const std::string sText(m_pBytes, m_pBytes + nTake);
        m_pBytes += nTake;
        m_nSize -= nTake;
        return sText;
    }

    /// Small whole numbers make rings touch, cross and repeat; any double makes them break arithmetic.
    double Coord(bool bAny, double dStep) { return bAny ? Get<double>() : Get<std::int8_t>() * dStep; }

    /// Up to 23 corners.
    std::vector<zor::geom::PNT_2D> Ring(bool bAny, double dStep)
    {
        std::vector<zor::geom::PNT_2D> ring(Get<std::uint8_t>() % 24U);
        for (zor::geom::PNT_2D& pnt : ring)
        {
            pnt.x = Coord(bAny, dStep);
            pnt.y = Coord(bAny, dStep);
        }
        return ring;
    }

private:
    const std::uint8_t* m_pBytes;
    std::size_t m_nSize;
};

#endif
