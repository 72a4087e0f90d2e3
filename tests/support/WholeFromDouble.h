#ifndef SUPPORT_WHOLEFROMDOUBLE_H
#define SUPPORT_WHOLEFROMDOUBLE_H

#include <boost/multiprecision/cpp_int.hpp>

#include <cmath>
#include <cstdint>

using TWhole = boost::multiprecision::cpp_int;

/// A finite number as a multiple of the smallest one, 2^-1074: sums, differences and products of such are
/// exact.
inline TWhole WholeFromDouble(double d)
{
    int nExponent = 0;
    const double dShare = std::frexp(d, &nExponent);
    const TWhole nMantissa = static_cast<std::int64_t>(std::ldexp(dShare, 53));
    const int nShift = nExponent - 53 + 1074;
    if (nShift >= 0)
        return nMantissa * (TWhole(1) << static_cast<unsigned>(nShift));
    return nMantissa / (TWhole(1) << static_cast<unsigned>(-nShift));
}

#endif
