#include <octree/CPntBits.h>

#include <octree/ZeroedArray.h>

#include <cstring>

std::shared_ptr<unsigned char[]> CPntBits::MakeClear(std::int32_t nNumPnts)
{
    return MakeZeroedArray<unsigned char>(GetNumBytes(nNumPnts));
}

std::shared_ptr<unsigned char[]> CPntBits::MakeCopy(const unsigned char* pBits, std::int32_t nNumPnts)
{
    std::shared_ptr<unsigned char[]> pCopy = MakeClear(nNumPnts);
    std::memcpy(pCopy.get(), pBits, GetNumBytes(nNumPnts));
    return pCopy;
}

std::int32_t CPntBits::CountSet(const unsigned char* pBits, std::int32_t nNumPnts) noexcept
{
    std::int32_t nNumSet = 0;
    std::int32_t nIndex = 0;
    for (; nNumPnts - nIndex >= 64; nIndex += 64)
    {
        std::uint64_t nWord = 0;
        std::memcpy(&nWord, pBits + (nIndex >> 3), sizeof nWord);
        nNumSet += __builtin_popcountll(nWord);
    }
    for (; nIndex < nNumPnts; ++nIndex)
        nNumSet += IsSet(pBits, nIndex) ? 1 : 0;
    return nNumSet;
}
