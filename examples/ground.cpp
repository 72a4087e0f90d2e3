// Reduces a cloud to its ground points, and keeps the whole one beside it.

#include "common/CFileColors.h"
#include "common/FillHills.h"

#include <zor4data/CPntCld.h>

#include <cstdio>

namespace
{

/// Thrown to stop. The cloud is then as it was.
struct CCancelled
{
};

class CGroundProgress final : public IPclProgressListener
{
public:
    explicit CGroundProgress(int nCancelAt) : m_nCancelAt(nCancelAt) {}

    void OnProgress(int nPos) override
    {
        if (nPos >= m_nCancelAt)
            throw CCancelled();
    }

private:
    int m_nCancelAt;
};

} // namespace

int main()
{
    CFileColors colors;
    CPntCld cld(&colors);
    if (!FillHills(cld))
        return 1;

    // [ground]
    CPntCld ground(cld); // shares everything with `cld` until the filter gives it points of its own
    try
    {
        CGroundProgress impatient(50);
        ground.Morph(&impatient);
    }
    catch (const CCancelled&)
    {
        std::printf("cancelled, still %d points\n", ground.GetNumPnts());
    }

    CGroundProgress patient(101);
    ground.Morph(&patient); // coordinates in metres: windows up to 20, heights from 0.5
    zor::geom::RECT_3D box;
    zor::geom::RECT_3D groundBox;
    cld.GetBdry(box);
    ground.GetBdry(groundBox);
    std::printf("%d points up to %.2f m, %d of the ground up to %.2f m\n", cld.GetNumPnts(), box.zmax,
                ground.GetNumPnts(), groundBox.zmax);
    // [/ground]
}
