#include <sample/Noise.h>

#include <sample/Hash.h>

#include <cmath>

namespace sample
{

double Noise(double x, double y, std::uint64_t nSalt)
{
    const double dX = std::floor(x);
    const double dY = std::floor(y);
    const auto i = static_cast<std::int64_t>(dX);
    const auto k = static_cast<std::int64_t>(dY);
    const auto corner = [&](std::int64_t di, std::int64_t dk)
    { return static_cast<double>(Hash(i + di, k + dk, nSalt) >> 11U) * (2.0 / 9007199254740992.0) - 1.0; };
    const auto smooth = [](double t) { return t * t * t * (t * (t * 6.0 - 15.0) + 10.0); };
    const double u = smooth(x - dX);
    const double v = smooth(y - dY);
    const double dLow = corner(0, 0) + u * (corner(1, 0) - corner(0, 0));
    const double dHigh = corner(0, 1) + u * (corner(1, 1) - corner(0, 1));
    return dLow + v * (dHigh - dLow);
}

} // namespace sample
