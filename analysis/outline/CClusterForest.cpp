#include <analysis/outline/CClusterForest.h>

CClusterForest::CClusterForest(std::int32_t nNumPnts) : m_vecEntries(static_cast<std::size_t>(nNumPnts), -1)
{
}

std::int32_t CClusterForest::Compress(std::int32_t nIndex) noexcept
{
    std::int32_t nRoot = nIndex;
    while (!IsRoot(nRoot))
        nRoot = GetEntry(nRoot);
    while (nIndex != nRoot)
    {
        const std::int32_t nParent = GetEntry(nIndex);
        GetEntry(nIndex) = nRoot;
        nIndex = nParent;
    }
    return nRoot;
}

// A list of the clusters in order of their first points, searched for the first largest count, gives
// the same answer: a cluster is met first at its first point, and its size is its count.
std::int32_t CClusterForest::FindLargest() noexcept
{
    std::int32_t nLargest = -1;
    const std::int32_t nNumPnts = static_cast<std::int32_t>(m_vecEntries.size());
    for (std::int32_t i = 0; i < nNumPnts; ++i)
    {
        const std::int32_t nRoot = FindRoot(i);
        if (nLargest == -1 || GetSize(nRoot) > GetSize(nLargest))
            nLargest = nRoot;
    }
    return nLargest;
}
