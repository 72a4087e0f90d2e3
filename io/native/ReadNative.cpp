#include <io/native/ReadNative.h>

#include <io/native/CNativeTreeReader.h>
#include <io/native/NativeRecord.h>
#include <io/native/ifpstream.h>
#include <octree/CPntBits.h>
#include <octree/ZeroedArray.h>

#include <algorithm>

namespace
{

/// Reads the number of points. A negative count means no points; of a file that ends before its last point,
/// the points count that it holds whole.
template <class T>
std::int32_t ReadNumPnts(ifpstream& stream)
{
    const std::int32_t nNumPnts = stream.ReadNumber<std::int32_t>();
    if (nNumPnts <= 0)
        return 0;
    const std::uint64_t nNumHeld = stream.GetNumLeft() / CNativeRecord<T>::c_nSize;
    if (nNumHeld >= static_cast<std::uint64_t>(nNumPnts))
        return nNumPnts;
    return static_cast<std::int32_t>(nNumHeld);
}

/// Reads the points into zeroed records, whose byte behind the colour so stays zero.
template <class T>
void ReadPnts(ifpstream& stream, T* pPnts, std::size_t nNumPnts)
{
    constexpr std::size_t c_nSize = CNativeRecord<T>::c_nSize;
    if constexpr (CNativeRecord<T>::c_bAsInMemory)
    {
        stream.Read(pPnts, nNumPnts * c_nSize);
        return;
    }
    std::array<unsigned char, c_nNativeBlock / c_nSize * c_nSize> acBlock;
    while (nNumPnts > 0)
    {
        const std::size_t nWanted = std::min(nNumPnts, acBlock.size() / c_nSize);
        const std::size_t nNum = stream.Read(acBlock.data(), nWanted * c_nSize) / c_nSize;
        for (std::size_t i = 0; i < nNum; ++i)
            std::memcpy(static_cast<void*>(pPnts + i), acBlock.data() + i * c_nSize, c_nSize);
        if (nNum < nWanted) // the file shrank meanwhile
            return;
        pPnts += nNum;
        nNumPnts -= nNum;
    }
}

} // namespace

template <class T>
bool ReadNative(ifpstream& stream, COcTreeData<T>& store)
{
    // KEPT: a store with a tree or an array is not overwritten, and nothing tells the host
    // (ReadFromFile_IntoAStoreBeingFilled_Kept, ReadFromFile_IntoAnEmptyStoreWithATree_Kept).
    if (store.m_pTree != nullptr || store.m_pPnts != nullptr)
        return false;
    const float fOrgX = stream.ReadNumber<float>();
    const float fOrgY = stream.ReadNumber<float>();
    const float fOrgZ = stream.ReadNumber<float>();
    const std::int32_t nNumPnts = ReadNumPnts<T>(stream);
    if (nNumPnts > 0)
    {
        auto pPnts = MakeZeroedArray<T>(static_cast<std::size_t>(nNumPnts));
        auto pSelBits = CPntBits::MakeClear(nNumPnts);
        auto pDelBits = CPntBits::MakeClear(nNumPnts);
        ReadPnts(stream, pPnts.get(), static_cast<std::size_t>(nNumPnts));
        store.m_pTree = CNativeTreeReader(stream, nNumPnts).Read();
        store.m_pPnts = std::move(pPnts);
        store.m_pSelBits = std::move(pSelBits);
        store.m_pDelBits = std::move(pDelBits);
        store.m_bHasDel = false;
        // KEPT: no slot counts as filled: the next point stored takes the first one
        // (AddPnt_AfterLoadingOverwritesTheFirst_Kept).
        store.m_nNumAdded = 0;
    }
    store.m_fOrgX = fOrgX;
    store.m_fOrgY = fOrgY;
    store.m_fOrgZ = fOrgZ;
    store.m_nNumPnts = nNumPnts;
    return nNumPnts > 0;
}

template bool ReadNative(ifpstream& stream, COcTreeData<CTruncPnt>& store);
template bool ReadNative(ifpstream& stream, COcTreeData<CTruncPnt_Color>& store);
