#include <fuzz/calls/CCalls.h>

#include <zor4data/CRootCube.h>
#include <zor4data/FindIndices.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <tuple>

using zor::geom::PLANE_3D;
using zor::geom::PNT_3D;

CCalls::CCalls(CInput& input) : m_input(input), m_dStep(1.0)
{
    static const std::array<double, 6> c_adSteps{1.0, 0.25, 0.0001, 0.00025, 1684.3, 30.0};
    m_dStep = c_adSteps[static_cast<std::size_t>(input.Below(6))];
    m_vecPairs.reserve(c_nNumClds);
    for (int i = 0; i < c_nNumClds; ++i)
        m_vecPairs.emplace_back(&m_host);
}

struct CCalls::CCall
{
    const char* sName;
    int nShare; // of 32
    void (CCalls::*pCall)();
};

const CCalls::CCall& CCalls::PickCall()
{
    static constexpr std::array<CCall, 27> c_calls{{
        {"OnReadType", 1, &CCalls::CallOnReadType},
        {"Init", 1, &CCalls::CallInit},
        {"AddPnts", 3, &CCalls::CallAddPnts},
        {"ComputeTree", 2, &CCalls::CallComputeTree},
        {"OnReadEnd", 1, &CCalls::CallOnReadEnd},
        {"Clear", 1, &CCalls::CallClear},
        {"Flags", 1, &CCalls::CallFlags},
        {"Select", 2, &CCalls::CallSelect},
        {"Delete", 1, &CCalls::CallDelete},
        {"Copy", 1, &CCalls::CallCopy},
        {"KeepPnts", 1, &CCalls::CallKeepPnts},
        {"Morph", 1, &CCalls::CallMorph},
        {"WriteAndLoad", 1, &CCalls::CallWriteAndLoad},
        {"SaveCloud", 1, &CCalls::CallSaveCloud},
        {"ReadPly", 1, &CCalls::CallReadPly},
        {"FileFacts", 1, &CCalls::CallFileFacts},
        {"Walks", 2, &CCalls::CallWalks},
        {"Rect", 1, &CCalls::CallRect},
        {"NearLine", 1, &CCalls::CallNearLine},
        {"Contours", 1, &CCalls::CallContours},
        {"Polygons", 1, &CCalls::CallPolygons},
        {"Pick", 1, &CCalls::CallPick},
        {"LodRuns", 1, &CCalls::CallLodRuns},
        {"Arrays", 1, &CCalls::CallArrays},
        {"Outline", 1, &CCalls::CallOutline},
        {"Ground", 1, &CCalls::CallGround},
        {"Geometry", 1, &CCalls::CallGeometry},
    }};
    const CCall* pCall = c_calls.data();
    for (int nPlace = m_input.Below(32) - pCall->nShare; nPlace >= 0; nPlace -= pCall->nShare)
        ++pCall;
    return *pCall;
}

void CCalls::Run()
{
    static const bool bTold = std::getenv("ZOR4DATA_FUZZ_TRACE") != nullptr;
    constexpr int c_nMaxCalls = 60;
    for (int n = 0; n < c_nMaxCalls && !m_input.IsAtEnd(); ++n)
    {
        const CCall& call = PickCall();
        if (bTold)
            std::fprintf(stderr, "call %d: %s\n", n, call.sName);
        (this->*call.pCall)();
        m_host.Forget(nullptr);
        CompareAll();
    }
}

void CCalls::CompareAll() const
{
    for (const CPair& pair : m_vecPairs)
        Compare(pair);
}

void CCalls::Compare(const CPair& pair)
{
    const CPntCld& cld = pair.cld;
    CModelCld model = pair.model;
    const CModelStore* const pStore = model.GetStore();
    Check(cld.IsWithColor() == (model.nType == 1), "the type");
    Check((cld.GetColorListener() != nullptr) == (pStore != nullptr),
          "a colour listener where there is a type");
    Check(cld.GetFileType() == model.nFileType && model.sPath == cld.GetFilePath().c_str(), "the file");
    Check(cld.GetVersion() == (pStore != nullptr ? pStore->nVersion : -1), "the version");
    Check(cld.IsModified() == (pStore != nullptr && pStore->bModified), "the flag");
    const Ref::CStore store = Look(pair);
    Check(cld.GetNumPnts() == static_cast<int>(store.pnts.size()), "the number of points");
    CompareArrays(pair, store);
    CompareTree(pair, store);
}

void CCalls::CompareArrays(const CPair& pair, const Ref::CStore& store)
{
    const CPntArrays arrays = GetPntArrays(pair.cld);
    Check(arrays.nNumPnts == static_cast<int>(store.pnts.size()), "slots of the arrays");
    for (std::size_t i = 0; i < store.pnts.size(); ++i)
    {
        const unsigned char* const pPnt = arrays.pPnts + i * static_cast<std::size_t>(arrays.nStride);
        std::array<std::int32_t, 3> offsets{};
        std::memcpy(offsets.data(), pPnt, sizeof offsets);
        const Ref::CPnt& pnt = store.pnts[i];
        Check(offsets == std::array<std::int32_t, 3>{pnt.x, pnt.y, pnt.z}, "a point's offsets");
        unsigned char r = 0;
        unsigned char g = 0;
        unsigned char b = 0;
        const bool bColor = pair.cld.GetPntColor(static_cast<int>(i), r, g, b);
        Check(bColor == arrays.bColor && r == pnt.r && g == pnt.g && b == pnt.b, "a point's colour");
        Check(((arrays.pSelBits[i / 8] >> (i % 8)) & 1) == (store.selected[i] ? 1 : 0), "a point's mark");
        Check(((arrays.pDelBits[i / 8] >> (i % 8)) & 1) == 0, "no point is marked deleted");
    }
}

void CCalls::CompareTree(const CPair& pair, const Ref::CStore& store)
{
    zor::geom::RECT_3D rect;
    CRootCube cube{};
    const bool bTree = pair.cld.GetBdry(rect);
    Check(bTree == store.hasTree && GetRootCube(pair.cld, cube) == store.hasTree, "whether there is a tree");
    if (!bTree)
        return;
    const std::array<double, 6> box{rect.xmin, rect.ymin, rect.zmin, rect.xmax, rect.ymax, rect.zmax};
    Check(box == Ref::CalcBox(store.tree, store.org), "the box");
    if (store.tree.root != nullptr)
        Check(cube.nX == store.tree.cube.x && cube.nY == store.tree.cube.y && cube.nZ == store.tree.cube.z &&
                  cube.nEdge == store.tree.cube.edge,
              "the root cube");
    CCallHost host;
    FindIndices_Clip(pair.cld, &host, {}, 1000);
    Ref::CQuery query(store);
    query.Clip({});
    Check(host.GetIndices() == query.GetIndices(), "the leaves");
}

void CCalls::TakeOrder(CPair& pair)
{
    CModelStore* const pStore = pair.model.GetStore();
    Check(pStore != nullptr && pStore->pArray != nullptr, "a build that fails has points");
    const CPntArrays arrays = GetPntArrays(pair.cld);
    std::vector<Ref::CPnt> pnts(static_cast<std::size_t>(arrays.nNumPnts));
    for (std::size_t i = 0; i < pnts.size(); ++i)
    {
        const unsigned char* const pPnt = arrays.pPnts + i * static_cast<std::size_t>(arrays.nStride);
        std::array<std::int32_t, 3> offsets{};
        std::memcpy(offsets.data(), pPnt, sizeof offsets);
        pnts[i] = {offsets[0], offsets[1], offsets[2], 0, 0, 0};
        pair.cld.GetPntColor(static_cast<int>(i), pnts[i].r, pnts[i].g, pnts[i].b);
    }
    const auto sorted = [](std::vector<Ref::CPnt> v)
    {
        std::sort(v.begin(), v.end(),
                  [](const Ref::CPnt& a, const Ref::CPnt& b) {
                      return std::tie(a.x, a.y, a.z, a.r, a.g, a.b) < std::tie(b.x, b.y, b.z, b.r, b.g, b.b);
                  });
        return v;
    };
    Check(sorted(pnts) == sorted(pStore->pArray->pnts), "a build that fails keeps the points");
    pStore->TakeOrder(pnts);
}

Ref::CStore CCalls::Look(const CPair& pair)
{
    CModelCld model = pair.model;
    const CModelStore* const pStore = model.GetStore();
    return pStore == nullptr ? Ref::CStore() : pStore->Look();
}

bool CCalls::IsFresh(const CPair& pair)
{
    CModelCld model = pair.model;
    const CModelStore* const pStore = model.GetStore();
    return pStore != nullptr && pStore->IsTreeFresh();
}

std::vector<PNT_3D> CCalls::ListPlaces(const Ref::CStore& store)
{
    std::vector<PNT_3D> vecPlaces;
    for (const Ref::CPnt& pnt : store.pnts)
        vecPlaces.emplace_back(pnt.x / 10000.0 + static_cast<double>(store.org[0]),
                               pnt.y / 10000.0 + static_cast<double>(store.org[1]),
                               pnt.z / 10000.0 + static_cast<double>(store.org[2]));
    return vecPlaces;
}

std::vector<PLANE_3D> CCalls::Planes()
{
    std::vector<PLANE_3D> vecPlanes;
    for (int n = m_input.Below(5); n > 0; --n)
    {
        const double a = Number();
        const double b = Number();
        const double c = Number();
        vecPlanes.emplace_back(a, b, c, Number() * 16.0);
    }
    return vecPlanes;
}

float CCalls::Float()
{
    if (m_input.Below(8) == 0)
        return m_input.Get<float>();
    return static_cast<float>(m_input.Get<std::int8_t>() * m_dStep);
}

std::array<std::uint8_t, 3> CCalls::Color()
{
    const auto r = m_input.Get<std::uint8_t>();
    return {r, static_cast<std::uint8_t>(r * 7), static_cast<std::uint8_t>(r ^ 255U)};
}
