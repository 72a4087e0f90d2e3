#include <host/picture/DrawPaths.h>

#include <host/picture/CPicture.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace zorcld
{

namespace
{

constexpr CRgb c_line = {255.0F, 196.0F, 64.0F};
constexpr CRgb c_halo = {12.0F, 14.0F, 18.0F};

/// Cuts a segment down to what lies in a box from `low` to `high`. @return whether anything does.
bool ClipSegment(CPixel& a, CPixel& b, const CPixel& low, const CPixel& high)
{
    const CPixel way{b.x - a.x, b.y - a.y};
    double dFrom = 0.0;
    double dTo = 1.0;
    const std::array<std::pair<double, double>, 4> sides{
        {{-way.x, a.x - low.x}, {way.x, high.x - a.x}, {-way.y, a.y - low.y}, {way.y, high.y - a.y}}};
    for (const auto& [dStep, dRoom] : sides)
    {
        if (dStep == 0.0 && dRoom < 0.0)
            return false;
        if (dStep < 0.0)
            dFrom = std::max(dFrom, dRoom / dStep);
        else if (dStep > 0.0)
            dTo = std::min(dTo, dRoom / dStep);
    }
    if (!(dFrom <= dTo))
        return false;
    if (dTo < 1.0)
        b = {a.x + dTo * way.x, a.y + dTo * way.y};
    if (dFrom > 0.0)
        a = {a.x + dFrom * way.x, a.y + dFrom * way.y};
    return true;
}

} // namespace

// What lies far outside is cut off before it is drawn: the drawing library counts pixels in few bits.
void DrawPaths(CPicture& picture, const std::vector<std::vector<CPixel>>& vecPaths)
{
    const CPixel low{-1.0 * picture.GetWidth(), -1.0 * picture.GetHeight()};
    const CPixel high{2.0 * picture.GetWidth(), 2.0 * picture.GetHeight()};
    std::vector<std::vector<CPixel>> vecClipped;
    for (const std::vector<CPixel>& vecPath : vecPaths)
        for (std::size_t i = 1; i < vecPath.size(); ++i)
        {
            CPixel a = vecPath[i - 1];
            CPixel b = vecPath[i];
            if (!std::isfinite(a.x + a.y + b.x + b.y) || !ClipSegment(a, b, low, high))
                continue;
            const bool bGoesOn = i > 1 && !vecClipped.empty() && vecClipped.back().back().x == a.x &&
                                 vecClipped.back().back().y == a.y;
            if (!bGoesOn)
                vecClipped.push_back({a});
            vecClipped.back().push_back(b);
        }
    CPen pen = picture.MakePen();
    pen.Paths(vecClipped, 5.0 * pen.GetZoom(), c_halo, 0.6);
    pen.Paths(vecClipped, 2.2 * pen.GetZoom(), c_line);
}

} // namespace zorcld
