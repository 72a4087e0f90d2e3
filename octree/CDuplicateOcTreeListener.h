#ifndef OCTREE_CDUPLICATEOCTREELISTENER_H
#define OCTREE_CDUPLICATEOCTREELISTENER_H

#include <octree/COcTreeData.h>
#include <octree/IOcTreeListener.h>

#include <cstddef>
#include <vector>

/// Visitor that marks duplicates deleted: of the points of one leaf that share x and y, all but the
/// first.
///
/// KEPT: heights are not compared, and points of different leaves never meet.
template <class T>
class CDuplicateOcTreeListener final : public IOcTreeListener<T>
{
public:
    explicit CDuplicateOcTreeListener(COcTreeData<T>& store) : m_store(store) {}

    void OnPnt(std::int32_t nIndex) override { m_vecLeaf.push_back(nIndex); }

    void OnLeafEnd() override
    {
        FindDuplicates();
        m_vecLeaf.clear();
    }

    void GetPnt(std::int32_t, T&) const override {}

    bool IsDeleted(std::int32_t) const override { return false; }

private:
    void FindDuplicates();
    void FindByPairs();
    void FindByHash();

    COcTreeData<T>& m_store;
    std::vector<std::int32_t> m_vecLeaf;  // points of the current leaf, in walk order
    std::vector<std::int32_t> m_vecSlots; // hash table of a large leaf: point indices, -1 for free
};

extern template class CDuplicateOcTreeListener<CTruncPnt>;
extern template class CDuplicateOcTreeListener<CTruncPnt_Color>;

#endif
