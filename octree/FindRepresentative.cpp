#include <octree/FindRepresentative.h>

#include <octree/COcTreeChildren.h>

// KEPT: the first leaf ends the search, but without one the last inner child is taken, and where the leaf
// found has no live point no other is tried (Representative_OfTheLastInnerChild_Kept,
// Representative_DeletedInItsLeafIsSkipped_Kept).
const COcTreeLeaf* StepToRepresentative(const COcTreeNode*& pNode) noexcept
{
    const COcTreeNode& node = *pNode;
    pNode = nullptr;
    if ((node.m_ucExist & node.m_ucLeaf) != 0)
        return &node.GetChildren().GetFirstLeaf();
    if (node.m_ucExist != 0)
        pNode = &node.GetChildren().GetLast().GetNode();
    return nullptr;
}

const COcTreeLeaf* FindRepresentative(const COcTreeNode& node) noexcept
{
    const COcTreeLeaf* pLeaf = nullptr;
    for (const COcTreeNode* pNode = &node; pNode != nullptr && pLeaf == nullptr;)
        pLeaf = StepToRepresentative(pNode);
    return pLeaf;
}
