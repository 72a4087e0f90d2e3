#include <fuzz/calls/CModelCld.h>

#include <algorithm>
#include <limits>
#include <numeric>

bool CModelStore::IsTreeFresh() const
{
    return pTree != nullptr && pArray != nullptr && pTree->pArray.lock() == pArray &&
           pTree->nNumChanges == pArray->nNumChanges;
}

Ref::CStore CModelStore::Look() const
{
    Ref::CStore store;
    store.org = org;
    if (pArray != nullptr)
    {
        store.pnts = pArray->pnts;
        store.selected = *pSelected;
        store.deleted.assign(pArray->pnts.size(), false);
    }
    store.hasTree = pTree != nullptr;
    if (store.hasTree)
        store.tree = pTree->tree;
    return store;
}

bool CModelStore::Init(int n)
{
    if (pArray != nullptr)
        return false;
    const std::size_t nNum = n < 0 ? 0 : static_cast<std::size_t>(n);
    pArray = std::make_shared<CModelArray>();
    pArray->pnts.resize(nNum);
    pSelected = std::make_shared<std::vector<bool>>(nNum);
    nNumAdded = 0;
    return true;
}

bool CModelStore::Add(double x, double y, double z, const std::array<std::uint8_t, 3>& color)
{
    if (nNumAdded >= GetNumPnts())
        return false;
    if (nNumAdded == 0)
        org = {Ref::ToOrigin(x), Ref::ToOrigin(y), Ref::ToOrigin(z)};
    pArray->pnts[static_cast<std::size_t>(nNumAdded++)] = {Ref::ToCompact(x, org[0]),
                                                           Ref::ToCompact(y, org[1]),
                                                           Ref::ToCompact(z, org[2]),
                                                           color[0],
                                                           color[1],
                                                           color[2]};
    ++pArray->nNumChanges;
    return true;
}

bool CModelStore::ComputeTree()
{
    CModelTree built;
    std::vector<Ref::CPnt> none;
    const std::vector<Ref::CPnt> before = pArray == nullptr ? none : pArray->pnts;
    built.tree = Ref::BuildTree(pArray == nullptr ? none : pArray->pnts);
    if (pArray != nullptr)
    {
        pArray->nNumChanges += pArray->pnts == before ? 0 : 1;
        built.pArray = pArray;
        built.nNumChanges = pArray->nNumChanges;
    }
    const bool bHasRoot = built.tree.root != nullptr;
    if (pTree != nullptr && pTree->tree.root != nullptr)
        *pTree = built;
    else
        pTree = std::make_shared<CModelTree>(built);
    return bHasRoot;
}

void CModelStore::ReadEnd()
{
    if (!ComputeTree())
        return;
    const std::vector<int> vecDuplicates = Ref::FindDuplicates(pArray->pnts, pTree->tree);
    if (vecDuplicates.empty())
        return;
    std::vector<int> vecKept;
    for (int i = 0; i < GetNumPnts(); ++i)
        if (std::find(vecDuplicates.begin(), vecDuplicates.end(), i) == vecDuplicates.end())
            vecKept.push_back(i);
    Keep(vecKept);
}

void CModelStore::Select(int nIndex, bool bToggle)
{
    if (nIndex < 0 || nIndex >= GetNumPnts())
        return;
    const std::size_t at = static_cast<std::size_t>(nIndex);
    (*pSelected)[at] = !(bToggle && (*pSelected)[at]);
}

void CModelStore::UnSelect()
{
    if (pSelected == nullptr)
        return;
    // marks are kept in bytes, shared with copies; one byte more than full ones is reset: after Clear the
    // first
    const std::size_t nNumReset = (static_cast<std::size_t>(GetNumPnts()) / 8 + 1) * 8;
    std::fill_n(pSelected->begin(), std::min(nNumReset, pSelected->size()), false);
}

void CModelStore::DelSel()
{
    std::vector<int> vecKept;
    for (int i = 0; i < GetNumPnts(); ++i)
        if (!(*pSelected)[static_cast<std::size_t>(i)])
            vecKept.push_back(i);
    if (static_cast<int>(vecKept.size()) < GetNumPnts())
        Keep(vecKept);
}

void CModelStore::Keep(const std::vector<int>& vecIndices)
{
    const auto pKept = std::make_shared<CModelArray>();
    for (const int i : vecIndices)
        pKept->pnts.push_back(pArray->pnts[static_cast<std::size_t>(i)]);
    pArray = pKept;
    pSelected = std::make_shared<std::vector<bool>>(vecIndices.size());
    pTree.reset(); // copies keep theirs
    ComputeTree();
    SetModified(true);
}

void CModelStore::Clear()
{
    pArray.reset();
    pTree.reset();
}

void CModelStore::SetModified(bool b)
{
    constexpr int c_nMax = std::numeric_limits<int>::max();
    if (b && !bModified)
        nVersion = nVersion == c_nMax ? std::numeric_limits<int>::min() : nVersion + 1;
    bModified = b;
}

CModelStore CModelStore::NoStore()
{
    CModelStore none;
    none.nVersion = -1;
    return none;
}

void CModelStore::Load(const CModelStore& saved)
{
    const bool bTaken = pArray == nullptr && pTree == nullptr;
    const bool bSaved = saved.pArray != nullptr && saved.pTree != nullptr;
    nVersion = saved.nVersion;
    if (!bTaken)
        return;
    org = bSaved ? saved.org : std::array<float, 3>{};
    if (!bSaved || saved.GetNumPnts() == 0)
        return;
    pArray = std::make_shared<CModelArray>(*saved.pArray);
    pSelected = std::make_shared<std::vector<bool>>(saved.pArray->pnts.size());
    pTree = std::make_shared<CModelTree>(*saved.pTree);
    if (saved.IsTreeFresh())
        pTree->pArray = pArray;
    nNumAdded = 0;
}

void CModelStore::TakeOrder(const std::vector<Ref::CPnt>& pnts)
{
    if (pArray->pnts == pnts)
        return;
    pArray->pnts = pnts;
    ++pArray->nNumChanges;
}

bool CModelCld::Add(double x, double y, double z, const std::array<std::uint8_t, 3>& color)
{
    CModelStore* const pStore = GetStore();
    return pStore != nullptr && pStore->Add(x, y, z, nType == 1 ? color : std::array<std::uint8_t, 3>{});
}
