#ifndef CLOUD_COCTREE_H
#define CLOUD_COCTREE_H

#include <octree/COcTreeData.h>

#include <vector>

/// One store of compact points: its life from `Init` over filling, indexing and compactions to `Clear`.
///
/// L5: point indices are positions in the current array, and every build of the tree and every compaction
/// changes them. Where an operation throws std::bad_alloc the store is as it was before, but for
/// `ComputeTree` and `FinishReading`: the points may then stand in another order. A tree from before is still
/// the right one, unless points were added since it was built.
template <class T>
class COcTree : public COcTreeData<T>
{
public:
    using COcTreeData<T>::COcTreeData;

    /// Makes room for `nNumPnts` zeroed points (below 1: a store of no points that has an array).
    /// @return false, and nothing changes, when the store already has an array.
    bool Init(std::int32_t nNumPnts);

    /// Builds the octree over all slots of the array, filled or not, and reorders the array for it.
    /// @return false when there is no point; the store then has a tree without a root.
    bool ComputeTree();

    /// Builds the octree, removes the points that share their plan position with an earlier one of
    /// their leaf, and compacts the store if there were any.
    void FinishReading();

    /// @return points of the store that are not marked deleted.
    std::int32_t GetNumPnts() const noexcept;

    /// Selects point `nIndex`, or turns its selection over when `bToggle`. A negative index changes nothing.
    void SelPnt(std::int32_t nIndex, bool bToggle) noexcept;

    void UnSelPnts() noexcept;

    /// Removes the selected points: marks them deleted, then compacts the store.
    void DelSelPnts();

    /// Compacts the store to the points that are not marked deleted, in their order. Nothing happens
    /// when none is marked.
    void PackDelPnts();

    /// Makes the listed points, in the order of the list, the whole store: new array, new tree, no
    /// selection, no deletion marks, modified. A compacted store takes no further points.
    ///
    /// REQUIRES: indices of the store.
    void KeepPnts(const std::vector<int>& vecIndices);

    /// Gives up the array and the tree. Bit sets, origin, flags and counters stay until `Init`.
    void Clear() noexcept;
};

extern template class COcTree<CTruncPnt>;
extern template class COcTree<CTruncPnt_Color>;

#endif
