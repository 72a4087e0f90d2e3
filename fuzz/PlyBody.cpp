#include <fuzz/FuzzBody.h>
#include <tests/io/CMemFile.h>
#include <tests/io/CRecReadListener.h>
#include <tests/io/CSlowPlyReader.h>
#include <zor4data/CPntCld.h>

#include <io/ReadForeign.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace
{

/// Items up to which the calls are recorded and compared, and progress is asked for.
constexpr long long c_nMaxItems = 20000;

/// Points up to which a cloud is filled.
constexpr int c_nMaxPnts = 1000000;

void Check(bool bHolds, const char* sWhat)
{
    if (bHolds)
        return;
    std::fprintf(stderr, "does not hold: %s\n", sWhat);
    std::abort();
}

/// Remembers the largest announced count, and the number of points.
class CCountListener final : public IPntCldReadListener
{
public:
    void OnReadType(enumPntCldType) override {}
    void OnReadNumPnts(int nNumPnts) override { m_nMaxAnnounced = std::max(m_nMaxAnnounced, nNumPnts); }
    void OnReadPnt(double, double, double, unsigned char, unsigned char, unsigned char) override {}
    void OnReadPnt(double, double, double) override {}
    void OnReadEnd() override {}

    int m_nMaxAnnounced = 0;
};

/// A host: looks at every field of every delivered point.
class CHost final : public IPntCldListener, public ICldColorListener
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
    CHost host;
    query(&host);
    Check(host.m_nNumColored <= host.m_nNumPnts, "points are read");
    return host.m_nNumPnts;
}

void Ask(const CPntCld& cld, bool bWithTree, const CNumbers& numbers)
{
    const int nNumPnts = cld.GetNumPnts();
    const double dLod = numbers.Get(0);
    const std::vector<zor::geom::PLANE_3D> vecPlanes = {
        {numbers.Get(1), numbers.Get(2), numbers.Get(3), numbers.Get(4)},
        {0.0, 0.0, 1.0, numbers.Get(5)},
    };
    const int nInTree = bWithTree ? nNumPnts : 0;
    Check(CountOf([&](CHost* pHost) { cld.GetPnts(pHost); }) == nNumPnts, "GetPnts delivers every point");
    Check(CountOf([&](CHost* pHost) { cld.GetPnts(pHost, 7); }) == nNumPnts, "whatever the batch");
    Check(CountOf([&](CHost* pHost) { cld.GetPnts_Lod(pHost, dLod); }) <= nInTree, "GetPnts_Lod thins");
    Check(CountOf([&](CHost* pHost) { cld.GetPnts_Lod(pHost, 0.0, 3); }) == nInTree, "not without spacing");
    Check(CountOf([&](CHost* pHost) { cld.GetPnts_Clip(pHost, {}); }) == nInTree, "no planes clip nothing");
    const long long nClipped = CountOf([&](CHost* pHost) { cld.GetPnts_Clip(pHost, vecPlanes, 5); });
    Check(nClipped <= nInTree, "GetPnts_Clip clips");
    Check(CountOf([&](CHost* pHost) { cld.GetPnts_LodClip(pHost, 0.0, vecPlanes, 4); }) == nClipped,
          "GetPnts_LodClip without spacing clips");
    Check(CountOf([&](CHost* pHost) { cld.GetPnts_LodClip(pHost, dLod, vecPlanes, 4096); }) <= nInTree,
          "GetPnts_LodClip delivers points once");
    for (int i = 0; i < nNumPnts; i += 1 + nNumPnts / 50)
    {
        zor::geom::PNT_3D pnt;
        cld.GetPnt(i, pnt);
        unsigned char r = 0;
        Check(cld.GetPntColor(i, r, r, r) == cld.IsWithColor(), "colours are those of the cloud");
        Check(pnt.x == pnt.x && pnt.y == pnt.y && pnt.z == pnt.z, "a stored point is a number");
    }
}

void FillAndAsk(const char* sPath, const CNumbers& numbers)
{
    CHost host;
    CPntCld cld(&host);
    const bool bLoaded = cld.ReadFromFile(nullptr, PntCldFile_Ply, sPath);
    if (!bLoaded && cld.GetNumPnts() > c_nMaxItems)
        return; // slots that were announced only: nothing to learn from so many of them
    Ask(cld, bLoaded, numbers);
    const int nNumPnts = cld.GetNumPnts();
    int nNumSel = 0;
    for (int i = 0; i < nNumPnts; i += 3, ++nNumSel)
        cld.SelPnt(i, false);
    cld.DelSelPnts();
    Check(cld.GetNumPnts() == nNumPnts - nNumSel, "DelSelPnts removes what is selected");
    Ask(cld, bLoaded || nNumSel > 0, numbers);
}

/// The reader makes the calls that the rules, followed one by one, make.
void CompareWithRules(const char* sPath, const std::string& sBytes)
{
    CRecReadListener rec;
    const bool bResult = ReadForeign(rec, &rec, PntCldFile_Ply, sPath);
    CRecReadListener expected;
    const bool bExpected = CSlowPlyReader(expected, &expected, sBytes).Read();
    Check(bResult == bExpected, "result");
    Check(rec.m_vecCalls == expected.m_vecCalls, "calls");
}

} // namespace

void FuzzBody(const std::uint8_t* pBytes, std::size_t nSize)
{
    static CMemFile file;
    const std::string sBytes(pBytes, pBytes + nSize);
    file.Set(sBytes);

    CCountListener counter;
    const bool bResult = ReadForeign(counter, nullptr, PntCldFile_Ply, file.GetPath());
    Check(!bResult || nSize > 0, "an empty file is none");
    if (CSlowPlyReader(counter, nullptr, sBytes).CountItems() <= c_nMaxItems)
        CompareWithRules(file.GetPath(), sBytes);
    if (counter.m_nMaxAnnounced <= c_nMaxPnts)
        FillAndAsk(file.GetPath(), CNumbers(pBytes, nSize));
}
