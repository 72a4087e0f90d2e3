#ifndef HOST_PICTURE_TICKS_H
#define HOST_PICTURE_TICKS_H

#include <string>
#include <vector>

namespace zorcld
{

/// A mark on a scale.
struct CTick
{
    double dValue;
    std::string sLabel;
};

/// Marks at the multiples of `dStep` from `dMin` to `dMax`, a thousand at most.
/// @param dStep  its decimals, four at most, are those of the labels. Not above 0, or not finite: no marks.
std::vector<CTick> MakeTicks(double dMin, double dMax, double dStep);

/// A number with so many decimals, or in powers of ten where it would take more than some ten digits.
std::string FormatTick(double dValue, int nDecimals);

/// The largest of 1, 2, 5, 10, 20, 50... and of their tenths that is at most `d`, which is above 0; 0 of 0.
double RoundDown(double d);

} // namespace zorcld

#endif
