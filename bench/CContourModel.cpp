#include <bench/CContourModel.h>

#include <formats/Compact.h>
#include <octree/COcTreeChildren.h>

#include <geos/geom/CoordinateSequence.h>
#include <geos/geom/Envelope.h>
#include <geos/geom/GeometryFactory.h>
#include <geos/geom/LineString.h>
#include <geos/geom/Polygon.h>

#include <algorithm>
#include <memory>

namespace
{

using geos::geom::Coordinate;
using geos::geom::Envelope;
using geos::geom::Geometry;

std::unique_ptr<Geometry> MakeRect(const Envelope& box)
{
    return geos::geom::GeometryFactory::getDefaultInstance()->toGeometry(&box);
}

bool IsNearCorner(const Coordinate& pnt, const Envelope& box)
{
    const double dX = std::min(std::abs(pnt.x - box.getMinX()), std::abs(pnt.x - box.getMaxX()));
    const double dY = std::min(std::abs(pnt.y - box.getMinY()), std::abs(pnt.y - box.getMaxY()));
    return dX * dX + dY * dY < 0.1;
}

/// One part without holes and with four corners near the square's: nothing that counts was cut away.
bool IsAsGoodAsWhole(const Geometry& outside, const Envelope& box)
{
    const auto* const pPart = dynamic_cast<const geos::geom::Polygon*>(&outside);
    if (pPart == nullptr || pPart->getNumInteriorRing() > 0)
        return false;
    const auto pCoords = pPart->getExteriorRing()->getCoordinates();
    bool bNear = pCoords->size() == 5;
    for (std::size_t i = 0; bNear && i < 4; ++i)
        bNear = IsNearCorner(pCoords->getAt(i), box);
    return bNear;
}

} // namespace

CContourModel::CContourModel(const COcTreeIndex& tree, double dOrgX, double dOrgY, const Geometry& area,
                             bool bHoles)
    : m_dOrgX(dOrgX), m_dOrgY(dOrgY), m_bHoles(bHoles)
{
    WalkNode(*tree.m_pRoot, tree.GetRootCube(), area);
}

std::uint64_t CContourModel::Sum(const std::vector<char>& vecInside) const
{
    std::uint64_t nSum = 0;
    for (const TRun& run : m_vecWhole)
        for (std::int32_t i = run.first; i < run.second; ++i)
        {
            if (vecInside[static_cast<std::size_t>(i)] == 0)
                return 0;
            nSum += static_cast<std::uint64_t>(i) + 1U;
        }
    for (const TRun& run : m_vecTested)
        for (std::int32_t i = run.first; i < run.second; ++i)
            nSum += vecInside[static_cast<std::size_t>(i)] != 0 ? static_cast<std::uint64_t>(i) + 1U : 0U;
    return nSum;
}

/// @param area  as much of the polygon as lies about this square.
void CContourModel::WalkNode(const COcTreeNode& node, const COcTreeCube& cube, const Geometry& area)
{
    const std::int64_t nHalf = cube.GetHalfEdge();
    const auto ToCoord = [](std::int64_t n, double dOrg)
    { return static_cast<double>(n) / c_dCompactScale + dOrg; };
    const Envelope box(ToCoord(cube.nX - nHalf, m_dOrgX), ToCoord(cube.nX + nHalf, m_dOrgX),
                       ToCoord(cube.nY - nHalf, m_dOrgY), ToCoord(cube.nY + nHalf, m_dOrgY));
    const std::unique_ptr<Geometry> pOutside = MakeRect(box)->difference(&area);
    if (pOutside->isEmpty())
        return TakeWhole(node);
    if (IsAsGoodAsWhole(*pOutside, box))
        return;
    Envelope around = box;
    around.expandBy(1.0); // so that the cut moves no edge within the square
    const std::unique_ptr<Geometry> pLocal = area.intersection(MakeRect(around).get());
    for (const COcTreeChild child : node.GetChildren())
        if (!child.IsLeaf())
            WalkNode(child.GetNode(), cube.GetChild(child.GetOctant()), *pLocal);
        else if (!m_bHoles)
            m_vecTested.emplace_back(child.GetLeaf().m_nFirst,
                                     child.GetLeaf().m_nFirst + child.GetLeaf().m_nCount);
}

void CContourModel::TakeWhole(const COcTreeNode& node)
{
    for (const COcTreeChild child : node.GetChildren())
        if (child.IsLeaf())
            m_vecWhole.emplace_back(child.GetLeaf().m_nFirst,
                                    child.GetLeaf().m_nFirst + child.GetLeaf().m_nCount);
        else
            TakeWhole(child.GetNode());
}
