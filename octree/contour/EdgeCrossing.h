#ifndef OCTREE_CONTOUR_EDGECROSSING_H
#define OCTREE_CONTOUR_EDGECROSSING_H

#include <octree/contour/CContourEdge.h>
#include <zor3geom/CalcOrientation.h>

#include <algorithm>

/// Which edges lie between two places, counted so that a place on an edge or corner is no special case: each
/// place is taken as if it were moved up by a step too small to name and then right by a smaller one. A way
/// is then on an edge nowhere, and crosses each edge once or not at all. Exact, as `CalcOrientation` is.

/// @return the side of the directed edge on which a place, moved, lies: 1 left, -1 right.
inline int CalcSide(const CContourEdge& edge, const zor::geom::PNT_2D& pnt) noexcept
{
    const int nSide = zor::geom::CalcOrientation(edge.a, edge.b, pnt);
    if (nSide != 0)
        return nSide;
    if (edge.b.x != edge.a.x)
        return edge.b.x > edge.a.x ? 1 : -1; // up is left of an edge that runs right
    return edge.b.y > edge.a.y ? -1 : 1;     // right is right of an edge that runs up
}

/// Does a line at `d`, moved, run between the ends of an edge? The ends as their coordinate across the line.
inline bool IsAcross(double dA, double dB, double d) noexcept
{
    return (dA <= d) != (dB <= d);
}

/// Is the edge crossed on the horizontal way from a place to another at the same height?
inline bool IsCrossedAlongX(const CContourEdge& edge, const zor::geom::PNT_2D& from, double dToX) noexcept
{
    if (!IsAcross(edge.a.y, edge.b.y, from.y) || std::max(edge.a.x, edge.b.x) < std::min(from.x, dToX) ||
        std::min(edge.a.x, edge.b.x) > std::max(from.x, dToX))
        return false;
    return CalcSide(edge, from) != CalcSide(edge, zor::geom::PNT_2D(dToX, from.y));
}

/// The same on the vertical way.
inline bool IsCrossedAlongY(const CContourEdge& edge, const zor::geom::PNT_2D& from, double dToY) noexcept
{
    if (!IsAcross(edge.a.x, edge.b.x, from.x) || std::max(edge.a.y, edge.b.y) < std::min(from.y, dToY) ||
        std::min(edge.a.y, edge.b.y) > std::max(from.y, dToY))
        return false;
    return CalcSide(edge, from) != CalcSide(edge, zor::geom::PNT_2D(from.x, dToY));
}

/// Is the edge crossed on the horizontal way to a place from one left of everything?
inline bool IsCrossedFromFarLeft(const CContourEdge& edge, const zor::geom::PNT_2D& pnt) noexcept
{
    return IsAcross(edge.a.y, edge.b.y, pnt.y) && CalcSide(edge, pnt) == (edge.b.y > edge.a.y ? -1 : 1);
}

/// Does the place itself lie on the edge, its ends included?
inline bool IsOnEdge(const CContourEdge& edge, const zor::geom::PNT_2D& pnt) noexcept
{
    return pnt.x >= std::min(edge.a.x, edge.b.x) && pnt.x <= std::max(edge.a.x, edge.b.x) &&
           pnt.y >= std::min(edge.a.y, edge.b.y) && pnt.y <= std::max(edge.a.y, edge.b.y) &&
           zor::geom::CalcOrientation(edge.a, edge.b, pnt) == 0;
}

#endif
