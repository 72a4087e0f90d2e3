#ifndef FORMATS_LITTLEENDIAN_H
#define FORMATS_LITTLEENDIAN_H

#include <cstddef>
#include <cstring>
#include <type_traits>

/// Numbers as they stand in a file: little-endian, anywhere, without padding. Whole arrays of points are
/// moved as they lie in memory, so the processor must hold numbers in the same order.
namespace LittleEndian
{

static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "points are written as they lie in memory");

/// The number at `pBytes`.
template <class Number>
inline Number Get(const unsigned char* pBytes) noexcept
{
    static_assert(std::is_arithmetic_v<Number>);
    Number number{};
    std::memcpy(&number, pBytes, sizeof number);
    return number;
}

/// Writes `number` to `pBytes`. @return where the next one goes.
template <class Number>
inline unsigned char* Put(unsigned char* pBytes, Number number) noexcept
{
    static_assert(std::is_arithmetic_v<Number>);
    std::memcpy(pBytes, &number, sizeof number);
    return pBytes + sizeof number;
}

} // namespace LittleEndian

#endif
