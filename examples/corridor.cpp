// Draws a profile: the points along a line, in the order of the line.

#include "common/CFileColors.h"
#include "common/FillHills.h"
#include "common/TPntListener.h"

#include <zor4data/CPntCld.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <vector>

namespace
{

struct CProfilePnt
{
    double dAlong; // metres from the start of the line
    double z;
};

} // namespace

int main()
{
    CFileColors colors;
    CPntCld cld(&colors);
    if (!FillHills(cld))
        return 1;

    // [ask]
    const zor::geom::PNT_2D start(CHills::c_dWest + 10.1, CHills::c_dSouth + 10.2);
    const zor::geom::PNT_2D end(CHills::c_dWest + 80.1, CHills::c_dSouth + 60.2);
    const double dLength = std::hypot(end.x - start.x, end.y - start.y);

    std::vector<CProfilePnt> profile;
    TPntListener listener(
        [&](const CCldCadPnt& pnt)
        {
            const double dAlong =
                ((pnt.m_pnt.x - start.x) * (end.x - start.x) + (pnt.m_pnt.y - start.y) * (end.y - start.y)) /
                dLength;
            profile.push_back({dAlong, pnt.m_pnt.z});
        });
    cld.FindPnts2D_NearLine(&listener, start, end, 0.4, false, false); // 0.4 m to either side
    std::sort(profile.begin(), profile.end(),
              [](const CProfilePnt& a, const CProfilePnt& b) { return a.dAlong < b.dAlong; });
    // [/ask]

    std::printf("%zu points along %.1f m\n", profile.size(), dLength);
    for (std::size_t i = 0; i < profile.size(); i += profile.size() / 8)
        std::printf("%5.1f m: %.2f m\n", profile[i].dAlong, profile[i].z);
}
