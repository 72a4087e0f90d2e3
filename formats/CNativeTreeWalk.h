#ifndef FORMATS_CNATIVETREEWALK_H
#define FORMATS_CNATIVETREEWALK_H

#include <formats/CTakenRuns.h>
#include <formats/LittleEndian.h>
#include <formats/MaxDepth.h>
#include <formats/NativeFormat.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>

/// Walks over the octree of a native file, block by block: the one place that reads masks and leaves, and
/// that decides what of them is usable.
///
/// Masks and runs are the file's: the walk believes only what the array, the depth limit (L8) and the rest of
/// the file bear out. A leaf is dropped when its run is not inside the array or overlaps one met before, a
/// node when it has lost all its children; nothing else is, and of a tree whose runs lie inside the array
/// without overlapping nothing at all, in whatever order they stand.
///
/// @tparam Source   `std::size_t Read(void*, std::size_t)` takes the next bytes: fewer only at the end.
/// @tparam Builder  has a type `CChildren`, made once a node from the node and its two masks. It is told of
///                  each child, octants 0 to 7: `AddLeaf(nCount, nFirst)` of a leaf that is kept;
///                  `OpenNode()` of an inner node, which returns what is to be walked next, then
///                  `KeepNode()` if it is kept; and of the end: `Close(node, ucExist)`, the octants kept.
template <class Source, class Builder>
class CNativeTreeWalk
{
public:
    /// @param source    at the root node; kept, not owned.
    /// @param nNumPnts  length of the array that the leaves' runs must lie in.
    CNativeTreeWalk(Source& source, Builder& builder, std::int32_t nNumPnts)
        : m_source(source), m_builder(builder), m_runs(static_cast<std::uint64_t>(nNumPnts)),
          m_pBlock(new unsigned char[c_nNativeBlock]), m_pPos(m_pBlock.get()), m_pBlockEnd(m_pBlock.get())
    {
    }

    /// @return whether the root is kept.
    template <class Node>
    bool Walk(Node& root)
    {
        return WalkNode(root, 0);
    }

    /// @return whether the walk came to the end of the tree: the file holds it whole, and it is not too deep.
    bool IsWhole() const noexcept { return !m_bEnded; }

    /// @return whether L1 holds in what was kept: the runs tile the array in the order of the walk, and
    ///         there are points in each leaf and under each node.
    bool IsTiled() const noexcept { return !m_bHasEmpty && m_runs.IsTiled(); }

    /// Bytes read from the source that are not part of the tree.
    std::size_t GetNumBehind() const noexcept { return static_cast<std::size_t>(m_pBlockEnd - m_pPos); }

private:
    // L8: the recursion is bounded, since the tree ends at a node that would lie below c_nMaxDepth, where a
    // build has leaves only, and every call takes bytes from the file.
    /// @return whether the node is kept.
    template <class Node>
    bool WalkNode(Node& node, int nDepth)
    {
        const unsigned char* const pMasks = nDepth > c_nMaxDepth ? nullptr : Take(c_nNativeNodeSize);
        if (pMasks == nullptr)
        {
            m_bEnded = true;
            return false;
        }
        const unsigned nInFile = pMasks[0];
        const std::uint8_t ucLeaf = pMasks[1];
        m_bHasEmpty = m_bHasEmpty || nInFile == 0;
        typename Builder::CChildren children(m_builder, node, pMasks[0], ucLeaf);
        unsigned nKept = 0;
        for (unsigned nToCome = nInFile; nToCome != 0 && !m_bEnded; nToCome &= nToCome - 1U)
        {
            const unsigned nBit = nToCome & (0U - nToCome);
            const bool bKept = (ucLeaf & nBit) != 0 ? TakeLeaf(children) : TakeNode(children, nDepth + 1);
            nKept |= bKept ? nBit : 0U;
        }
        children.Close(node, static_cast<std::uint8_t>(nKept));
        return nKept != 0 || nInFile == 0;
    }

    bool TakeNode(typename Builder::CChildren& children, int nDepth)
    {
        if (!WalkNode(children.OpenNode(), nDepth))
            return false;
        children.KeepNode();
        return true;
    }

    // A point that two leaves named would be found twice, and by as many leaves as the file has: the time of
    // a query would have no bound in the number of points.
    bool TakeLeaf(typename Builder::CChildren& children)
    {
        const unsigned char* const p = Take(c_nNativeLeafSize);
        if (p == nullptr)
            return false;
        const std::uint32_t nCount = LittleEndian::Get<std::uint32_t>(p);
        const std::uint32_t nFirst = LittleEndian::Get<std::uint32_t>(p + sizeof nCount);
        if (!m_runs.Take(nCount, nFirst))
            return false;
        m_bHasEmpty = m_bHasEmpty || nCount == 0;
        children.AddLeaf(static_cast<std::int32_t>(nCount), static_cast<std::int32_t>(nFirst));
        return true;
    }

    /// @return the next bytes of the file, valid until the next call; null when the file does not hold
    ///         so many, and the tree has then ended.
    const unsigned char* Take(std::size_t nNumBytes)
    {
        if (static_cast<std::size_t>(m_pBlockEnd - m_pPos) < nNumBytes && !Fill(nNumBytes))
            return nullptr;
        const unsigned char* const p = m_pPos;
        m_pPos += nNumBytes;
        return p;
    }

    /// Moves what is left of the block to its front and reads more of the file behind it.
    [[gnu::noinline]] bool Fill(std::size_t nNumBytes)
    {
        const std::size_t nNumLeft = static_cast<std::size_t>(m_pBlockEnd - m_pPos);
        std::memmove(m_pBlock.get(), m_pPos, nNumLeft);
        const std::size_t nNumRead = m_source.Read(m_pBlock.get() + nNumLeft, c_nNativeBlock - nNumLeft);
        m_pPos = m_pBlock.get();
        m_pBlockEnd = m_pPos + nNumLeft + nNumRead;
        m_bEnded = nNumLeft + nNumRead < nNumBytes;
        return !m_bEnded;
    }

    Source& m_source;
    Builder& m_builder;
    CTakenRuns m_runs;
    bool m_bHasEmpty = false; // a leaf or a node without points has been met
    bool m_bEnded = false;    // nothing more is to be taken from the file

    std::unique_ptr<unsigned char[]> m_pBlock;
    const unsigned char* m_pPos;
    const unsigned char* m_pBlockEnd; // end of what has been read
};

#endif
