#include <tests/figures/Figures.h>

#include <tests/support/CNoColors.h>
#include <tests/support/CRandom.h>
#include <zor4data/CPntCld.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace
{

constexpr int c_nNumOfACloud = 100;

/// The error of the points of one cloud: the first one at `dFirst`, the others up to a distance from it.
double FindLargest(CRandom& random, double dFirst, double dDistance)
{
    CNoColors colors;
    CPntCld cld(&colors);
    cld.OnReadType(PntCldType_Pnt);
    cld.Init(c_nNumOfACloud);
    double dLargest = 0.0;
    for (int i = 0; i < c_nNumOfACloud; ++i)
    {
        const double x = i == 0 ? dFirst : dFirst + (random.Unit() * 2.0 - 1.0) * dDistance;
        cld.AddPnt(x, 0.0, 0.0);
        zor::geom::PNT_3D pnt;
        cld.GetPnt(i, pnt);
        dLargest = std::max(dLargest, std::fabs(pnt.x - x));
    }
    return dLargest;
}

} // namespace

bool PrintAccuracy(std::int64_t nNum)
{
    bool bGood = true;
    std::printf("%14s %16s %16s %16s\n", "coordinates to", "from the first", "largest error", "bound");
    for (const double dSize : {1e3, 1e6, 1e7, 1e9})
        for (const double dDistance : {0.01, 1.0, 1000.0, 200000.0})
        {
            CRandom random(static_cast<std::uint64_t>(dDistance + dSize));
            double dLargest = 0.0;
            for (std::int64_t i = 0; i < nNum; i += c_nNumOfACloud)
                dLargest =
                    std::max(dLargest, FindLargest(random, (random.Unit() * 2.0 - 1.0) * dSize, dDistance));
            // A step, what double loses on the way, and half a step of double at the coordinate.
            const double dEnd = dSize + dDistance;
            const double dBound = 1e-4 + 1e-10 + (std::nextafter(dEnd, 2.0 * dEnd) - dEnd);
            bGood = bGood && dLargest < dBound;
            std::printf("%14g %16g %16.12f %16.12f\n", dSize, dDistance, dLargest, dBound);
        }
    return bGood;
}
