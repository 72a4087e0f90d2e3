#include <zor4data/CPntArrays.h>

#include <cloud/CCldStores.h>

namespace
{

/// What a view holds on to, L9: the arrays, not the store, so that a compaction of the cloud lets the old
/// ones go as soon as their last view does.
template <class T>
struct COwnedArrays
{
    std::shared_ptr<const T[]> pPnts;
    std::shared_ptr<const unsigned char[]> pSelBits;
    std::shared_ptr<const unsigned char[]> pDelBits;
};

template <class T>
CPntArrays GetArrays(const COcTreeData<T>& store, bool bColor)
{
    CPntArrays arrays;
    arrays.nStride = static_cast<int>(sizeof(T));
    arrays.bColor = bColor;
    if (store.m_pPnts == nullptr)
        return arrays;
    const auto pOwned = std::make_shared<const COwnedArrays<T>>(
        COwnedArrays<T>{store.m_pPnts, store.m_pSelBits, store.m_pDelBits});
    arrays.pOwner = pOwned;
    arrays.pPnts = static_cast<const unsigned char*>(static_cast<const void*>(pOwned->pPnts.get()));
    arrays.nNumPnts = store.m_nNumPnts;
    arrays.fOrgX = store.m_fOrgX;
    arrays.fOrgY = store.m_fOrgY;
    arrays.fOrgZ = store.m_fOrgZ;
    arrays.pSelBits = pOwned->pSelBits.get();
    arrays.pDelBits = pOwned->pDelBits.get();
    return arrays;
}

} // namespace

CPntArrays GetPntArrays(const CPntCld& cld)
{
    return CCldStores::Ask(cld, CPntArrays{},
                           [&](const auto& store) { return GetArrays(store, cld.IsWithColor()); });
}
