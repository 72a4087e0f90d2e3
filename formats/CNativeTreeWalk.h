#ifndef FORMATS_CNATIVETREEWALK_H
#define FORMATS_CNATIVETREEWALK_H

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
/// the file bear out. The builder is not told of what it drops; of a well-formed tree it drops nothing, and
/// L1 holds in it.
///
/// @tparam Source   `std::size_t Read(void*, std::size_t)` takes the next bytes: fewer only at the end.
/// @tparam Builder  has a type `CChildren`, made once a node from the node and its two masks. It is told of
///                  each usable child, octants 0 to 7, with the child's bit: `AddLeaf(nBit, nCount, nFirst)`,
///                  or `OpenNode()`, which returns what is to be walked next, then `CloseNode(nBit, node)`;
///                  and of the end: `Close(node)`.
template <class Source, class Builder>
class CNativeTreeWalk
{
public:
    /// @param source    at the root node; kept, not owned.
    /// @param nNumPnts  length of the array that the leaves' runs must lie in.
    CNativeTreeWalk(Source& source, Builder& builder, std::int32_t nNumPnts)
        : m_source(source), m_builder(builder), m_nNumPnts(static_cast<std::uint64_t>(nNumPnts)),
          m_pBlock(new unsigned char[c_nNativeBlock]), m_pPos(m_pBlock.get()), m_pBlockEnd(m_pBlock.get())
    {
    }

    template <class Node>
    void Walk(Node& root)
    {
        WalkNode(root, 0);
    }

    /// @return whether the walk came to the end of the tree: the file holds it whole, and it is not too deep.
    bool IsWhole() const noexcept { return !m_bEnded; }

    /// @return whether the usable runs tile the array: each begins where the one before ends.
    bool IsTiled() const noexcept { return m_bTiled && m_nEnd == m_nNumPnts; }

    /// Bytes read from the source that are not part of the tree.
    std::size_t GetNumBehind() const noexcept { return static_cast<std::size_t>(m_pBlockEnd - m_pPos); }

private:
    // L8: the recursion is bounded, since the tree ends at a node that would lie below c_nMaxDepth, where a
    // build has leaves only, and every call takes bytes from the file.
    template <class Node>
    void WalkNode(Node& node, int nDepth)
    {
        const unsigned char* const pMasks = nDepth > c_nMaxDepth ? nullptr : Take(c_nNativeNodeSize);
        if (pMasks == nullptr)
        {
            m_bEnded = true;
            return;
        }
        unsigned nToCome = pMasks[0];
        const std::uint8_t ucLeaf = pMasks[1];
        typename Builder::CChildren children(m_builder, node, pMasks[0], ucLeaf);
        for (; nToCome != 0 && !m_bEnded; nToCome &= nToCome - 1U)
        {
            const unsigned nBit = nToCome & (0U - nToCome);
            if ((ucLeaf & nBit) != 0)
            {
                TakeLeaf(children, nBit);
                continue;
            }
            auto& child = children.OpenNode();
            WalkNode(child, nDepth + 1);
            children.CloseNode(nBit, child);
        }
        children.Close(node);
    }

    void TakeLeaf(typename Builder::CChildren& children, unsigned nBit)
    {
        const unsigned char* const p = Take(c_nNativeLeafSize);
        if (p == nullptr)
            return;
        const std::uint32_t nCount = LittleEndian::Get<std::uint32_t>(p);
        const std::uint32_t nFirst = LittleEndian::Get<std::uint32_t>(p + sizeof nCount);
        if (!IsNewRun(nCount, nFirst))
            return;
        m_bTiled = m_bTiled && nFirst == m_nEnd;
        m_nEnd = std::uint64_t{nFirst} + nCount;
        children.AddLeaf(nBit, static_cast<std::int32_t>(nCount), static_cast<std::int32_t>(nFirst));
    }

    /// Does the run lie inside the array and behind all runs before it? In a tree that was built it does, L1.
    /// Otherwise a query could find points twice, as often as the file has leaves: its time would have no
    /// bound in the number of points.
    bool IsNewRun(std::uint32_t nCount, std::uint32_t nFirst) const noexcept
    {
        return nCount > 0 && nFirst >= m_nEnd && std::uint64_t{nFirst} + nCount <= m_nNumPnts;
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
    std::uint64_t m_nNumPnts;
    std::uint64_t m_nEnd = 0; // end of the last run taken; all runs so far lie below it
    bool m_bTiled = true;     // L1: the runs so far tile the array below m_nEnd
    bool m_bEnded = false;    // nothing more is to be taken from the file

    std::unique_ptr<unsigned char[]> m_pBlock;
    const unsigned char* m_pPos;
    const unsigned char* m_pBlockEnd; // end of what has been read
};

#endif
