#ifndef FUZZ_ASKCLOUD_H
#define FUZZ_ASKCLOUD_H

#include <fuzz/Check.h>
#include <zor4data/CPntArrays.h>
#include <zor4data/CPntCld.h>
#include <zor4data/CRootCube.h>
#include <zor4data/FindIndices.h>
#include <zor4data/FindLodRuns.h>
#include <zor4data/FindPntsInPolygons.h>
#include <zor4data/IPntIndexListener.h>
#include <zor4data/PickPnt.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>

/// A host: looks at every field of every delivered point.
class CFuzzHost final : public IPntCldListener, public ICldColorListener
{
public:
    void OnPnts(int nNumPnts, CCldCadPnt* pPnts) override
    {
        for (int i = 0; i < nNumPnts; ++i)
        {
            m_nIndexSum += pPnts[i].m_nIndex;
            m_nNumSel += pPnts[i].m_bSel ? 1 : 0;
            m_nNumColored += pPnts[i].m_fR >= 0.0F && pPnts[i].m_pnt.x < 1e200 ? 1 : 0;
        }
        m_nNumPnts += nNumPnts;
    }
    void GetColor(double, float& r, float& g, float& b) override
    {
        r = g = b = r * 0.5F + g * 0.25F + b * 0.25F;
    }
    void SetZRange(double, double) override { ++m_nNumZRanges; }

    long long m_nNumPnts = 0;
    long long m_nNumSel = 0;
    long long m_nNumColored = 0;
    long long m_nIndexSum = 0;
    int m_nNumZRanges = 0;
};

/// Numbers for the queries: the last bytes of the input as floats.
class CNumbers
{
public:
    CNumbers(const std::uint8_t* pBytes, std::size_t nSize)
    {
        const std::size_t nTake = std::min(nSize, sizeof m_af);
        if (nTake > 0)
            std::memcpy(m_af, pBytes + nSize - nTake, nTake);
    }

    double Get(int i) const { return static_cast<double>(m_af[i]); }

private:
    float m_af[8] = {};
};

/// @return the number of points that a query delivers.
template <class Query>
long long CountOf(Query query)
{
    CFuzzHost host;
    query(&host);
    Check(host.m_nNumColored <= host.m_nNumPnts, "points are read");
    return host.m_nNumPnts;
}

/// Reads all of a cloud's arrays.
inline void AskArrays(const CPntCld& cld)
{
    const CPntArrays arrays = GetPntArrays(cld);
    Check(arrays.pPnts != nullptr || arrays.nNumPnts == 0, "points lie in an array");
    int nNumLive = 0;
    unsigned nSum = 0;
    for (int i = 0; i < arrays.nNumPnts; ++i)
    {
        nNumLive += ((arrays.pDelBits[i / 8] >> (i % 8)) & 1) == 0 ? 1 : 0;
        nSum += arrays.pSelBits[i / 8];
    }
    for (std::int64_t i = 0; i < std::int64_t{arrays.nNumPnts} * arrays.nStride; ++i)
        nSum += i % 16 == 15 && arrays.bColor ? 0U : arrays.pPnts[i]; // a byte without meaning
    Check(nNumLive == cld.GetNumPnts() && nSum < 0xFFFFFFFFU, "the arrays hold the points that are counted");
}

/// Asks for single points: whatever the tree of a damaged file says, they are points of the cloud.
inline void AskForPnts(const CPntCld& cld, const CNumbers& numbers,
                       const std::vector<zor::geom::PLANE_3D>& vecPlanes)
{
    const int nNumSlots = GetPntArrays(cld).nNumPnts;
    const auto isIndex = [=](int n) { return n >= -1 && n < nNumSlots; };
    const zor::geom::PNT_3D place(numbers.Get(1), numbers.Get(2), numbers.Get(3));
    const zor::geom::PNT_3D direction(numbers.Get(4), numbers.Get(5), numbers.Get(6));
    Check(isIndex(PickPnt(cld, place, direction, numbers.Get(7), vecPlanes)), "PickPnt");
    constexpr double c_dNoLimit = std::numeric_limits<double>::infinity();
    for (const double dMax : {numbers.Get(0), c_dNoLimit})
    {
        Check(isIndex(FindNearestPnt(cld, place, dMax)), "FindNearestPnt");
        Check(isIndex(FindNearestPnt2D(cld, zor::geom::PNT_2D(place.x, place.y), dMax)), "FindNearestPnt2D");
    }
    CLodRuns runs;
    for (const int nLevel : {0, 1, 5})
        if (FindLodRuns(cld, numbers.Get(0), nLevel, 0, nLevel > 0 ? 1 : 0, 0, runs))
            for (const CPntRun& run : runs.vecRuns)
                Check(run.nCount > 0 && run.nFirst >= 0 && run.nFirst <= nNumSlots - run.nCount,
                      "FindLodRuns");
    CRootCube root{};
    CLevelCube cube{};
    Check(!GetRootCube(cld, root) || GetLevelCube(root, 31, 1, 1 << 30, 77, cube),
          "there is a cube of each level");
}

/// Asks for the points in a triangle and for those outside.
///
/// @param nFound  points that the tree finds; without a tree, all.
inline void AskPolygons(const CPntCld& cld, int nFound, const CNumbers& numbers)
{
    const std::vector<zor::geom::TMultiPartPolygon> vecPolygons = {{{{numbers.Get(0), numbers.Get(1)},
                                                                     {numbers.Get(2), numbers.Get(3)},
                                                                     {numbers.Get(4), numbers.Get(5)}},
                                                                    {}}};
    const auto count = [&](bool bOutside)
    { return CountOf([&](CFuzzHost* pHost) { FindPntsInPolygons(cld, pHost, vecPolygons, bOutside, 9); }); };
    Check(count(false) + count(true) == nFound, "a point is inside a polygon or outside");
}

/// A host of indices.
class CFuzzIndices final : public IPntIndexListener
{
public:
    void OnIndices(int nNumPnts, const std::int32_t* pIndices) override
    {
        for (int i = 0; i < nNumPnts; ++i)
            m_nIndexSum += pIndices[i];
        m_nNumPnts += nNumPnts;
    }

    long long m_nNumPnts = 0;
    long long m_nIndexSum = 0;
};

/// Indices alone are those of the records.
inline void AskIndices(const CPntCld& cld, double dLod, const std::vector<zor::geom::PLANE_3D>& vecPlanes)
{
    const auto check = [](const CFuzzHost& host, const CFuzzIndices& indices)
    {
        Check(host.m_nNumPnts == indices.m_nNumPnts && host.m_nIndexSum == indices.m_nIndexSum,
              "indices are those of the records");
    };
    CFuzzHost all;
    CFuzzIndices allIndices;
    cld.GetPnts(&all, 64);
    FindIndices(cld, &allIndices, 7);
    check(all, allIndices);
    CFuzzHost lod;
    CFuzzIndices lodIndices;
    cld.GetPnts_Lod(&lod, dLod, 64);
    FindIndices_Lod(cld, &lodIndices, dLod, 7);
    check(lod, lodIndices);
    CFuzzHost clip;
    CFuzzIndices clipIndices;
    cld.GetPnts_Clip(&clip, vecPlanes, 64);
    cld.GetPnts_LodClip(&clip, dLod, vecPlanes, 64);
    FindIndices_Clip(cld, &clipIndices, vecPlanes, 7);
    FindIndices_LodClip(cld, &clipIndices, dLod, vecPlanes, 7);
    check(clip, clipIndices);
}

/// Runs every query.
///
/// @param nInTree  points that the tree finds; 0 without a tree.
inline void AskCloud(const CPntCld& cld, int nInTree, const CNumbers& numbers)
{
    const int nNumPnts = cld.GetNumPnts();
    const double dLod = numbers.Get(0);
    const std::vector<zor::geom::PLANE_3D> vecPlanes = {
        {numbers.Get(1), numbers.Get(2), numbers.Get(3), numbers.Get(4)},
        {0.0, 0.0, 1.0, numbers.Get(5)},
    };
    Check(CountOf([&](CFuzzHost* pHost) { cld.GetPnts(pHost); }) == nNumPnts, "GetPnts delivers every point");
    Check(CountOf([&](CFuzzHost* pHost) { cld.GetPnts(pHost, 7); }) == nNumPnts, "whatever the batch");
    Check(CountOf([&](CFuzzHost* pHost) { cld.GetPnts_Lod(pHost, dLod); }) <= nInTree, "GetPnts_Lod thins");
    Check(CountOf([&](CFuzzHost* pHost) { cld.GetPnts_Lod(pHost, 0.0, 3); }) == nInTree,
          "not without spacing");
    Check(CountOf([&](CFuzzHost* pHost) { cld.GetPnts_Clip(pHost, {}); }) == nInTree,
          "no planes clip nothing");
    const long long nClipped = CountOf([&](CFuzzHost* pHost) { cld.GetPnts_Clip(pHost, vecPlanes, 5); });
    Check(nClipped <= nInTree, "GetPnts_Clip clips");
    Check(CountOf([&](CFuzzHost* pHost) { cld.GetPnts_LodClip(pHost, 0.0, vecPlanes, 4); }) == nClipped,
          "GetPnts_LodClip without spacing clips");
    Check(CountOf([&](CFuzzHost* pHost) { cld.GetPnts_LodClip(pHost, dLod, vecPlanes, 4096); }) <= nInTree,
          "GetPnts_LodClip delivers points once");
    AskIndices(cld, dLod, vecPlanes);
    AskArrays(cld);
    AskForPnts(cld, numbers, vecPlanes);
    zor::geom::RECT_3D rect;
    AskPolygons(cld, cld.GetBdry(rect) ? nInTree : nNumPnts, numbers);
    for (int i = 0; i < nNumPnts; i += 1 + nNumPnts / 50)
    {
        zor::geom::PNT_3D pnt;
        cld.GetPnt(i, pnt);
        unsigned char r = 0;
        Check(cld.GetPntColor(i, r, r, r) == cld.IsWithColor(), "colours are those of the cloud");
    }
}

/// @return what is left of the cloud after every third point was selected and deleted.
inline int DeleteSome(CPntCld& cld)
{
    const int nNumPnts = cld.GetNumPnts();
    int nNumSel = 0;
    for (int i = 0; i < nNumPnts; i += 3, ++nNumSel)
        cld.SelPnt(i, false);
    cld.DelSelPnts();
    Check(cld.GetNumPnts() == nNumPnts - nNumSel, "DelSelPnts removes what is selected");
    return cld.GetNumPnts();
}

/// What was stored point by point is a number, whatever came.
inline void CheckNumbers(const CPntCld& cld)
{
    const int nNumPnts = cld.GetNumPnts();
    for (int i = 0; i < nNumPnts; i += 1 + nNumPnts / 50)
    {
        zor::geom::PNT_3D pnt;
        cld.GetPnt(i, pnt);
        Check(pnt.x == pnt.x && pnt.y == pnt.y && pnt.z == pnt.z, "a stored point is a number");
    }
}

#endif
