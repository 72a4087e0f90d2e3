#ifndef SUPPORT_CLDCASES_H
#define SUPPORT_CLDCASES_H

#include <zor3geom/PNT_3D.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

/// A cloud of the list that all tests share.
class CCldCase
{
public:
    CCldCase(std::string sName, std::vector<zor::geom::PNT_3D> vecPnts)
        : m_sName(std::move(sName)), m_vecPnts(std::move(vecPnts))
    {
    }

    /// Shape, size and seed: enough to make it again.
    const std::string& GetName() const { return m_sName; }

    /// Coordinate units.
    const std::vector<zor::geom::PNT_3D>& GetPnts() const { return m_vecPnts; }

private:
    std::string m_sName;
    std::vector<zor::geom::PNT_3D> m_vecPnts;
};

/// Empty, one, all equal, stacked, on the splitting planes, flat, far from the origin, the whole int32
/// span, just around every threshold of the build, of depth 20, random.
const std::vector<CCldCase>& AllCldCases();

/// A coordinate that a store whose origin is 0 keeps as `n` compact units, whatever the rounding: it lies
/// half a unit farther out.
double CoordFromUnits(std::int32_t n);

#endif
