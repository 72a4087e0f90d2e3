#ifndef BENCH_CCONTOURMODEL_H
#define BENCH_CCONTOURMODEL_H

#include <octree/COcTreeIndex.h>

#include <geos/geom/Geometry.h>

#include <cstdint>
#include <utility>
#include <vector>

/// The product's rule of what a contour selects, taken literally and slowly: a walk of the tree that asks
/// GEOS for the part of every square that lies outside the contour. Shows another's answer, a set of points
/// inside, as the rule lets it through:
///
/// - squares of which nothing lies outside give all their points,
/// - squares whose part outside has four corners, each within the root of 0.1 m of the square's own, give
///   none, even where a sliver of them is inside,
/// - leaves under all other squares give their points inside or, when the contour has holes, none.
///
/// The points of squares wholly inside have to be in the other's answer, every one.
class CContourModel
{
public:
    /// @param tree   with its points about (dOrgX, dOrgY); not kept.
    /// @param area   a polygon in coordinates; not kept.
    /// @param bHoles whether it has holes.
    CContourModel(const COcTreeIndex& tree, double dOrgX, double dOrgY, const geos::geom::Geometry& area,
                  bool bHoles);

    /// @param vecInside  of each point of the tree's array: not 0 when it lies inside.
    /// @return the sum of the indices, each plus 1, that the rule lets through; 0 when one of a square
    ///         wholly inside is missing.
    std::uint64_t Sum(const std::vector<char>& vecInside) const;

private:
    using TRun = std::pair<std::int32_t, std::int32_t>; // first point, and the one behind the last

    void WalkNode(const COcTreeNode& node, const COcTreeCube& cube, const geos::geom::Geometry& area);
    void TakeWhole(const COcTreeNode& node);

    double m_dOrgX;
    double m_dOrgY;
    bool m_bHoles;
    std::vector<TRun> m_vecWhole;  // under squares wholly inside
    std::vector<TRun> m_vecTested; // leaves whose points are looked at one by one
};

#endif
