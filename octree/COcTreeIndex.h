#ifndef OCTREE_COCTREEINDEX_H
#define OCTREE_COCTREEINDEX_H

#include <octree/CDiagCounter.h>
#include <octree/COcTreeArena.h>
#include <octree/COcTreeChildren.h>
#include <octree/COcTreeCube.h>
#include <octree/COcTreeNode.h>

/// The octree of one store: runs of the store's point array, no per-point storage. Every build creates it
/// anew; it owns its nodes and leaves.
class COcTreeIndex
{
public:
    COcTreeCube GetRootCube() const noexcept { return {m_nCentreX, m_nCentreY, m_nCentreZ, m_nEdge}; }

    COcTreeNode* m_pRoot = nullptr; ///< lies in the arena; null when the build found no point
    std::int32_t m_nCentreX = 0;    ///< centre of the root cube, compact units
    std::int32_t m_nCentreY = 0;
    std::int32_t m_nCentreZ = 0;
    std::int32_t m_nEdge = 0;    ///< edge of the root cube: the largest extent
    std::int32_t m_nExtentX = 0; ///< extents of the points' bounding box
    std::int32_t m_nExtentY = 0;
    std::int32_t m_nExtentZ = 0;
    std::int32_t m_nLeafSize = c_nLeafSize;
    std::int32_t m_nNodeSize = c_nNodeSize;
    CDiagCounter m_nNumPntsDelivered;   ///< points delivered by the last query that counts them
    CDiagCounter m_nNumLeavesDelivered; ///< leaves delivered whole

    /// L1 and L2 hold. They need not in the tree of a file: its runs may stand in another order, there may be
    /// gaps, and nodes and leaves without points.
    bool m_bTiled = true;
    COcTreeArena m_arena;
};

#endif
