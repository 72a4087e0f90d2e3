#include <io/native/CNativeTreeReader.h>

#include <io/native/NativeRecord.h>
#include <octree/MaxDepth.h>

#include <cstring>
#include <new>

CNativeTreeReader::CNativeTreeReader(ifpstream& stream, std::int32_t nNumPnts)
    : m_stream(stream), m_nNumPnts(static_cast<std::uint64_t>(nNumPnts)),
      m_pBlock(new unsigned char[c_nNativeBlock]), m_pPos(m_pBlock.get()), m_pBlockEnd(m_pBlock.get())
{
}

std::shared_ptr<COcTreeIndex> CNativeTreeReader::Read()
{
    auto pTree = std::make_shared<COcTreeIndex>();
    ReadHeader(*pTree);
    COcTreeNode* const pRoot = new (pTree->m_arena.Alloc(sizeof(COcTreeNode))) COcTreeNode;
    ReadNode(*pRoot, 0, pTree->m_arena);
    if (pRoot->m_ucExist != 0)
        pTree->m_pRoot = pRoot;
    pTree->m_bTiled = m_bTiled && m_nEnd == m_nNumPnts;
    return pTree;
}

void CNativeTreeReader::ReadHeader(COcTreeIndex& tree)
{
    for (std::int32_t* const pField : {&tree.m_nCentreX, &tree.m_nCentreY, &tree.m_nCentreZ, &tree.m_nEdge,
                                       &tree.m_nExtentX, &tree.m_nExtentY, &tree.m_nExtentZ})
        *pField = m_stream.ReadNumber<std::int32_t>();
}

// L8: the recursion is bounded, since the tree ends at a node that would lie below c_nMaxDepth, where a build
// has leaves only, and every call takes bytes from the file.
void CNativeTreeReader::ReadNode(COcTreeNode& node, int nDepth, COcTreeArena& arena)
{
    const unsigned char* const pMasks = nDepth > c_nMaxDepth ? nullptr : Take(c_nNativeNodeSize);
    if (pMasks == nullptr)
    {
        m_bEnded = true;
        return;
    }
    unsigned nToCome = pMasks[0];
    node.m_ucLeaf = pMasks[1];
    node.m_pChildren = arena.Alloc(COcTreeChildren::GetBlockSize(pMasks[0], node.m_ucLeaf));
    unsigned nExist = 0;
    unsigned char* pRecord = node.m_pChildren;
    for (; nToCome != 0 && !m_bEnded; nToCome &= nToCome - 1U)
    {
        // Invariant: pRecord is where the record of the next child goes; a child that is dropped sets no bit
        // in nExist and leaves its room to the next.
        const unsigned nBit = nToCome & (0U - nToCome);
        unsigned char* pNext = pRecord;
        if ((node.m_ucLeaf & nBit) != 0)
            pNext = ReadLeaf(pRecord);
        else
        {
            COcTreeNode* const pChild = new (pRecord) COcTreeNode;
            ReadNode(*pChild, nDepth + 1, arena);
            if (pChild->m_ucExist != 0)
                pNext = pRecord + c_nNodeSize;
        }
        nExist |= pNext == pRecord ? 0U : nBit;
        pRecord = pNext;
    }
    node.m_ucExist = static_cast<std::uint8_t>(nExist);
}

/// Reads a leaf. @return where the next record goes: `pRecord` when the leaf is dropped.
inline unsigned char* CNativeTreeReader::ReadLeaf(unsigned char* pRecord)
{
    const unsigned char* const p = Take(c_nNativeLeafSize);
    if (p == nullptr)
        return pRecord;
    const std::uint32_t nCount = LittleEndian::Get<std::uint32_t>(p);
    const std::uint32_t nFirst = LittleEndian::Get<std::uint32_t>(p + 4);
    if (!IsNewRun(nCount, nFirst))
        return pRecord;
    m_bTiled = m_bTiled && nFirst == m_nEnd;
    m_nEnd = std::uint64_t{nFirst} + nCount;
    return COcTreeChildren::PutLeaf(pRecord, static_cast<std::int32_t>(nCount),
                                    static_cast<std::int32_t>(nFirst));
}

/// Does the run lie inside the array and behind all runs before it? In a tree that was built it does, L1.
/// Otherwise a query could find points twice, as often as the file has leaves: its time would have no bound
/// in the number of points.
inline bool CNativeTreeReader::IsNewRun(std::uint32_t nCount, std::uint32_t nFirst) const noexcept
{
    return nCount > 0 && nFirst >= m_nEnd && std::uint64_t{nFirst} + nCount <= m_nNumPnts;
}

/// @return the next bytes of the file, valid until the next call; null when the file does not hold so many,
///         and the tree has then ended.
inline const unsigned char* CNativeTreeReader::Take(std::size_t nNumBytes)
{
    if (static_cast<std::size_t>(m_pBlockEnd - m_pPos) < nNumBytes && !Fill(nNumBytes))
        return nullptr;
    const unsigned char* const p = m_pPos;
    m_pPos += nNumBytes;
    return p;
}

/// Moves what is left of the block to its front and reads more of the file behind it.
bool CNativeTreeReader::Fill(std::size_t nNumBytes)
{
    const std::size_t nNumLeft = static_cast<std::size_t>(m_pBlockEnd - m_pPos);
    std::memmove(m_pBlock.get(), m_pPos, nNumLeft);
    const std::size_t nNumRead = m_stream.Read(m_pBlock.get() + nNumLeft, c_nNativeBlock - nNumLeft);
    m_pPos = m_pBlock.get();
    m_pBlockEnd = m_pPos + nNumLeft + nNumRead;
    m_bEnded = nNumLeft + nNumRead < nNumBytes;
    return !m_bEnded;
}
