#ifndef OCTREE_COCTREECHILDREN_H
#define OCTREE_COCTREECHILDREN_H

#include <octree/COcTreeNode.h>

#include <cstddef>
#include <new>

/// Record sizes of a children block.
constexpr std::int32_t c_nLeafSize = 8;
constexpr std::int32_t c_nNodeSize = 16;

static_assert(sizeof(COcTreeLeaf) == c_nLeafSize && alignof(COcTreeLeaf) <= c_nLeafSize);
static_assert(sizeof(COcTreeNode) == c_nNodeSize && alignof(COcTreeNode) <= c_nLeafSize);

/// One present child of a node: the octant it lies in and its record.
class COcTreeChild
{
public:
    COcTreeChild(int nOctant, bool bLeaf, unsigned char* pRecord)
        : m_nOctant(nOctant), m_bLeaf(bLeaf), m_pRecord(pRecord)
    {
    }

    /// 4 × (x upper) + 2 × (y upper) + (z upper).
    int GetOctant() const noexcept { return m_nOctant; }

    bool IsLeaf() const noexcept { return m_bLeaf; }

    /// REQUIRES: IsLeaf().
    COcTreeLeaf& GetLeaf() const noexcept
    {
        return *static_cast<COcTreeLeaf*>(static_cast<void*>(m_pRecord));
    }

    /// REQUIRES: not IsLeaf().
    COcTreeNode& GetNode() const noexcept
    {
        return *static_cast<COcTreeNode*>(static_cast<void*>(m_pRecord));
    }

private:
    int m_nOctant;
    bool m_bLeaf;
    unsigned char* m_pRecord;
};

/// The present children of a node as a range, octants 0 to 7: the one place that steps through a
/// children block.
class COcTreeChildren
{
public:
    class CIterator
    {
    public:
        CIterator(unsigned nExist, unsigned nLeaf, unsigned char* pRecord)
            : m_nExist(nExist), m_nLeaf(nLeaf), m_pRecord(pRecord)
        {
        }

        COcTreeChild operator*() const noexcept
        {
            const int nOctant = __builtin_ctz(m_nExist);
            return COcTreeChild(nOctant, ((m_nLeaf >> nOctant) & 1U) != 0, m_pRecord);
        }

        CIterator& operator++() noexcept
        {
            m_pRecord += (**this).IsLeaf() ? c_nLeafSize : c_nNodeSize;
            m_nExist &= m_nExist - 1U;
            return *this;
        }

        bool operator!=(const CIterator& other) const noexcept { return m_nExist != other.m_nExist; }

    private:
        unsigned m_nExist; // octants still to come
        unsigned m_nLeaf;
        unsigned char* m_pRecord;
    };

    explicit COcTreeChildren(const COcTreeNode& node) : m_node(node) {}

    CIterator begin() const noexcept { return {m_node.m_ucExist, m_node.m_ucLeaf, m_node.m_pChildren}; }
    CIterator end() const noexcept { return {0U, 0U, nullptr}; }

    /// The child in the highest present octant. REQUIRES: a child.
    COcTreeChild GetLast() const noexcept
    {
        const int nOctant = 31 - __builtin_clz(m_node.m_ucExist);
        const bool bLeaf = ((m_node.m_ucLeaf >> nOctant) & 1) != 0;
        const std::size_t nBlockSize = GetBlockSize(m_node.m_ucExist, m_node.m_ucLeaf);
        return {nOctant, bLeaf, m_node.m_pChildren + nBlockSize - (bLeaf ? c_nLeafSize : c_nNodeSize)};
    }

    /// The leaf in the lowest octant that has one. REQUIRES: a leaf among the children.
    const COcTreeLeaf& GetFirstLeaf() const noexcept
    {
        const unsigned nLeaves = static_cast<unsigned>(m_node.m_ucExist) & m_node.m_ucLeaf;
        const unsigned nBelow = (nLeaves & (0U - nLeaves)) - 1U; // octants before the leaf: inner nodes
        unsigned char* const pRecord =
            m_node.m_pChildren +
            CountBits(static_cast<int>(m_node.m_ucExist & nBelow)) * std::size_t{c_nNodeSize};
        return COcTreeChild(__builtin_ctz(nLeaves), true, pRecord).GetLeaf();
    }

    /// @return whether there are children, and all are leaves.
    static bool HasOnlyLeaves(const COcTreeNode& node) noexcept
    {
        return node.m_ucExist != 0 && (node.m_ucExist & ~node.m_ucLeaf) == 0;
    }

    /// @return bytes of the block that holds the children of such masks. A leaf bit without its exist
    ///         bit means nothing.
    static std::size_t GetBlockSize(std::uint8_t ucExist, std::uint8_t ucLeaf) noexcept
    {
        const unsigned nNumLeaves = CountBits(ucExist & ucLeaf);
        const unsigned nNumNodes = CountBits(ucExist & ~ucLeaf);
        return nNumLeaves * std::size_t{c_nLeafSize} + nNumNodes * std::size_t{c_nNodeSize};
    }

    /// Writes the record of a leaf. @return where the next record goes.
    static unsigned char* PutLeaf(unsigned char* pRecord, std::int32_t nCount, std::int32_t nFirst) noexcept
    {
        new (pRecord) COcTreeLeaf{nCount, nFirst};
        return pRecord + c_nLeafSize;
    }

    /// Writes the record of an inner node without children. @return where the next record goes.
    static unsigned char* PutNode(unsigned char* pRecord) noexcept
    {
        new (pRecord) COcTreeNode;
        return pRecord + c_nNodeSize;
    }

private:
    /// @return how many of eight bits are set, without the call that the compiler makes of the builtin for
    /// the oldest processors.
    static unsigned CountBits(int nMask) noexcept
    {
        unsigned n = static_cast<unsigned>(nMask) & 0xFFU;
        n -= (n >> 1) & 0x55U;
        n = (n & 0x33U) + ((n >> 2) & 0x33U);
        return (n + (n >> 4)) & 0xFU;
    }

    const COcTreeNode& m_node;
};

inline COcTreeChildren COcTreeNode::GetChildren() const noexcept
{
    return COcTreeChildren(*this);
}

#endif
