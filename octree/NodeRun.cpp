#include <octree/NodeRun.h>

#include <octree/COcTreeChildren.h>

namespace
{

std::int32_t CountLeaves(const COcTreeNode& node) noexcept
{
    std::int32_t nNumLeaves = __builtin_popcount(static_cast<unsigned>(node.m_ucExist & node.m_ucLeaf));
    for (const COcTreeChild child : node.GetChildren())
        if (!child.IsLeaf())
            nNumLeaves += CountLeaves(child.GetNode());
    return nNumLeaves;
}

} // namespace

CPntRun FindPntRun(const COcTreeNode& node) noexcept
{
    const COcTreeLeaf* pFirst = nullptr;
    for (const COcTreeNode* pNode = &node; pFirst == nullptr;)
    {
        const COcTreeChild child = *pNode->GetChildren().begin();
        if (child.IsLeaf())
            pFirst = &child.GetLeaf();
        else
            pNode = &child.GetNode();
    }
    const COcTreeLeaf* pLast = nullptr;
    for (const COcTreeNode* pNode = &node; pLast == nullptr;)
    {
        const COcTreeChild child = pNode->GetChildren().GetLast();
        if (child.IsLeaf())
            pLast = &child.GetLeaf();
        else
            pNode = &child.GetNode();
    }
    return {pFirst->m_nFirst, pLast->m_nFirst + pLast->m_nCount - pFirst->m_nFirst};
}

CNodeRun CalcNodeRun(const COcTreeNode& node) noexcept
{
    const CPntRun run = FindPntRun(node);
    return {run.nFirst, run.nCount, CountLeaves(node)};
}
