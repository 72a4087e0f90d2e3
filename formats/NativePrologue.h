#ifndef FORMATS_NATIVEPROLOGUE_H
#define FORMATS_NATIVEPROLOGUE_H

#include <array>

/// The first bytes of every file that `ofpstream` writes: a mark, then the order of bytes.
constexpr std::array<unsigned char, 5> c_acPrologue{':', 1, 1, 0, 0};

#endif
