#include <tests/support/DiffTree.h>

#include <octree/COcTreeIndex.h>

#include <cstring>
#include <sstream>

namespace
{

/// Steps through children blocks by the record sizes of the index, with no help of the library.
class CCompare
{
public:
    CCompare(const COcTreeIndex& tree, const Ref::CTree& ref) : m_tree(tree), m_ref(ref) {}

    std::string Run()
    {
        Check(m_tree.m_nLeafSize == 8 && m_tree.m_nNodeSize == 16, "record sizes", "");
        Check(m_tree.m_nCentreX == m_ref.cube.x && m_tree.m_nCentreY == m_ref.cube.y &&
                  m_tree.m_nCentreZ == m_ref.cube.z,
              "centre", "");
        Check(m_tree.m_nEdge == m_ref.cube.edge, "edge", "");
        Check(m_tree.m_nExtentX == m_ref.extent[0] && m_tree.m_nExtentY == m_ref.extent[1] &&
                  m_tree.m_nExtentZ == m_ref.extent[2],
              "extents", "");
        Check((m_tree.m_pRoot != nullptr) == (m_ref.root != nullptr), "root", "");
        if (m_tree.m_pRoot != nullptr && m_ref.root != nullptr)
            Node(*m_tree.m_pRoot, *m_ref.root, "root");
        return m_sDiff;
    }

private:
    void Check(bool bSame, const char* pWhat, const std::string& sPath)
    {
        if (!bSame && m_sDiff.empty())
            m_sDiff = std::string(pWhat) + " differs " + sPath;
    }

    void Node(const COcTreeNode& node, const Ref::CNode& ref, const std::string& sPath)
    {
        int nExist = 0;
        int nLeaf = 0;
        for (int k = 0; k < 8; ++k)
        {
            const Ref::CChild* const pChild = ref.child[static_cast<std::size_t>(k)].get();
            nExist += pChild != nullptr ? 1 << k : 0;
            nLeaf += pChild != nullptr && pChild->leaf ? 1 << k : 0;
        }
        Check(node.m_ucExist == nExist, "exist mask", sPath);
        Check(node.m_ucLeaf == nLeaf, "leaf mask", sPath);
        const unsigned char* pRecord = node.m_pChildren;
        for (std::size_t k = 0; k < 8 && m_sDiff.empty(); ++k)
            if (ref.child[k] != nullptr)
                pRecord = Child(pRecord, *ref.child[k], sPath + "." + std::to_string(k));
    }

    const unsigned char* Child(const unsigned char* pRecord, const Ref::CChild& ref, const std::string& sPath)
    {
        if (ref.leaf)
        {
            std::int32_t run[2];
            std::memcpy(run, pRecord, sizeof run);
            Check(run[0] == ref.count, "count", sPath);
            Check(run[1] == ref.first, "first", sPath);
            return pRecord + m_tree.m_nLeafSize;
        }
        COcTreeNode node;
        std::memcpy(&node, pRecord, sizeof node);
        Node(node, *ref.node, sPath);
        return pRecord + m_tree.m_nNodeSize;
    }

    const COcTreeIndex& m_tree;
    const Ref::CTree& m_ref;
    std::string m_sDiff;
};

} // namespace

std::string DiffTree(const COcTreeIndex& tree, const Ref::CTree& ref)
{
    return CCompare(tree, ref).Run();
}
