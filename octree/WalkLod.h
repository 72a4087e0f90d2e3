#ifndef OCTREE_WALKLOD_H
#define OCTREE_WALKLOD_H

#include <octree/CDelivered.h>
#include <octree/CIndexVisitor.h>
#include <octree/COcTreeIndex.h>
#include <octree/COcTreeListener.h>
#include <octree/CRunList.h>

/// Walk of a thinned cloud: a node at the depth limit gives its representative, a leaf there its first
/// live point, a leaf above all its live points.
///
/// Each representative lies at the end of a chain of records far from each other. So that the walk does
/// not wait for every one of them, the last few searches are under way together, each a step further than
/// the next, and what the next step will read is fetched ahead. Delivery is in the order of the walk.
///
/// @tparam Visitor  `OnPnt`, `OnRun`, `FindLivePnt`, `Prefetch` as in COcTreeListener.
template <class Visitor>
class CWalkLod
{
public:
    /// @param nLimit  depth at which cubes give one point. KEPT: a value below 0 is never met, so that every
    ///                live point is delivered (Lod_LargerThanTheTreeGivesEverything_Kept).
    CWalkLod(Visitor& listener, std::int64_t nLimit, CDelivered& delivered)
        : m_listener(listener), m_nLimit(nLimit), m_delivered(delivered)
    {
    }

    /// Walks what lies under a node at a depth, the root at 0.
    void Walk(const COcTreeNode& node, std::int64_t nDepth);

private:
    /// A search under way: the node to look into, or the leaf found, or neither.
    struct CSearch
    {
        const COcTreeNode* pNode;
        const COcTreeLeaf* pLeaf;
    };

    static constexpr unsigned c_nNumSearches = 16; // a power of two
    static constexpr unsigned c_nLag = 4;          // searches begun between two steps of one

    void WalkNode(const COcTreeNode& node, std::int64_t nDepth);
    void WalkLeaf(const COcTreeLeaf& leaf, bool bOnePnt);
    void Begin(const CSearch& search);
    void Step(CSearch& search) const noexcept;
    void EndFirst();
    void EndAll();
    void DeliverFirst(const COcTreeLeaf* pLeaf);

    Visitor& m_listener;
    std::int64_t m_nLimit;
    CDelivered& m_delivered;
    CSearch m_aSearches[c_nNumSearches] = {};
    unsigned m_nNumBegun = 0; // wraps around, which differences and remainders allow
    unsigned m_nNumEnded = 0;
};

extern template class CWalkLod<COcTreeListener<CTruncPnt>>;
extern template class CWalkLod<COcTreeListener<CTruncPnt_Color>>;
extern template class CWalkLod<CIndexVisitor<CTruncPnt>>;
extern template class CWalkLod<CIndexVisitor<CTruncPnt_Color>>;
extern template class CWalkLod<CIndexVisitor<CTruncPnt, CRunList>>;
extern template class CWalkLod<CIndexVisitor<CTruncPnt_Color, CRunList>>;

#endif
