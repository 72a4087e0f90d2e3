// Reads the points where they lie, without a copy.

#include "common/CFileColors.h"
#include "common/FillHills.h"

#include <zor4data/CPntArrays.h>
#include <zor4data/CPntCld.h>

#include <cstdint>
#include <cstdio>
#include <cstring>

namespace
{

// [walk]
/// Calls onPnt(x, y, z) for every live point, coordinate units.
template <class TOnPnt>
void ForEachLivePnt(const CPntArrays& arrays, TOnPnt onPnt)
{
    for (int i = 0; i < arrays.nNumPnts; ++i)
    {
        if ((arrays.pDelBits[i / 8] >> (i % 8) & 1) != 0)
            continue;
        std::int32_t offsets[3];
        std::memcpy(offsets,
                    arrays.pPnts + static_cast<std::size_t>(i) * static_cast<std::size_t>(arrays.nStride),
                    sizeof offsets);
        onPnt(offsets[0] / 10000.0 + static_cast<double>(arrays.fOrgX),
              offsets[1] / 10000.0 + static_cast<double>(arrays.fOrgY),
              offsets[2] / 10000.0 + static_cast<double>(arrays.fOrgZ));
    }
}
// [/walk]

double CalcMeanHeight(const CPntArrays& arrays)
{
    double dSum = 0.0;
    int n = 0;
    ForEachLivePnt(arrays,
                   [&](double, double, double z)
                   {
                       dSum += z;
                       ++n;
                   });
    return n == 0 ? 0.0 : dSum / n;
}

} // namespace

int main()
{
    CFileColors colors;
    CPntCld cld(&colors);
    if (!FillHills(cld))
        return 1;

    // [arrays]
    const CPntArrays arrays = GetPntArrays(cld);
    std::printf("%d records of %d bytes, mean height %.3f m\n", arrays.nNumPnts, arrays.nStride,
                CalcMeanHeight(arrays));

    cld.Clear(); // the cloud lets go of them; arrays.pOwner does not
    std::printf("%d points in the cloud, mean height of the arrays %.3f m\n", cld.GetNumPnts(),
                CalcMeanHeight(arrays));
    // [/arrays]
}
