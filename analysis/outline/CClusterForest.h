#ifndef ANALYSIS_OUTLINE_CCLUSTERFOREST_H
#define ANALYSIS_OUTLINE_CCLUSTERFOREST_H

#include <cstdint>
#include <vector>

/// Points gathered into clusters: a forest with one tree a cluster, 4 bytes a point.
///
/// Every point begins as a cluster of its own. Indices are those of the points, 0 to n - 1, and are
/// not checked.
class CClusterForest
{
public:
    /// @param nNumPnts  not below 0. Throws std::bad_alloc.
    explicit CClusterForest(std::int32_t nNumPnts);

    bool IsRoot(std::int32_t nIndex) const noexcept { return GetEntry(nIndex) < 0; }

    /// @return the root of the point's cluster, which becomes the parent of every point on the way.
    std::int32_t FindRoot(std::int32_t nIndex) noexcept
    {
        const std::int32_t nParent = GetEntry(nIndex);
        if (nParent < 0)
            return nIndex;
        return IsRoot(nParent) ? nParent : Compress(nIndex);
    }

    /// Joins the clusters of two points.
    /// KEPT: the first one's root becomes the root of both, whatever their sizes: the outcome does not depend
    /// on how a cluster grew (Join_FirstRootWins_Kept).
    void Join(std::int32_t nFirst, std::int32_t nSecond) noexcept
    {
        const std::int32_t nRoot = FindRoot(nFirst);
        const std::int32_t nOther = FindRoot(nSecond);
        if (nRoot == nOther)
            return;
        GetEntry(nRoot) += GetEntry(nOther);
        GetEntry(nOther) = nRoot;
    }

    /// @return points of a cluster. REQUIRES: IsRoot(nRoot).
    std::int32_t GetSize(std::int32_t nRoot) const noexcept { return -GetEntry(nRoot); }

    /// @return the root of the cluster of most points; of several such clusters, of the one whose first
    ///         point in index order comes first. -1 when there is no point. Every point's parent is a
    ///         root afterwards.
    std::int32_t FindLargest() noexcept;

private:
    std::int32_t Compress(std::int32_t nIndex) noexcept;

    std::int32_t GetEntry(std::int32_t nIndex) const noexcept
    {
        return m_vecEntries[static_cast<std::size_t>(nIndex)];
    }
    std::int32_t& GetEntry(std::int32_t nIndex) noexcept
    {
        return m_vecEntries[static_cast<std::size_t>(nIndex)];
    }

    std::vector<std::int32_t> m_vecEntries; // a root's cluster size, negative; of other points the parent
};

#endif
