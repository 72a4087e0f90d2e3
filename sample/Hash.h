#ifndef SAMPLE_HASH_H
#define SAMPLE_HASH_H

#include <cstdint>

namespace sample
{

/// Spreads a number over all 64 bits; each number has an image of its own.
inline std::uint64_t Mix(std::uint64_t n)
{
    n = (n ^ (n >> 30U)) * 0xbf58476d1ce4e5b9U;
    n = (n ^ (n >> 27U)) * 0x94d049bb133111ebU;
    return n ^ (n >> 31U);
}

/// @return a number that looks random, always the same for a cell of a lattice and a salt.
inline std::uint64_t Hash(std::int64_t i, std::int64_t k, std::uint64_t nSalt)
{
    return Mix(static_cast<std::uint64_t>(i) * 0x9e3779b97f4a7c15U +
               static_cast<std::uint64_t>(k) * 0xc2b2ae3d27d4eb4fU + nSalt * 0x165667b19e3779f9U);
}

} // namespace sample

#endif
