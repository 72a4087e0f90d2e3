#ifndef OCTREE_CONTOUR_CCONTOURSQUARE_H
#define OCTREE_CONTOUR_CCONTOURSQUARE_H

#include <octree/COcTreeCube.h>
#include <octree/COcTreeData.h>
#include <zor3geom/PNT_2D.h>
#include <zor3geom/TPlanBox.h>

#include <vector>

/// The plan square of a node or leaf as the contour query sees it. Coordinate units.
struct CContourSquare
{
    zor::geom::TPlanBox<double> box;
    zor::geom::PNT_2D centre;

    /// Room around the square in which the edges that matter to it are looked for: L4: points may lie a few
    /// compact units outside the square of their node.
    zor::geom::TPlanBox<double> around;

    explicit CContourSquare(const zor::geom::TPlanBox<double>& boxOfSquare) noexcept;

    /// False where the square is smaller than the step of double there.
    bool HasArea() const noexcept { return box.xmax > box.xmin && box.ymax > box.ymin; }

    /// Corners in order along the boundary: the lower left one, then upwards, right, and down.
    std::vector<zor::geom::PNT_2D> GetRing() const;
};

/// The plan square of a cube of the store's tree.
template <class T>
CContourSquare CalcContourSquare(const COcTreeData<T>& store, const COcTreeCube& cube) noexcept;

extern template CContourSquare CalcContourSquare(const COcTreeData<CTruncPnt>& store,
                                                 const COcTreeCube& cube) noexcept;
extern template CContourSquare CalcContourSquare(const COcTreeData<CTruncPnt_Color>& store,
                                                 const COcTreeCube& cube) noexcept;

#endif
