#ifndef OCTREE_COCTREEARENA_H
#define OCTREE_COCTREEARENA_H

#include <cstddef>
#include <memory>
#include <vector>

/// Memory of one tree: children blocks are cut from a few large pieces, never moved, and released
/// together with the tree.
class COcTreeArena
{
public:
    /// From the start of each block so many bytes may be read, whatever its size.
    static constexpr std::size_t c_nReadable = 64;

    /// @param nNumBytes  a multiple of 8, at most 128.
    /// @return that many bytes, aligned to 8, not initialised. Throws std::bad_alloc.
    unsigned char* Alloc(std::size_t nNumBytes)
    {
        if (nNumBytes > m_nNumFree)
            AddPiece();
        unsigned char* const pBytes = m_pNext;
        m_pNext += nNumBytes;
        m_nNumFree -= nNumBytes;
        return pBytes;
    }

    /// @return bytes taken from the allocator so far.
    std::size_t GetNumBytes() const noexcept { return m_nNumBytes; }

private:
    void AddPiece();

    std::vector<std::unique_ptr<unsigned char[]>> m_vecPieces;
    unsigned char* m_pNext = nullptr;
    std::size_t m_nNumFree = 0;  // bytes left in the last piece
    std::size_t m_nNumBytes = 0; // bytes of all pieces
};

#endif
