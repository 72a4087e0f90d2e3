#ifndef FORMATS_CFILEPATCH_H
#define FORMATS_CFILEPATCH_H

#include <formats/LittleEndian.h>

#include <array>
#include <cstdint>

/// A number that a file is to have at a place, whatever stands there.
struct CFilePatch
{
    /// @param nPos  where its first byte stands; bytes behind the end of the file mean nothing.
    template <class Number>
    CFilePatch(std::int64_t nPosOfFirst, Number number) : nPos(nPosOfFirst), nSize(sizeof number)
    {
        static_assert(sizeof number <= std::tuple_size_v<decltype(acBytes)>);
        LittleEndian::Put(acBytes.data(), number);
    }

    std::int64_t nPos;
    std::size_t nSize;
    std::array<unsigned char, 8> acBytes{};
};

#endif
