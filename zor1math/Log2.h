#ifndef ZOR1MATH_LOG2_H
#define ZOR1MATH_LOG2_H

#include <cmath>

namespace zor::math
{

/// Base-2 logarithm: exact for powers of two, -infinity for 0, not-a-number below 0.
inline double Log2(double d) noexcept
{
    return std::log2(d);
}

} // namespace zor::math

#endif
