#ifndef OCTREE_CPNTBITS_H
#define OCTREE_CPNTBITS_H

#include <cstddef>
#include <cstdint>
#include <memory>

/// Bit sets with one bit a point: the bit of point i is bit i % 8, least significant first, of byte i / 8.
/// The sets are held by shared owners, so that copies of a cloud see each other's selection (L9).
namespace CPntBits
{

/// @return L7: bytes of a set of `nNumPnts` points.
/// KEPT: one byte more than needed when the count is a multiple of 8 (GetNumBytes_EighthAndOneMore_Kept).
inline std::size_t GetNumBytes(std::int32_t nNumPnts) noexcept
{
    return static_cast<std::size_t>(nNumPnts) / 8 + 1;
}

/// A set of `nNumPnts` clear bits. Throws std::bad_alloc.
std::shared_ptr<unsigned char[]> MakeClear(std::int32_t nNumPnts);

/// A set of the same bits as one of `nNumPnts`. Throws std::bad_alloc.
std::shared_ptr<unsigned char[]> MakeCopy(const unsigned char* pBits, std::int32_t nNumPnts);

/// REQUIRES: nIndex inside the set.
inline bool IsSet(const unsigned char* pBits, std::int32_t nIndex) noexcept
{
    return ((pBits[nIndex >> 3] >> (nIndex & 7)) & 1U) != 0;
}

/// REQUIRES: nIndex inside the set.
inline void Set(unsigned char* pBits, std::int32_t nIndex) noexcept
{
    pBits[nIndex >> 3] = static_cast<unsigned char>(pBits[nIndex >> 3] | (1U << (nIndex & 7)));
}

/// REQUIRES: nIndex inside the set.
inline void Clear(unsigned char* pBits, std::int32_t nIndex) noexcept
{
    pBits[nIndex >> 3] = static_cast<unsigned char>(pBits[nIndex >> 3] & ~(1U << (nIndex & 7)));
}

/// @return how many of the first `nNumPnts` bits are set. Reads every byte of them.
std::int32_t CountSet(const unsigned char* pBits, std::int32_t nNumPnts) noexcept;

} // namespace CPntBits

#endif
