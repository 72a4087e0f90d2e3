#include <io/native/ReadNative.h>

#include <io/native/NativeRecord.h>
#include <io/native/ReadNativeTree.h>
#include <io/native/ifpstream.h>
#include <octree/CPntBits.h>
#include <octree/ZeroedArray.h>

#include <algorithm>

namespace
{

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

CNativeHeader ReadNativeHeader(ifpstream& stream)
{
    std::array<unsigned char, c_nNativeHeaderSize> acBytes{};
    constexpr std::size_t c_nPrologue = c_acNativePrologue.size(); // the stream keeps it to itself
    const std::size_t nSize =
        c_nPrologue + stream.Read(acBytes.data() + c_nPrologue, acBytes.size() - c_nPrologue);
    CNativeHeader header = CNativeHeader::FromBytes(acBytes, nSize);
    header.bPrologue = !stream.IsForeign() && stream.IsNativeOrder();
    return header;
}

template <class T>
bool ReadNative(ifpstream& stream, const CNativeHeader& header, COcTreeData<T>& store)
{
    // KEPT: a store with a tree or an array is not overwritten, and nothing tells the host
    // (ReadFromFile_IntoAStoreBeingFilled_Kept, ReadFromFile_IntoAnEmptyStoreWithATree_Kept).
    if (store.m_pTree != nullptr || store.m_pPnts != nullptr)
        return false;
    const std::int32_t nNumPnts = header.CalcNumHeld(stream.GetNumLeft());
    if (nNumPnts > 0)
    {
        auto pPnts = MakeZeroedArray<T>(static_cast<std::size_t>(nNumPnts));
        auto pSelBits = CPntBits::MakeClear(nNumPnts);
        auto pDelBits = CPntBits::MakeClear(nNumPnts);
        ReadPnts(stream, pPnts.get(), static_cast<std::size_t>(nNumPnts));
        store.m_pTree = ReadNativeTree(stream, nNumPnts);
        store.m_pPnts = std::move(pPnts);
        store.m_pSelBits = std::move(pSelBits);
        store.m_pDelBits = std::move(pDelBits);
        store.m_bHasDel = false;
        // KEPT: no slot counts as filled: the next point stored takes the first one
        // (AddPnt_AfterLoadingOverwritesTheFirst_Kept).
        store.m_nNumAdded = 0;
    }
    store.m_fOrgX = header.afOrg[0];
    store.m_fOrgY = header.afOrg[1];
    store.m_fOrgZ = header.afOrg[2];
    store.m_nNumPnts = nNumPnts;
    return nNumPnts > 0;
}

template bool ReadNative(ifpstream& stream, const CNativeHeader& header, COcTreeData<CTruncPnt>& store);
template bool ReadNative(ifpstream& stream, const CNativeHeader& header, COcTreeData<CTruncPnt_Color>& store);
