#include <octree/WalkLod.h>

#include <octree/FindRepresentative.h>

template <class Visitor>
void CWalkLod<Visitor>::Walk(const COcTreeNode& node, std::int64_t nDepth)
{
    WalkNode(node, nDepth);
    EndAll();
}

template <class Visitor>
void CWalkLod<Visitor>::WalkNode(const COcTreeNode& node, std::int64_t nDepth)
{
    if (nDepth == m_nLimit)
    {
        __builtin_prefetch(node.m_pChildren);
        Begin({&node, nullptr});
        return;
    }
    if (nDepth == m_nLimit - 2)
        for (const COcTreeChild child : node.GetChildren())
            if (!child.IsLeaf())
                __builtin_prefetch(child.GetNode().m_pChildren);
    for (const COcTreeChild child : node.GetChildren())
    {
        if (child.IsLeaf())
            WalkLeaf(child.GetLeaf(), nDepth == m_nLimit - 1);
        else
            WalkNode(child.GetNode(), nDepth + 1);
    }
}

// This function is inlined and the rare ways out of it are not: a call of it would take a quarter longer
// where leaves are small.
template <class Visitor>
[[gnu::always_inline]] inline void CWalkLod<Visitor>::WalkLeaf(const COcTreeLeaf& leaf, bool bOnePnt)
{
    const bool bIsBehind = m_nNumEnded != m_nNumBegun;
    if (bOnePnt && bIsBehind)
    {
        m_listener.Prefetch(leaf.m_nFirst);
        Begin({nullptr, &leaf});
        return;
    }
    if (bIsBehind)
        EndAll();
    if (bOnePnt)
    {
        DeliverFirst(&leaf);
        return;
    }
    m_delivered.CountPnts(m_listener.OnRun(leaf.m_nFirst, leaf.m_nCount));
    m_delivered.CountLeaves(1);
}

template <class Visitor>
[[gnu::noinline]] void CWalkLod<Visitor>::Begin(const CSearch& search)
{
    if (m_nNumBegun - m_nNumEnded == c_nNumSearches)
        EndFirst();
    for (unsigned nLag = c_nLag; nLag < c_nNumSearches; nLag += c_nLag)
        Step(m_aSearches[(m_nNumBegun - nLag) % c_nNumSearches]);
    m_aSearches[m_nNumBegun++ % c_nNumSearches] = search;
}

/// Takes a search one level down, unless it has ended.
template <class Visitor>
void CWalkLod<Visitor>::Step(CSearch& search) const noexcept
{
    if (search.pNode == nullptr)
        return;
    search.pLeaf = StepToRepresentative(search.pNode);
    if (search.pLeaf != nullptr)
        m_listener.Prefetch(search.pLeaf->m_nFirst);
    else if (search.pNode != nullptr)
        __builtin_prefetch(search.pNode->m_pChildren);
}

/// Ends the search begun first and delivers what it found.
template <class Visitor>
void CWalkLod<Visitor>::EndFirst()
{
    CSearch& search = m_aSearches[m_nNumEnded++ % c_nNumSearches];
    while (search.pNode != nullptr)
        Step(search);
    DeliverFirst(search.pLeaf);
}

/// Delivers the first live point of a leaf, if there are a leaf and such a point.
template <class Visitor>
[[gnu::noinline]] void CWalkLod<Visitor>::DeliverFirst(const COcTreeLeaf* pLeaf)
{
    const std::int32_t nIndex = pLeaf == nullptr ? -1 : m_listener.FindLivePnt(*pLeaf);
    if (nIndex == -1)
        return;
    m_listener.OnPnt(nIndex);
    m_delivered.CountPnts(1);
}

template <class Visitor>
[[gnu::noinline]] void CWalkLod<Visitor>::EndAll()
{
    while (m_nNumEnded != m_nNumBegun)
        EndFirst();
}

template class CWalkLod<COcTreeListener<CTruncPnt>>;
template class CWalkLod<COcTreeListener<CTruncPnt_Color>>;
template class CWalkLod<CIndexVisitor<CTruncPnt>>;
template class CWalkLod<CIndexVisitor<CTruncPnt_Color>>;
template class CWalkLod<CIndexVisitor<CTruncPnt, CRunList>>;
template class CWalkLod<CIndexVisitor<CTruncPnt_Color, CRunList>>;
