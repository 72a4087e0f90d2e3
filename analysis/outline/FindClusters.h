#ifndef ANALYSIS_OUTLINE_FINDCLUSTERS_H
#define ANALYSIS_OUTLINE_FINDCLUSTERS_H

#include <analysis/outline/CClusterForest.h>
#include <octree/COcTreeData.h>

class IDlgProgress;

/// Gathers the points of a store into clusters of neighbours in plan view.
///
/// @param pProgress  one call a point, in index order: the percentage of points before it. May be null.
/// @param dRadius    compact units; points at most so far apart, in different places, are neighbours.
///                   Not a number: all points are.
///
/// Points are asked for their later neighbours in index order, and joined with them. A point that an
/// earlier one has reached is not asked: clusters grow only through the points that were not reached.
/// REQUIRES: a tree with a root. Cost: one query for each point not reached. Throws std::bad_alloc.
template <class T>
CClusterForest FindClusters(const COcTreeData<T>& store, IDlgProgress* pProgress, double dRadius);

class CTruncPnt;
class CTruncPnt_Color;
extern template CClusterForest FindClusters(const COcTreeData<CTruncPnt>&, IDlgProgress*, double);
extern template CClusterForest FindClusters(const COcTreeData<CTruncPnt_Color>&, IDlgProgress*, double);

#endif
