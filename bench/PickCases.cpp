#include <bench/PickCases.h>

#include <tests/support/CRandom.h>

using zor::geom::PNT_3D;

std::vector<PNT_3D> MakePlaces(std::int64_t nNum, int nNumPlaces)
{
    const std::vector<PNT_3D>& vecPnts = GetCldPnts(nNum);
    CRandom random(1);
    std::vector<PNT_3D> vecPlaces;
    for (int i = 0; i < nNumPlaces; ++i)
    {
        const PNT_3D& pnt = random.Pick(vecPnts);
        const auto move = [&] { return (random.Unit() - 0.5) * 4.0; };
        const double x = pnt.x + move();
        const double y = pnt.y + move();
        vecPlaces.emplace_back(x, y, pnt.z + move());
    }
    return vecPlaces;
}

const std::vector<PNT_3D>& GetCldPnts(std::int64_t nNum)
{
    static std::vector<PNT_3D> vecPnts;
    static std::int64_t nMadeFor = -1;
    if (nMadeFor == nNum)
        return vecPnts;
    const CPntCld& cld = GetTerrainCld(nNum);
    vecPnts.assign(static_cast<std::size_t>(cld.GetNumPnts()), PNT_3D());
    for (std::size_t i = 0; i < vecPnts.size(); ++i)
        cld.GetPnt(static_cast<int>(i), vecPnts[i]);
    nMadeFor = nNum;
    return vecPnts;
}
