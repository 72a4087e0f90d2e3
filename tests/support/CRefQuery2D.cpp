#include <tests/support/CRefQuery2D.h>

#include <zor3geom/DoBoolOperation.h>
#include <zor3geom/IsPntInsidePolygon.h>

using zor::geom::PNT_2D;
using zor::geom::TMultiPartPolygon;

namespace Ref
{
namespace
{

constexpr int c_nInside = 0;
constexpr int c_nStraddling = 1;
constexpr int c_nOutside = 2;

double ToCoord(std::int64_t n, float org)
{
    return static_cast<double>(n) / 10000.0 + static_cast<double>(org);
}

} // namespace

void CQuery2D::IntCnt(const std::vector<PNT_2D>& contour)
{
    m_region = {contour, {}};
    m_inverted = true;
    if (m_store.tree.root != nullptr)
        WalkContour(*m_store.tree.root, m_store.tree.cube, true);
}

void CQuery2D::Cnts(const std::vector<PNT_2D>& outer, const std::vector<std::vector<PNT_2D>>& holes)
{
    m_region = {outer, holes};
    m_inverted = false;
    if (m_store.tree.root != nullptr)
        WalkContour(*m_store.tree.root, m_store.tree.cube, true);
}

int CQuery2D::Classify(const CCube& cube) const
{
    const std::int64_t h = cube.edge / 2;
    const float ox = m_store.org[0];
    const float oy = m_store.org[1];
    TMultiPartPolygon square;
    square.outer = {PNT_2D(ToCoord(cube.x - h, ox), ToCoord(cube.y - h, oy)),
                    PNT_2D(ToCoord(cube.x - h, ox), ToCoord(cube.y + h, oy)),
                    PNT_2D(ToCoord(cube.x + h, ox), ToCoord(cube.y + h, oy)),
                    PNT_2D(ToCoord(cube.x + h, ox), ToCoord(cube.y - h, oy))};
    std::vector<TMultiPartPolygon> result;
    zor::geom::DoBoolOperation(square, m_region, zor::geom::BOOL_OP_SUB, result);
    if (result.empty())
        return c_nInside;
    if (result.size() != 1 || !result[0].holes.empty() || result[0].outer.size() != 4)
        return c_nStraddling;
    for (const PNT_2D& pnt : result[0].outer)
    {
        bool near = false;
        for (const PNT_2D& corner : square.outer)
            near = near || pnt.dist_square(corner) < 0.1;
        if (!near)
            return c_nStraddling;
    }
    return c_nOutside;
}

void CQuery2D::WalkContour(const CNode& node, const CCube& cube, bool check)
{
    bool childCheck = check;
    if (check)
    {
        const int side = Classify(cube);
        if (side == c_nOutside)
            return;
        childCheck = side == c_nStraddling;
    }
    for (int k = 0; k < 8; ++k)
    {
        const CChild* child = node.child[static_cast<std::size_t>(k)].get();
        if (child == nullptr)
            continue;
        if (child->leaf)
            VisitLeaf(*child, childCheck);
        else
            WalkContour(*child->node, ChildCube(cube, k), childCheck);
    }
}

void CQuery2D::VisitLeaf(const CChild& leaf, bool check)
{
    for (int i = leaf.first; i < leaf.first + leaf.count; ++i)
        if (!m_store.deleted[static_cast<std::size_t>(i)] && (!check || IsWanted(i)))
            m_indices.push_back(i);
}

bool CQuery2D::IsWanted(int i) const
{
    const CPnt& pnt = m_store.pnts[static_cast<std::size_t>(i)];
    const PNT_2D place(ToCoord(pnt.x, m_store.org[0]), ToCoord(pnt.y, m_store.org[1]));
    const bool inside = zor::geom::IsPntInsidePolygon(m_region.outer, place);
    if (m_inverted)
        return !inside;
    if (!inside)
        return false;
    bool inHole = false;
    for (std::size_t h = 0; h < m_region.holes.size(); ++h)
        inHole = inHole || zor::geom::IsPntInsidePolygon(m_region.outer, place);
    return !inHole;
}

int CQuery2D::FindExact(std::int32_t x, std::int32_t y) const
{
    return m_store.tree.root == nullptr ? -1 : FindExact(*m_store.tree.root, m_store.tree.cube, x, y);
}

int CQuery2D::FindExact(const CNode& node, const CCube& cube, std::int32_t x, std::int32_t y) const
{
    int low = 0;
    if (x >= cube.x)
        low = y < cube.y ? 4 : 6;
    else
        low = y < cube.y ? 0 : 2;
    for (int k = low; k <= low + 1; ++k)
    {
        const CChild* child = node.child[static_cast<std::size_t>(k)].get();
        if (child == nullptr)
            continue;
        int found = -1;
        if (!child->leaf)
            found = FindExact(*child->node, ChildCube(cube, k), x, y);
        for (int i = child->first; child->leaf && found == -1 && i < child->first + child->count; ++i)
        {
            const CPnt& pnt = m_store.pnts[static_cast<std::size_t>(i)];
            if (!m_store.deleted[static_cast<std::size_t>(i)] && pnt.x == x && pnt.y == y)
                found = i;
        }
        if (found != -1)
            return found;
    }
    return -1;
}

} // namespace Ref
