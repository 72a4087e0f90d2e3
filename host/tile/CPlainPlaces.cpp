#include <host/tile/CPlainPlaces.h>

#include <formats/Compact.h>
#include <formats/LittleEndian.h>

#include <algorithm>
#include <array>

namespace zorcld
{

namespace
{

constexpr std::size_t c_nNumAtOnce = 256; // stay near the processor for all axes

} // namespace

bool CPlainPlaces::Place(const unsigned char* pRecords, std::size_t nNum, CTilePnt* pPlaced) const
{
    while (nNum > 0)
    {
        const std::size_t nNow = std::min(nNum, c_nNumAtOnce);
        for (std::size_t k = 0; k < 3; ++k)
            if (!PlaceAxis(k, pRecords, nNow, pPlaced))
                return false;
        const unsigned char* pColor = pRecords + m_plain.nPosColor;
        for (std::size_t i = 0; m_plain.nPosColor != 0 && i < nNow; ++i, pColor += m_plain.nSize)
            for (std::size_t k = 0; k < 3; ++k)
                pPlaced[i].anColor[k] = LittleEndian::Get<std::uint16_t>(pColor + 2 * k);
        pRecords += nNow * m_plain.nSize;
        pPlaced += nNow;
        nNum -= nNow;
    }
    return true;
}

/// Each step from number to place rises with the number, or falls with it: so where the least and the
/// greatest are placed, all between them are.
bool CPlainPlaces::PlaceAxis(std::size_t nAxis, const unsigned char* pRecords, std::size_t nNum,
                             CTilePnt* pPlaced) const
{
    const CPlainPnts plain = m_plain; // a copy, since writing points cannot change it
    const float fOrg = m_origin[nAxis];
    const auto place = [&](std::int32_t n) { return CompactUnits(plain.CalcCoord(nAxis, n), fOrg); };
    std::array<std::int32_t, c_nNumAtOnce> an; // NOLINT: filled as far as it is read
    const unsigned char* pRecord = pRecords + nAxis * sizeof(std::int32_t);
    std::int32_t nMin = LittleEndian::Get<std::int32_t>(pRecord);
    std::int32_t nMax = nMin;
    for (std::size_t i = 0; i < nNum; ++i, pRecord += m_plain.nSize)
    {
        an[i] = LittleEndian::Get<std::int32_t>(pRecord);
        nMin = std::min(nMin, an[i]);
        nMax = std::max(nMax, an[i]);
    }
    if (!FitsInt32(place(nMin)) || !FitsInt32(place(nMax)))
        return false;
    for (std::size_t i = 0; i < nNum; ++i)
        pPlaced[i].anSteps[nAxis] = static_cast<std::int32_t>(place(an[i])); // L6
    return true;
}

} // namespace zorcld
