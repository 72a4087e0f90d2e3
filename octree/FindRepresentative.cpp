#include <octree/FindRepresentative.h>

#include <octree/COcTreeChildren.h>

// KEPT: the first leaf ends the search, but without one the last inner child is taken, and where the
// leaf found has no live point no other is tried.
const COcTreeLeaf* FindRepresentative(const COcTreeNode& node) noexcept
{
    const COcTreeNode* pNode = &node;
    while (pNode != nullptr)
    {
        const COcTreeNode* pLast = nullptr;
        for (const COcTreeChild child : pNode->GetChildren())
        {
            if (child.IsLeaf())
                return &child.GetLeaf();
            pLast = &child.GetNode();
        }
        pNode = pLast;
    }
    return nullptr;
}
