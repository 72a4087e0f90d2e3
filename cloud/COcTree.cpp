#include <cloud/COcTree.h>

#include <octree/BuildTree.h>
#include <octree/CDuplicateOcTreeListener.h>
#include <octree/CTruncPnt.h>
#include <octree/CTruncPnt_Color.h>
#include <octree/HasRoot.h>
#include <octree/WalkAll.h>
#include <octree/ZeroedArray.h>

#include <algorithm>
#include <cstring>

template <class T>
bool COcTree<T>::Init(std::int32_t nNumPnts)
{
    if (this->m_pPnts != nullptr)
        return false;
    const std::int32_t nNum = std::max(nNumPnts, 0);
    auto pPnts = MakeZeroedArray<T>(static_cast<std::size_t>(nNum));
    auto pSelBits = CPntBits::MakeClear(nNum);
    auto pDelBits = CPntBits::MakeClear(nNum);
    this->m_pPnts = std::move(pPnts);
    this->m_pSelBits = std::move(pSelBits);
    this->m_pDelBits = std::move(pDelBits);
    this->m_nNumPnts = nNum;
    this->m_nNumAdded = 0;
    this->m_bHasDel = false;
    return true;
}

template <class T>
bool COcTree<T>::ComputeTree()
{
    // KEPT: slots not filled yet are points at the origin, and the points move (L5) while the marks stay
    // where they are (ComputeTree_CountsUnfilledSlotsAsTheOrigin_Kept, ComputeTree_LeavesTheMarks_Kept).
    COcTreeIndex tree = BuildTree(this->m_pPnts.get(), this->m_nNumPnts);
    const bool bHasRoot = tree.m_pRoot != nullptr;
    // L9: copies share the array that was just reordered, and must see the tree that goes with it. A tree
    // without a root goes with no array, so that copies may by now hold arrays of their own.
    if (HasRoot(*this))
        *this->m_pTree = std::move(tree);
    else
        this->m_pTree = std::make_shared<COcTreeIndex>(std::move(tree));
    return bHasRoot;
}

// The duplicates are marked on a copy, whose deletion marks are its own (L9): should memory run out nothing
// is marked, and other copies of the store, which keep the array as it is, keep their marks too.
//
// KEPT: of points at one place in plan all but the first go, whatever their heights, but only within a leaf
// (OnReadEnd_RemovesPlanDuplicatesOfALeaf_Kept, OnReadEnd_PairInTwoLeavesStays_Kept).
template <class T>
void COcTree<T>::FinishReading()
{
    if (!ComputeTree())
        return;
    COcTree marked(*this);
    CDuplicateOcTreeListener<T> listener(marked);
    WalkAll(*marked.m_pTree, listener);
    if (!marked.m_bHasDel)
        return;
    marked.PackDelPnts();
    *this = std::move(marked);
}

template <class T>
std::int32_t COcTree<T>::GetNumPnts() const noexcept
{
    // KEPT: slots announced to Init count, whether they have been filled or not
    // (GetNumPnts_IsTheNumberAnnounced_Kept).
    if (!this->m_bHasDel)
        return this->m_nNumPnts;
    return this->m_nNumPnts - CPntBits::CountSet(this->m_pDelBits.get(), this->m_nNumPnts);
}

template <class T>
void COcTree<T>::SelPnt(std::int32_t nIndex, bool bToggle) noexcept
{
    unsigned char* const pBits = this->m_pSelBits.get();
    // KEPT: a negative index has no bit, and nothing happens (SelPnt_NegativeIndexChangesNothing_Kept)
    if (nIndex < 0 || pBits == nullptr)
        return;
    if (bToggle && CPntBits::IsSet(pBits, nIndex))
        CPntBits::Clear(pBits, nIndex);
    else
        CPntBits::Set(pBits, nIndex);
}

template <class T>
void COcTree<T>::UnSelPnts() noexcept
{
    if (this->m_pSelBits != nullptr)
        std::memset(this->m_pSelBits.get(), 0, CPntBits::GetNumBytes(this->m_nNumPnts));
}

/// Indices, ascending, of the points for which `isKept` holds.
template <class F>
static std::vector<int> ListIndices(std::int32_t nNumPnts, F isKept)
{
    std::vector<int> vecIndices;
    for (std::int32_t i = 0; i < nNumPnts; ++i)
        if (isKept(i))
            vecIndices.push_back(i);
    return vecIndices;
}

// No point is marked deleted on the way: should memory run out, nothing has changed.
template <class T>
void COcTree<T>::DelSelPnts()
{
    const bool bHasSel =
        this->m_pSelBits != nullptr && CPntBits::CountSet(this->m_pSelBits.get(), this->m_nNumPnts) > 0;
    if (bHasSel || this->m_bHasDel)
        KeepPnts(ListIndices(this->m_nNumPnts,
                             [this](std::int32_t i) { return !this->IsSelected(i) && !this->IsDeleted(i); }));
}

template <class T>
void COcTree<T>::PackDelPnts()
{
    if (this->m_bHasDel)
        KeepPnts(ListIndices(this->m_nNumPnts, [this](std::int32_t i) { return !this->IsDeleted(i); }));
}

template <class T>
void COcTree<T>::KeepPnts(const std::vector<int>& vecIndices)
{
    const std::int32_t nNumPnts = static_cast<std::int32_t>(vecIndices.size());
    auto pPnts = MakeZeroedArray<T>(vecIndices.size());
    for (std::size_t i = 0; i < vecIndices.size(); ++i)
        pPnts[static_cast<std::ptrdiff_t>(i)] = this->m_pPnts[vecIndices[i]];
    auto pSelBits = CPntBits::MakeClear(nNumPnts);
    auto pDelBits = CPntBits::MakeClear(nNumPnts);
    // L9: the tree is a new one, not the old one with new contents: copies keep the old array and its tree.
    auto pTree = std::make_shared<COcTreeIndex>(BuildTree(pPnts.get(), nNumPnts));

    this->m_pPnts = std::move(pPnts);
    this->m_pSelBits = std::move(pSelBits);
    this->m_pDelBits = std::move(pDelBits);
    this->m_pTree = std::move(pTree);
    this->m_nNumPnts = nNumPnts;
    this->m_bHasDel = false;
    // KEPT: m_nNumAdded stays, so that a compacted store takes no further points until the next Init
    // (DelSelPnts_ClosesTheStore_Kept).
    this->SetModified(true);
}

template <class T>
void COcTree<T>::Clear() noexcept
{
    this->m_nNumPnts = 0;
    this->m_pPnts.reset();
    this->m_pTree.reset();
}

template class COcTree<CTruncPnt>;
template class COcTree<CTruncPnt_Color>;
