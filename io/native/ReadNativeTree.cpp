#include <io/native/ReadNativeTree.h>

#include <formats/CNativeTreeWalk.h>
#include <io/native/ifpstream.h>

#include <new>

namespace
{

/// Puts the children that the walk finds into the arena.
class CTreeBuilder
{
public:
    explicit CTreeBuilder(COcTreeArena& arena) : m_arena(arena) {}

    /// The children of one node. Invariant: m_pRecord is where the record of the next child goes; a child
    /// that is dropped leaves its room to the next.
    class CChildren
    {
    public:
        CChildren(CTreeBuilder& builder, COcTreeNode& node, std::uint8_t ucExist, std::uint8_t ucLeaf)
            : m_pRecord(builder.m_arena.Alloc(COcTreeChildren::GetBlockSize(ucExist, ucLeaf)))
        {
            node.m_ucLeaf = ucLeaf;
            node.m_pChildren = m_pRecord;
        }

        void AddLeaf(std::int32_t nCount, std::int32_t nFirst) noexcept
        {
            m_pRecord = COcTreeChildren::PutLeaf(m_pRecord, nCount, nFirst);
        }

        COcTreeNode& OpenNode() noexcept { return *new (m_pRecord) COcTreeNode; }

        void KeepNode() noexcept { m_pRecord += c_nNodeSize; }

        void Close(COcTreeNode& node, std::uint8_t ucExist) const noexcept { node.m_ucExist = ucExist; }

    private:
        unsigned char* m_pRecord;
    };

private:
    COcTreeArena& m_arena;
};

void ReadTreeHeader(ifpstream& stream, COcTreeIndex& tree)
{
    for (std::int32_t* const pField : {&tree.m_nCentreX, &tree.m_nCentreY, &tree.m_nCentreZ, &tree.m_nEdge,
                                       &tree.m_nExtentX, &tree.m_nExtentY, &tree.m_nExtentZ})
        *pField = stream.ReadNumber<std::int32_t>();
}

} // namespace

std::shared_ptr<COcTreeIndex> ReadNativeTree(ifpstream& stream, std::int32_t nNumPnts)
{
    auto pTree = std::make_shared<COcTreeIndex>();
    ReadTreeHeader(stream, *pTree);
    COcTreeNode* const pRoot = new (pTree->m_arena.Alloc(sizeof(COcTreeNode))) COcTreeNode;
    CTreeBuilder builder(pTree->m_arena);
    CNativeTreeWalk<ifpstream, CTreeBuilder> walk(stream, builder, nNumPnts);
    if (walk.Walk(*pRoot))
        pTree->m_pRoot = pRoot;
    pTree->m_bTiled = walk.IsTiled();
    return pTree;
}
