#include <io/native/WriteNative.h>

#include <io/native/NativeRecord.h>
#include <io/native/ofpstream.h>
#include <octree/COcTreeIndex.h>

namespace
{

template <class T>
void WritePnts(ofpstream& stream, const T* pPnts, std::size_t nNumPnts)
{
    constexpr std::size_t c_nSize = CNativeRecord<T>::c_nSize;
    if constexpr (CNativeRecord<T>::c_bAsInMemory)
    {
        stream.Write(pPnts, nNumPnts * c_nSize);
        return;
    }
    unsigned char* p = stream.GetPos();
    for (std::size_t i = 0; i < nNumPnts; ++i, p = stream.MakeRoom(p + c_nSize))
        std::memcpy(p, pPnts + i, c_nSize);
    stream.SetPos(p);
}

/// Writes the node and all below it, depth first.
///
/// @param p  the position of the stream, with room for a node and its leaves.
/// @return the new position, with as much room.
unsigned char* WriteNode(ofpstream& stream, unsigned char* p, const COcTreeNode& node)
{
    p = LittleEndian::Put(LittleEndian::Put(p, node.m_ucExist), node.m_ucLeaf);
    if (COcTreeChildren::HasOnlyLeaves(node))
    {
        // Leaves stand in the file as in memory. A copy of one fixed size is faster than a copy of the size
        // they have.
        std::memcpy(p, node.m_pChildren, COcTreeArena::c_nReadable);
        return stream.MakeRoom(p + COcTreeChildren::GetBlockSize(node.m_ucExist, node.m_ucLeaf));
    }
    for (const COcTreeChild child : node.GetChildren())
    {
        if (!child.IsLeaf())
        {
            p = WriteNode(stream, stream.MakeRoom(p), child.GetNode());
            continue;
        }
        const COcTreeLeaf& leaf = child.GetLeaf();
        p = LittleEndian::Put(LittleEndian::Put(p, leaf.m_nCount), leaf.m_nFirst);
    }
    return stream.MakeRoom(p);
}

static_assert(ofpstream::c_nMaxRoom >= c_nNativeNodeSize + 8 * c_nNativeLeafSize);

void WriteTree(ofpstream& stream, const COcTreeIndex& tree)
{
    for (const std::int32_t n : {tree.m_nCentreX, tree.m_nCentreY, tree.m_nCentreZ, tree.m_nEdge,
                                 tree.m_nExtentX, tree.m_nExtentY, tree.m_nExtentZ})
        stream.WriteNumber(n);
    const COcTreeNode root = tree.m_pRoot == nullptr ? COcTreeNode() : *tree.m_pRoot;
    stream.SetPos(WriteNode(stream, stream.GetPos(), root));
}

} // namespace

template <class T>
void WriteNative(ofpstream& stream, const COcTreeData<T>& store)
{
    for (const float f : {store.m_fOrgX, store.m_fOrgY, store.m_fOrgZ})
        stream.WriteNumber(f);
    stream.WriteNumber(store.m_nNumPnts);
    WritePnts(stream, store.m_pPnts.get(), static_cast<std::size_t>(store.m_nNumPnts));
    WriteTree(stream, *store.m_pTree);
}

template void WriteNative(ofpstream& stream, const COcTreeData<CTruncPnt>& store);
template void WriteNative(ofpstream& stream, const COcTreeData<CTruncPnt_Color>& store);
