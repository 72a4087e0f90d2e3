#ifndef OCTREE_CDUPLICATEOCTREELISTENER_H
#define OCTREE_CDUPLICATEOCTREELISTENER_H

#include <octree/COcTreeData.h>
#include <octree/IOcTreeListener.h>

#include <cstddef>
#include <vector>

/// Visitor that marks duplicates deleted: of the points of one leaf that share x and y, all but the
/// first.
///
/// KEPT: heights are not compared, and points of different leaves never meet
/// (SamePlace_FirstStaysWhateverTheHeight_Kept, SamePlaceInTwoLeaves_BothStay_Kept).
template <class T>
class CDuplicateOcTreeListener final : public IOcTreeListener<T>
{
public:
    explicit CDuplicateOcTreeListener(COcTreeData<T>& store) : m_store(store) {}

    /// L1: the points of a leaf are one run of the array, so that its first point and its length are enough.
    void OnPnt(std::int32_t nIndex) override
    {
        if (m_nCount++ == 0)
            m_nFirst = nIndex;
    }

    void OnLeafEnd() override
    {
        FindDuplicates();
        m_nCount = 0;
    }

    void GetPnt(std::int32_t, T&) const override {}

    bool IsDeleted(std::int32_t) const override { return false; }

private:
    void FindDuplicates();
    void FindByPairs();
    void FindByHash();
    std::int32_t& FindSlot(std::int32_t nIndex);
    void GrowSlots();

    COcTreeData<T>& m_store;
    std::int32_t m_nFirst = 0; // run of the current leaf
    std::int32_t m_nCount = 0;
    std::vector<std::int32_t> m_vecSlots; // hash table of a large leaf: point indices, -1 for free
};

extern template class CDuplicateOcTreeListener<CTruncPnt>;
extern template class CDuplicateOcTreeListener<CTruncPnt_Color>;

#endif
