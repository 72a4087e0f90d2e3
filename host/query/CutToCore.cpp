#include <host/query/CutToCore.h>

#include <formats/Compact.h>
#include <host/output/CFailure.h>
#include <host/query/ParseNumbers.h>
#include <zor4data/CPntArrays.h>
#include <zor4data/KeepPnts.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace zorcld
{

zor::geom::RECT_2D ParseCore(const std::string& sCore)
{
    const std::vector<double> r = ParseNumbers(sCore, ',', 4, "--core");
    if (!(r[0] < r[2] && r[1] < r[3]))
        throw CUsageError("--core: a minimum is not below its maximum");
    return {r[0], r[1], r[2], r[3]};
}

std::vector<bool> ChooseInCore(const CPntCld& cloud, const zor::geom::RECT_2D& core)
{
    const CPntArrays arrays = GetPntArrays(cloud);
    const auto firstStep = [](double d, float fOrigin) { return std::ceil(CompactUnits(d, fOrigin)); };
    const double dXMin = firstStep(core.xmin, arrays.fOrgX);
    const double dXMax = firstStep(core.xmax, arrays.fOrgX);
    const double dYMin = firstStep(core.ymin, arrays.fOrgY);
    const double dYMax = firstStep(core.ymax, arrays.fOrgY);
    std::vector<bool> vecInside(static_cast<std::size_t>(arrays.nNumPnts));
    for (std::size_t i = 0; i < vecInside.size(); ++i)
    {
        std::array<std::int32_t, 2> anSteps{};
        std::memcpy(anSteps.data(), arrays.pPnts + i * static_cast<std::size_t>(arrays.nStride),
                    sizeof anSteps);
        const double x = anSteps[0];
        const double y = anSteps[1];
        vecInside[i] = x >= dXMin && x < dXMax && y >= dYMin && y < dYMax;
    }
    return vecInside;
}

void CutToCore(CPntCld& cloud, const zor::geom::RECT_2D& core)
{
    const std::vector<bool> vecInside = ChooseInCore(cloud, core);
    std::vector<int> vecCore;
    for (std::size_t i = 0; i < vecInside.size(); ++i)
        if (vecInside[i])
            vecCore.push_back(static_cast<int>(i));
    if (vecCore.size() < vecInside.size())
        KeepPnts(cloud, vecCore);
}

} // namespace zorcld
