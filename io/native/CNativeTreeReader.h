#ifndef IO_NATIVE_CNATIVETREEREADER_H
#define IO_NATIVE_CNATIVETREEREADER_H

#include <io/native/ifpstream.h>
#include <octree/COcTreeIndex.h>

#include <cstddef>
#include <cstdint>
#include <memory>

/// Reads the octree of a native file, block by block, straight into the tree's arena.
///
/// Masks and runs are the file's: the reader believes only what the array, the depth limit (L8) and the rest
/// of the file bear out. What it drops has no part in the tree; a well-formed tree loses nothing, and L1
/// holds in it.
class CNativeTreeReader
{
public:
    /// @param stream    at the tree's header; not owned.
    /// @param nNumPnts  length of the array that the leaves' runs must lie in.
    CNativeTreeReader(ifpstream& stream, std::int32_t nNumPnts);

    /// @return the tree; without a root when no leaf was found. Throws std::bad_alloc.
    std::shared_ptr<COcTreeIndex> Read();

private:
    void ReadHeader(COcTreeIndex& tree);
    void ReadNode(COcTreeNode& node, int nDepth, COcTreeArena& arena);
    unsigned char* ReadLeaf(unsigned char* pRecord);
    bool IsNewRun(std::uint32_t nCount, std::uint32_t nFirst) const noexcept;
    const unsigned char* Take(std::size_t nNumBytes);
    bool Fill(std::size_t nNumBytes);

    ifpstream& m_stream;
    std::uint64_t m_nNumPnts;
    std::uint64_t m_nEnd = 0; // end of the last run taken; all runs so far lie below it
    bool m_bTiled = true;     // L1: the runs so far tile the array below m_nEnd
    bool m_bEnded = false;    // nothing more is to be taken from the file

    std::unique_ptr<unsigned char[]> m_pBlock;
    const unsigned char* m_pPos;
    const unsigned char* m_pBlockEnd; // end of what has been read
};

#endif
