#include <octree/COcTreeArena.h>

#include <algorithm>

namespace
{

// A piece is a sixteenth of what is there already: what the last one leaves unused stays small beside
// the tree, and a small tree takes little.
constexpr std::size_t c_nMinPiece = 512;
constexpr std::size_t c_nMaxPiece = std::size_t{1} << 20;

} // namespace

void COcTreeArena::AddPiece()
{
    const std::size_t nPiece = std::clamp(m_nNumBytes / 16 / 8 * 8, c_nMinPiece, c_nMaxPiece);
    m_vecPieces.push_back(std::unique_ptr<unsigned char[]>(new unsigned char[nPiece]));
    m_pNext = m_vecPieces.back().get();
    m_nNumFree = nPiece - c_nReadable; // behind the last block
    m_nNumBytes += nPiece;
}
