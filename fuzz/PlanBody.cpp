#include <fuzz/AskCloud.h>
#include <fuzz/CInput.h>
#include <fuzz/FuzzBody.h>
#include <zor4data/FindPntsInPolygons.h>

namespace
{

using zor::geom::PNT_2D;

class CNoProgress final : public IDlgProgress, public IPclProgressListener
{
public:
    void Start() override {}
    void Stop() override {}
    bool SetPos(int nPos) override
    {
        Check(nPos >= 0 && nPos <= 100, "CalcCnt tells percent");
        return true;
    }
    void OnProgress(int nPos) override
    {
        Check(nPos >= m_nPos && nPos <= 100, "Morph's progress never falls");
        m_nPos = nPos;
    }

    int m_nPos = 0;
};

class CSeen final : public IPntCldListener
{
public:
    explicit CSeen(const CPntCld& cld) : m_vecSeen(static_cast<std::size_t>(cld.GetNumPnts())) {}

    void OnPnts(int nNumPnts, CCldCadPnt* pPnts) override
    {
        for (int i = 0; i < nNumPnts; ++i)
            ++m_vecSeen.at(static_cast<std::size_t>(pPnts[i].m_nIndex));
        m_nNumPnts += nNumPnts;
    }

    int GetMax() const
    {
        return m_vecSeen.empty() ? 0 : *std::max_element(m_vecSeen.begin(), m_vecSeen.end());
    }

    std::vector<int> m_vecSeen; // how often each point came
    int m_nNumPnts = 0;
};

void Fill(CPntCld& cld, CInput& input, double dStep)
{
    cld.OnReadType(input.Get<std::uint8_t>() % 2U == 0 ? PntCldType_Pnt : PntCldType_PntColor);
    const int nNumPnts = input.Get<std::uint8_t>() * 2;
    cld.Init(nNumPnts);
    for (int i = 0; i < nNumPnts; ++i)
    {
        const double x = input.Get<std::int8_t>() * dStep;
        const double y = input.Get<std::int8_t>() * dStep;
        const double z = input.Get<std::int8_t>() * dStep;
        if (cld.IsWithColor())
            cld.AddPnt(x, y, z, 1, 2, 3);
        else
            cld.AddPnt(x, y, z);
    }
    cld.ComputeTree();
}

void AskContours(const CPntCld& cld, CInput& input, bool bAny, double dStep)
{
    const std::vector<PNT_2D> outer = input.Ring(bAny, dStep);
    std::vector<std::vector<PNT_2D>> holes(input.Get<std::uint8_t>() % 4U);
    for (std::vector<PNT_2D>& hole : holes)
        hole = input.Ring(bAny, dStep);

    CSeen whole(cld);
    cld.FindPnts2D_Cnts(&whole, outer, {});
    Check(whole.GetMax() <= 1, "FindPnts2D_Cnts delivers points once");
    CSeen cut(cld);
    cld.FindPnts2D_Cnts(&cut, outer, holes);
    Check(cut.GetMax() <= 1, "holes or not");
    CSeen inPolygons(cld);
    CSeen outside(cld);
    const std::vector<zor::geom::TMultiPartPolygon> vecPolygons{{outer, holes},
                                                                {holes.empty() ? outer : holes[0], {}}};
    FindPntsInPolygons(cld, &inPolygons, vecPolygons, false, 7);
    FindPntsInPolygons(cld, &outside, vecPolygons, true, 1000);
    Check(inPolygons.GetMax() <= 1 && outside.GetMax() <= 1, "FindPntsInPolygons delivers points once");
    for (std::size_t i = 0; i < inPolygons.m_vecSeen.size(); ++i)
        Check(inPolygons.m_vecSeen[i] + outside.m_vecSeen[i] == 1, "a point is inside or outside");
    CSeen inverted(cld);
    cld.FindPnts2D_IntCnt(&inverted, outer);
    Check(inverted.GetMax() <= 1, "FindPnts2D_IntCnt delivers points once");
}

void AskLine(const CPntCld& cld, CInput& input, bool bAny, double dStep)
{
    const PNT_2D p1(input.Coord(bAny, dStep), input.Coord(bAny, dStep));
    const PNT_2D p2(input.Coord(bAny, dStep), input.Coord(bAny, dStep));
    const double dist = input.Coord(bAny, dStep);
    CSeen line(cld);
    cld.FindPnts2D_NearLine(&line, p1, p2, dist, true, true);
    Check(line.GetMax() <= 3, "a point comes of the corridor and of each end");
    CSeen corridor(cld);
    cld.FindPnts2D_NearLine(&corridor, p1, p2, dist, false, false);
    Check(corridor.GetMax() <= 1, "the corridor delivers points once");
    Check(corridor.m_nNumPnts <= line.m_nNumPnts && line.m_nNumPnts <= corridor.m_nNumPnts + 2,
          "the ends add two points at most");

    CSeen rect(cld);
    cld.GetPnts2D(&rect, p1.x, p1.y, p2.x, p2.y);
    Check(cld.GetNumPnts2D(p1.x, p1.y, p2.x, p2.y) == rect.m_nNumPnts, "GetNumPnts2D counts");
}

void Outline(const CPntCld& cld, double d)
{
    CNoProgress progress;
    CSeen corners(cld);
    const bool bClosed = cld.CalcCnt(&progress, &corners, d);
    Check(bClosed == (corners.m_nNumPnts > 2), "a closed outline is delivered, nothing else");
    Check(corners.GetMax() <= 2, "only the start comes twice");
}

} // namespace

void FuzzBody(const std::uint8_t* pBytes, std::size_t nSize)
{
    CInput input(pBytes, nSize);
    const bool bAny = input.Get<std::uint8_t>() % 4U == 0;
    const std::uint8_t ucScale = input.Get<std::uint8_t>();
    const double dStep = ucScale % 8U == 0 ? 1684.3 : 0.25 * (1 + ucScale % 16U);
    CFuzzHost host;
    CPntCld cld(&host);
    Fill(cld, input, dStep);
    Check(cld.CalcMaxSearchDist() >= 1.0, "CalcMaxSearchDist is 1 at least");
    AskContours(cld, input, bAny, dStep);
    AskLine(cld, input, bAny, dStep);
    Outline(cld, input.Coord(bAny, dStep));

    const int nNumPnts = cld.GetNumPnts();
    CNoProgress progress;
    cld.Morph(&progress);
    Check(cld.GetNumPnts() <= nNumPnts, "Morph only removes");
    CFuzzHost all;
    cld.GetPnts_Clip(&all, {});
    Check(all.m_nNumPnts == cld.GetNumPnts(), "what is left is found");
}
