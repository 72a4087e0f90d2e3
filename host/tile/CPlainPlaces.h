#ifndef HOST_TILE_CPLAINPLACES_H
#define HOST_TILE_CPLAINPLACES_H

#include <formats/CPlainPnts.h>
#include <host/tile/CTilePnt.h>

#include <cstddef>
#include <cstdint>

namespace zorcld
{

/// Places points as they stand in a file, many at a time.
class CPlainPlaces
{
public:
    CPlainPlaces(const CPlainPnts& plain, const TOrigin& origin) : m_plain(plain), m_origin(origin) {}

    /// @param pPlaced  gets what the points one by one would give, by CompactUnits; colours where the file
    /// has
    ///                 them.
    /// @return false where one of them lies beyond what a tile can hold; some are placed then.
    bool Place(const unsigned char* pRecords, std::size_t nNum, CTilePnt* pPlaced) const;

private:
    bool PlaceAxis(std::size_t nAxis, const unsigned char* pRecords, std::size_t nNum,
                   CTilePnt* pPlaced) const;

    CPlainPnts m_plain;
    TOrigin m_origin;
};

} // namespace zorcld

#endif
