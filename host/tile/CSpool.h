#ifndef HOST_TILE_CSPOOL_H
#define HOST_TILE_CSPOOL_H

#include <host/tile/CPntsHash.h>
#include <host/tile/CTilePnt.h>
#include <host/tile/CTileTable.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace zorcld
{

/// The points of many tiles on their way to one file a tile: native files without an octree yet, which are
/// written a piece at a time, so that neither memory nor open files grow with the number of tiles.
class CSpool
{
public:
    /// What all tiles have in common.
    struct CKind
    {
        TOrigin origin;
        bool bColor;
    };

    enum enumTiles
    {
        Tiles_Counted, ///< how many points they get is known
        Tiles_Growing  ///< more tiles come while points do; the numbers are right at the end
    };

    /// @param sFolder  where the files go, named as the tiles are.
    /// @param vecTiles  those that get points; must outlive the object.
    CSpool(std::string sFolder, const CKind& kind, const std::vector<CTileCount>& vecTiles, enumTiles eTiles);

    /// @param zone  of the points, positions in `vecTiles`. @throws CFailure when a file cannot be written.
    void Add(const CTileTable::CZone& zone, const CTilePnt* pPnts, std::size_t nNum);

    /// Hashes of what each tile has got.
    std::map<CCell, std::uint64_t> GetHashes() const;

    /// Writes what is still in memory. @throws CFailure likewise.
    /// @return whether all tiles have got as many points as they should.
    bool Finish();

    /// @return bytes of a tile's file that is complete.
    static std::int64_t CalcSize(bool bColor, const CTileCount& tile);

private:
    /// What has yet to be written of a tile.
    struct CPiece
    {
        std::vector<unsigned char> vecBytes;
        std::int64_t nNumPnts = 0; // all so far
        CPntsHash hash;            // of these
        bool bStarted = false;     // has the file its head?
    };

    void Pack(const CTilePnt* pPnts, std::size_t nNum);
    CPntsHash AddToHash(CPntsHash hash, const CTilePnt* pPnts, std::size_t nNum) const;
    void Append(std::size_t nTile, const unsigned char* pBytes, std::size_t nNum);
    void PutHead(std::size_t nTile);
    void Reserve(CPiece& piece);
    void WritePiece(std::size_t nTile);
    void WriteAll();
    void PutNum(std::size_t nTile);

    std::string m_sFolder;
    CKind m_kind;
    const std::vector<CTileCount>& m_vecTiles;
    enumTiles m_eTiles;
    std::size_t m_nPntSize;
    std::size_t m_nMaxBytes;
    std::size_t m_nPieceSize;
    std::vector<CPiece> m_vecPieces;
    std::size_t m_nNumReserved = 0; // pieces that have memory
    std::vector<unsigned char> m_vecPacked;
};

} // namespace zorcld

#endif
