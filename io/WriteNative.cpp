#include <io/WriteNative.h>

#include <io/NativeRecord.h>
#include <io/ofpstream.h>
#include <octree/COcTreeIndex.h>

#include <algorithm>

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
    std::array<unsigned char, c_nNativeBlock / c_nSize * c_nSize> acBlock;
    while (nNumPnts > 0)
    {
        const std::size_t nNum = std::min(nNumPnts, acBlock.size() / c_nSize);
        for (std::size_t i = 0; i < nNum; ++i)
            std::memcpy(acBlock.data() + i * c_nSize, pPnts + i, c_nSize);
        stream.Write(acBlock.data(), nNum * c_nSize);
        pPnts += nNum;
        nNumPnts -= nNum;
    }
}

/// Writes nodes through a block.
class CNodeWriter
{
public:
    explicit CNodeWriter(ofpstream& stream) : m_stream(stream) {}

    /// The node and all below it, depth first.
    void WriteNode(const COcTreeNode& node)
    {
        unsigned char* const p = GetRoom(c_nNativeNodeSize);
        p[0] = node.m_ucExist;
        p[1] = node.m_ucLeaf;
        for (const COcTreeChild child : node.GetChildren())
        {
            if (child.IsLeaf())
                WriteLeaf(child.GetLeaf());
            else
                WriteNode(child.GetNode());
        }
    }

    void Flush()
    {
        m_stream.Write(m_acBlock.data(), m_nUsed);
        m_nUsed = 0;
    }

private:
    void WriteLeaf(const COcTreeLeaf& leaf)
    {
        LittleEndian::Put(LittleEndian::Put(GetRoom(c_nNativeLeafSize), leaf.m_nCount), leaf.m_nFirst);
    }

    unsigned char* GetRoom(std::size_t nNumBytes)
    {
        if (m_nUsed + nNumBytes > m_acBlock.size())
            Flush();
        unsigned char* const p = m_acBlock.data() + m_nUsed;
        m_nUsed += nNumBytes;
        return p;
    }

    ofpstream& m_stream;
    std::size_t m_nUsed = 0;
    std::array<unsigned char, c_nNativeBlock> m_acBlock;
};

void WriteTree(ofpstream& stream, const COcTreeIndex& tree)
{
    for (const std::int32_t n : {tree.m_nCentreX, tree.m_nCentreY, tree.m_nCentreZ, tree.m_nEdge,
                                 tree.m_nExtentX, tree.m_nExtentY, tree.m_nExtentZ})
        stream.WriteNumber(n);
    CNodeWriter writer(stream);
    writer.WriteNode(tree.m_pRoot == nullptr ? COcTreeNode() : *tree.m_pRoot);
    writer.Flush();
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
