// Calls that fill a cloud, change it, and copy it.

#include <fuzz/calls/CCalls.h>
#include <zor4data/FindGround.h>
#include <zor4data/KeepPnts.h>

#include <algorithm>

void CCalls::CallOnReadType()
{
    CPair& pair = PickPair();
    const int n = m_input.Below(10);
    const int nType = n < 8 ? n % 2 : m_input.Get<std::int32_t>();
    pair.cld.OnReadType(static_cast<enumPntCldType>(nType));
    pair.model.nType = nType;
}

void CCalls::CallInit()
{
    CPair& pair = PickPair();
    const int n = m_input.Below(8) == 0 ? -m_input.Below(256) : m_input.Get<std::uint16_t>() % c_nMaxPnts;
    const bool bSlot = m_input.Bool();
    bool bResult = false;
    const enumEnd eEnd = Try(
        [&]
        {
            if (bSlot)
                pair.cld.OnReadNumPnts(n);
            else
                bResult = pair.cld.Init(n);
        });
    if (eEnd != enumEnd::Done)
        return;
    CModelStore* const pStore = pair.model.GetStore();
    const bool bExpected = pStore != nullptr && pStore->Init(n);
    Check(bSlot || bResult == bExpected, "Init's result");
}

void CCalls::CallAddPnts()
{
    CPair& pair = PickPair();
    const int nKind = m_input.Below(4);
    const bool bSpread = m_input.Bool();
    for (int n = 1 + m_input.Get<std::uint8_t>(); n > 0 && !m_input.IsAtEnd(); --n)
    {
        const double dStep = bSpread ? m_dStep : m_dStep * 0.0625;
        const bool bOdd = m_input.Below(64) == 0;
        const double x = m_input.Coord(bOdd, dStep);
        const double y = m_input.Coord(bOdd, dStep);
        const double z = m_input.Coord(bOdd, dStep);
        const std::array<std::uint8_t, 3> color = Color();
        const bool bColored = pair.model.nType == 1;
        if (nKind == 0)
            Check(pair.cld.AddPnt(x, y, z) == pair.model.Add(x, y, z, {0, 255, 0}), "AddPnt's result");
        else if (nKind == 1)
            Check(pair.cld.AddPnt(x, y, z, color[0], color[1], color[2]) == pair.model.Add(x, y, z, color),
                  "AddPnt's result with colour");
        else if (nKind == 2)
        {
            pair.cld.OnReadPnt(x, y, z);
            if (!bColored)
                pair.model.Add(x, y, z, color);
        }
        else
        {
            pair.cld.OnReadPnt(x, y, z, color[0], color[1], color[2]);
            if (bColored)
                pair.model.Add(x, y, z, color);
        }
    }
}

void CCalls::CallComputeTree()
{
    CPair& pair = PickPair();
    bool bResult = false;
    CModelStore* const pStore = pair.model.GetStore();
    if (Try([&] { bResult = pair.cld.ComputeTree(); }) == enumEnd::Done)
        Check(bResult == (pStore != nullptr && pStore->ComputeTree()), "ComputeTree's result");
    else if (pStore->pArray != nullptr)
        TakeOrder(pair);
}

void CCalls::CallOnReadEnd()
{
    CPair& pair = PickPair();
    CModelStore* const pStore = pair.model.GetStore();
    if (Try([&] { pair.cld.OnReadEnd(); }) == enumEnd::Done)
    {
        if (pStore != nullptr)
            pStore->ReadEnd();
        return;
    }
    // The octree may have been built before memory ran out, or not: it is built once more.
    if (pStore->pArray != nullptr)
        TakeOrder(pair);
    pair.cld.ComputeTree();
    pStore->ComputeTree();
}

void CCalls::CallClear()
{
    CPair& pair = PickPair();
    pair.cld.Clear();
    if (CModelStore* const pStore = pair.model.GetStore())
        pStore->Clear();
}

void CCalls::CallFlags()
{
    CPair& pair = PickPair();
    CModelStore* const pStore = pair.model.GetStore();
    const bool b = m_input.Bool();
    if (m_input.Bool())
    {
        pair.cld.SetModified(b);
        if (pStore != nullptr)
            pStore->SetModified(b);
        return;
    }
    const int nVersion = b ? std::numeric_limits<int>::max() : m_input.Get<std::int32_t>();
    pair.cld.SetVersion(nVersion);
    if (pStore != nullptr)
        pStore->nVersion = nVersion;
}

void CCalls::CallSelect()
{
    CPair& pair = PickPair();
    CModelStore* const pStore = pair.model.GetStore();
    if (m_input.Below(4) == 0)
    {
        pair.cld.UnSelPnts();
        if (pStore != nullptr)
            pStore->UnSelect();
        return;
    }
    const int nNumPnts = pair.cld.GetNumPnts();
    for (int n = m_input.Below(32); n > 0; --n)
    {
        const int nAny = m_input.Get<std::uint16_t>();
        const int nIndex = nAny % 16 == 0 ? -nAny - 1 : nNumPnts > 0 ? nAny % nNumPnts : -1;
        const bool bToggle = m_input.Bool();
        pair.cld.SelPnt(nIndex, bToggle);
        if (pStore != nullptr)
            pStore->Select(nIndex, bToggle);
    }
}

void CCalls::CallDelete()
{
    CPair& pair = PickPair();
    if (Try([&] { pair.cld.DelSelPnts(); }) == enumEnd::Done)
        if (CModelStore* const pStore = pair.model.GetStore())
            pStore->DelSel();
}

void CCalls::CallCopy()
{
    CPair& pair = PickPair();
    const CPair& other = PickPair();
    if (m_input.Bool())
    {
        if (Try([&] { pair.cld = other.cld; }) == enumEnd::Done)
            pair.model = other.model;
        return;
    }
    const CPntCld copy(other.cld); // shares, and goes away
    CPair gone = other;
    Compare(gone);
    gone.cld.Clear();
}

void CCalls::CallKeepPnts()
{
    CPair& pair = PickPair();
    const int nNumPnts = pair.cld.GetNumPnts();
    std::vector<int> vecIndices;
    for (int i = 0; i < nNumPnts; ++i)
        if ((i * 7 + nNumPnts) % 3 != 0 || m_input.Below(4) == 0)
            vecIndices.push_back(i);
    if (m_input.Bool())
        std::reverse(vecIndices.begin(), vecIndices.end());
    if (Try([&] { KeepPnts(pair.cld, vecIndices); }) == enumEnd::Done)
        if (CModelStore* const pStore = pair.model.GetStore())
            pStore->Keep(vecIndices);
}

void CCalls::CallMorph()
{
    CPair& pair = PickPair();
    const std::vector<int> vecGround = FindGround(pair.cld, nullptr);
    if (Try([&] { pair.cld.Morph(&m_host); }) == enumEnd::Done)
        if (CModelStore* const pStore = pair.model.GetStore())
            pStore->Keep(vecGround);
}
