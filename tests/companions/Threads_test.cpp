// Several threads ask one cloud at once: every query and companion gives each of them what it gives one
// alone. Under the thread sanitizer it also shows that nothing is written where others read.

#include <tests/support/CPntTrait.h>
#include <tests/support/CRandom.h>
#include <zor4data/CPntArrays.h>
#include <zor4data/CPntCld.h>
#include <zor4data/CRootCube.h>
#include <zor4data/CalcCntWithin.h>
#include <zor4data/FindGround.h>
#include <zor4data/FindIndices.h>
#include <zor4data/FindLodRuns.h>
#include <zor4data/FindPntsInPolygons.h>
#include <zor4data/IPntIndexListener.h>
#include <zor4data/PickPnt.h>

#include <cmath>
#include <functional>
#include <string>
#include <thread>

namespace
{

using zor::geom::PLANE_3D;
using zor::geom::PNT_2D;
using zor::geom::PNT_3D;
using zor::geom::RECT_3D;

constexpr int c_nNumThreads = 4;
constexpr int c_nNumPnts = 6000;
constexpr int c_nSide = 60; // coordinate units

/// Holds nothing, so that any number of threads may ask it: a host whose listener holds something guards it.
class CColors final : public ICldColorListener
{
public:
    void GetColor(double z, float& r, float&, float&) override { r = static_cast<float>(z); }
    void SetZRange(double, double) override {}
};

class CNoProgress final : public IDlgProgress
{
public:
    void Start() override {}
    void Stop() override {}
    bool SetPos(int) override { return true; }
};

/// Adds up what is delivered, the order included.
class CSum final : public IPntCldListener
{
public:
    void OnPnts(int nNumPnts, CCldCadPnt* pPnts) override
    {
        for (int i = 0; i < nNumPnts; ++i)
            m_dSum = std::fmod(
                m_dSum * 3.0 + pPnts[i].m_nIndex + pPnts[i].m_pnt.x + (pPnts[i].m_bSel ? 0.5 : 0.0), 1e9);
        m_nNumPnts += nNumPnts;
    }

    double Get() const { return m_dSum + m_nNumPnts; }

private:
    double m_dSum = 0.0;
    int m_nNumPnts = 0;
};

class CIndexSum final : public IPntIndexListener
{
public:
    void OnIndices(int nNumPnts, const std::int32_t* pIndices) override
    {
        for (int i = 0; i < nNumPnts; ++i)
            m_dSum = std::fmod(m_dSum * 3.0 + pIndices[i], 1e9);
    }

    double m_dSum = 0.0;
};

/// One question: its name, and its answer as a number.
struct CQuestion
{
    std::string sName;
    std::function<double(const CPntCld&)> ask;
};

/// A question whose answer is delivered.
CQuestion Delivered(const std::string& sName,
                    const std::function<void(const CPntCld&, IPntCldListener*)>& query)
{
    return {sName, [query](const CPntCld& cld)
            {
                CSum sum;
                query(cld, &sum);
                return sum.Get();
            }};
}

std::vector<PNT_2D> MakeRing(double dRadius)
{
    std::vector<PNT_2D> ring;
    for (int i = 0; i < 30; ++i)
        ring.emplace_back(c_nSide / 2.0 + dRadius * std::cos(i * 0.2),
                          c_nSide / 2.0 + dRadius * std::sin(i * 0.2));
    return ring;
}

void AddQueries(std::vector<CQuestion>& vecQuestions)
{
    const std::vector<PLANE_3D> planes{PLANE_3D(1.0, 0.5, 0.0, -50.0), PLANE_3D(0.0, 0.0, 1.0, -4.0)};
    vecQuestions.push_back(
        Delivered("GetPnts", [](const CPntCld& cld, IPntCldListener* p) { cld.GetPnts(p, 64); }));
    vecQuestions.push_back(Delivered("GetPnts_Lod", [](const CPntCld& cld, IPntCldListener* p)
                                     { cld.GetPnts_Lod(p, 3.0, 64); }));
    vecQuestions.push_back(Delivered("GetPnts_Clip", [planes](const CPntCld& cld, IPntCldListener* p)
                                     { cld.GetPnts_Clip(p, planes, 64); }));
    vecQuestions.push_back(Delivered("GetPnts_LodClip", [planes](const CPntCld& cld, IPntCldListener* p)
                                     { cld.GetPnts_LodClip(p, 3.0, planes, 64); }));
    vecQuestions.push_back(Delivered("GetPnts2D", [](const CPntCld& cld, IPntCldListener* p)
                                     { cld.GetPnts2D(p, 10.0, 20.0, 30.0, 50.0); }));
    vecQuestions.push_back(
        {"GetNumPnts2D", [](const CPntCld& cld) { return cld.GetNumPnts2D(10.0, 20.0, 30.0, 50.0); }});
    vecQuestions.push_back(
        Delivered("FindPnts2D_NearLine", [](const CPntCld& cld, IPntCldListener* p)
                  { cld.FindPnts2D_NearLine(p, PNT_2D(5.0, 5.0), PNT_2D(55.0, 40.0), 2.0, true, true); }));
    vecQuestions.push_back(Delivered("FindPnts2D_IntCnt", [](const CPntCld& cld, IPntCldListener* p)
                                     { cld.FindPnts2D_IntCnt(p, MakeRing(20.0)); }));
    vecQuestions.push_back(Delivered("FindPnts2D_Cnts", [](const CPntCld& cld, IPntCldListener* p)
                                     { cld.FindPnts2D_Cnts(p, MakeRing(20.0), {MakeRing(5.0)}); }));
    for (const bool bOutside : {false, true})
        vecQuestions.push_back(
            Delivered("FindPntsInPolygons",
                      [bOutside](const CPntCld& cld, IPntCldListener* p) {
                          FindPntsInPolygons(cld, p, {{MakeRing(20.0), {MakeRing(5.0)}}}, bOutside, 64);
                      }));
    vecQuestions.push_back({"CalcMaxSearchDist", [](const CPntCld& cld) { return cld.CalcMaxSearchDist(); }});
    vecQuestions.push_back(Delivered("CalcCnt",
                                     [](const CPntCld& cld, IPntCldListener* p)
                                     {
                                         CNoProgress progress;
                                         EXPECT_TRUE(cld.CalcCnt(&progress, p, 4.0));
                                     }));
}

double AskFields(const CPntCld& cld)
{
    PNT_3D pnt;
    cld.GetPnt(17, pnt);
    RECT_3D rect;
    cld.GetBdry(rect);
    unsigned char r = 0;
    unsigned char g = 0;
    unsigned char b = 0;
    cld.GetPntColor(17, r, g, b);
    return cld.GetNumPnts() + pnt.x + rect.xmax + r + (cld.IsWithColor() ? 1.0 : 0.0) + cld.GetVersion() +
           (cld.IsModified() ? 1.0 : 0.0) + static_cast<int>(cld.GetFileType()) +
           cld.GetFilePath().GetLength() + (cld.GetColorListener() != nullptr ? 1.0 : 0.0);
}

/// Copies share points and octree: each thread makes one, asks it, and lets it go.
double AskCopy(const CPntCld& cld)
{
    const CPntCld copy(cld);
    CSum sum;
    copy.GetPnts_Clip(&sum, {}, 64);
    return sum.Get();
}

double AskArrays(const CPntCld& cld)
{
    const CPntArrays arrays = GetPntArrays(cld);
    double dSum = arrays.nStride;
    for (int i = 0; i < arrays.nNumPnts; ++i)
        dSum += arrays.pPnts[static_cast<std::ptrdiff_t>(i) * arrays.nStride] + arrays.pSelBits[i / 8] +
                arrays.pDelBits[i / 8];
    return dSum;
}

double AskIndices(const CPntCld& cld)
{
    const std::vector<PLANE_3D> planes{PLANE_3D(1.0, 0.5, 0.0, -50.0)};
    CIndexSum sum;
    FindIndices(cld, &sum, 64);
    FindIndices_Lod(cld, &sum, 3.0, 64);
    FindIndices_Clip(cld, &sum, planes, 64);
    FindIndices_LodClip(cld, &sum, 3.0, planes, 64);
    FindIndices2D(cld, &sum, 10.0, 20.0, 30.0, 50.0, 64);
    FindIndices2D_NearLine(cld, &sum, PNT_2D(5.0, 5.0), PNT_2D(55.0, 40.0), 2.0, true, true, 64);
    FindIndicesInPolygons(cld, &sum, {{MakeRing(20.0), {MakeRing(5.0)}}}, false, 64);
    return sum.m_dSum;
}

double AskCubes(const CPntCld& cld)
{
    CRootCube root{};
    CLevelCube cube{};
    GetRootCube(cld, root);
    GetLevelCube(root, 3, 1, 2, 3, cube);
    return static_cast<double>(root.nEdge + cube.nX + cube.nMinY + cube.nEndZ);
}

double AskRuns(const CPntCld& cld)
{
    CLodRuns runs;
    double dSum = 0.0;
    for (std::int32_t i = 0; i < 4; ++i)
        if (FindLodRuns(cld, 2.0, 2, i, 3 - i, 0, runs))
            for (const CPntRun& run : runs.vecRuns)
                dSum += run.nFirst + 0.5 * run.nCount;
    return dSum + static_cast<double>(runs.nNumInCube);
}

double AskPicks(const CPntCld& cld)
{
    double dSum = 0.0;
    for (int i = 0; i < 40; ++i)
    {
        const PNT_3D from(i * 1.5, 30.0, 100.0);
        dSum += PickPnt(cld, from, PNT_3D(0.1, 0.0, -1.0), 0.01, {PLANE_3D(0.0, 0.0, 1.0, -3.0)});
        dSum += FindNearestPnt(cld, PNT_3D(i * 1.5, 10.0, 2.0), 20.0) * 3.0;
        dSum += FindNearestPnt2D(cld, PNT_2D(i * 1.5, 40.0), 20.0) * 5.0;
    }
    return dSum;
}

double AskOutline(const CPntCld& cld)
{
    CSum sum;
    const enumOutline eOutline = CalcCntWithin(cld, nullptr, &sum, 4.0, 100000);
    return sum.Get() + static_cast<int>(eOutline);
}

/// The filter of the ground, and that of a cloud in feet.
double AskGround(const CPntCld& cld)
{
    double dSum = 0.0;
    for (const int i : FindGround(cld, nullptr))
        dSum = std::fmod(dSum * 3.0 + i, 1e9);
    std::vector<int> vecGround;
    EXPECT_TRUE(FindGround_Scaled(cld, {0.3048, 0.3048}, nullptr, vecGround));
    for (const int i : vecGround)
        dSum = std::fmod(dSum * 3.0 + i, 1e9);
    return dSum;
}

std::vector<CQuestion> MakeQuestions()
{
    std::vector<CQuestion> vecQuestions;
    AddQueries(vecQuestions);
    vecQuestions.push_back({"fields", AskFields});
    vecQuestions.push_back({"copy", AskCopy});
    vecQuestions.push_back({"GetPntArrays", AskArrays});
    vecQuestions.push_back({"FindIndices", AskIndices});
    vecQuestions.push_back({"GetRootCube, GetLevelCube", AskCubes});
    vecQuestions.push_back({"FindLodRuns", AskRuns});
    vecQuestions.push_back({"PickPnt, FindNearestPnt, FindNearestPnt2D", AskPicks});
    vecQuestions.push_back({"CalcCntWithin", AskOutline});
    vecQuestions.push_back({"FindGround, FindGround_Scaled", AskGround});
    return vecQuestions;
}

template <class T>
class Threads : public ::testing::Test
{
public:
    Threads()
    {
        CRandom random(5);
        m_cld.OnReadType(CPntTrait<T>::c_eType);
        m_cld.Init(c_nNumPnts);
        for (int i = 0; i < c_nNumPnts; ++i)
            m_cld.AddPnt(random.Unit() * c_nSide, random.Unit() * c_nSide, random.Unit() * 5.0, 1, 2, 3);
        m_cld.OnReadEnd();
        for (int i = 0; i < m_cld.GetNumPnts(); i += 7)
            m_cld.SelPnt(i, false);
    }

    static std::vector<double> AskAll(const CPntCld& cld, const std::vector<CQuestion>& vecQuestions,
                                      std::size_t nFirst)
    {
        std::vector<double> vecAnswers(vecQuestions.size());
        for (std::size_t i = 0; i < vecQuestions.size(); ++i)
        {
            const std::size_t n = (nFirst + i) % vecQuestions.size();
            vecAnswers[n] = vecQuestions[n].ask(cld);
        }
        return vecAnswers;
    }

    const CPntCld& GetCld() const { return m_cld; }

private:
    CColors m_colors;
    CPntCld m_cld{&m_colors};
};
TYPED_TEST_SUITE(Threads, TBothPntTypes, CPntTypeName);

/// Asks on all threads at once. @param askOne  asks everything as thread `n`.
std::vector<std::vector<double>> AskOnThreads(const std::function<std::vector<double>(std::size_t)>& askOne)
{
    std::vector<std::vector<double>> vecAnswers(c_nNumThreads);
    std::vector<std::thread> vecThreads;
    for (std::size_t n = 0; n < c_nNumThreads; ++n)
        vecThreads.emplace_back([&vecAnswers, &askOne, n] { vecAnswers[n] = askOne(n); });
    for (std::thread& thread : vecThreads)
        thread.join();
    return vecAnswers;
}

// All threads ask the same at the same time, as far as they keep in step, and later each another thing.
TYPED_TEST(Threads, EveryQuestion_AnsweredAsToOneAlone)
{
    const CPntCld& cld = this->GetCld();
    const std::vector<CQuestion> vecQuestions = MakeQuestions();
    const std::vector<double> vecExpected = this->AskAll(cld, vecQuestions, 0);
    for (const std::size_t nApart : {0U, 5U})
    {
        const auto vecAnswers =
            AskOnThreads([&](std::size_t n) { return TestFixture::AskAll(cld, vecQuestions, n * nApart); });
        for (std::size_t n = 0; n < c_nNumThreads; ++n)
            for (std::size_t i = 0; i < vecExpected.size(); ++i)
                EXPECT_EQ(vecAnswers[n][i], vecExpected[i]) << vecQuestions[i].sName << " on thread " << n;
    }
}

} // namespace
