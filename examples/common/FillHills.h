#ifndef EXAMPLES_FILLHILLS_H
#define EXAMPLES_FILLHILLS_H

#include <zor4data/CPntCld.h>

#include <cmath>

/// A made-up piece of land, 100 m by 100 m: a hill, and on it a house of 12 m by 8 m. The examples ask about
/// it.
struct CHills
{
    static constexpr int c_nPntsASide = 200;
    static constexpr double c_dSpacing = 0.5;
    static constexpr double c_dWest = 500000.0;
    static constexpr double c_dSouth = 4000000.0;

    /// x and y in metres from the south-west corner.
    static bool IsHouse(double x, double y) { return x >= 40.0 && x <= 52.0 && y >= 30.0 && y <= 38.0; }

    static double CalcHeight(double x, double y)
    {
        if (IsHouse(x, y))
            return 122.0;
        const double u = x / 100.0;
        const double v = y / 100.0;
        return std::round(100.0 * (100.0 + 240.0 * u * (1.0 - u) * v * (1.0 - v))) / 100.0;
    }
};

// [fill]
/// Fills a cloud that is empty, point by point.
inline bool FillHills(CPntCld& cld)
{
    cld.OnReadType(PntCldType_PntColor); // first of all: with colour, 16 bytes a point
    if (!cld.Init(CHills::c_nPntsASide * CHills::c_nPntsASide))
        return false; // it has points already: Clear it first

    for (int i = 0; i < CHills::c_nPntsASide; ++i)
    {
        for (int k = 0; k < CHills::c_nPntsASide; ++k)
        {
            const double x = CHills::c_dSpacing * k;
            const double y = CHills::c_dSpacing * i;
            const bool bHouse = CHills::IsHouse(x, y);
            cld.AddPnt(CHills::c_dWest + x, CHills::c_dSouth + y, CHills::CalcHeight(x, y), bHouse ? 200 : 90,
                       bHouse ? 60 : 140, bHouse ? 40 : 70);
        }
    }
    return cld.ComputeTree(); // until now the queries knew of no point
}
// [/fill]

#endif
