#ifndef HOST_TILE_CSPOOL_H
#define HOST_TILE_CSPOOL_H

#include <host/tile/CTilePlan.h>

#include <cstddef>
#include <string>
#include <vector>

namespace zorcld
{

/// The points of many tiles on their way to one file a tile: native files without an octree yet, which are
/// written a piece at a time, so that neither memory nor open files grow with the number of tiles.
class CSpool
{
public:
    /// @param sFolder  where the files go, named as the tiles are.
    /// @param plan     must outlive the object. @param vecTiles  those that get points; must outlive it too.
    CSpool(std::string sFolder, const CTilePlan& plan, const std::vector<CTileCount>& vecTiles);

    /// @param zone  of the points, positions in `vecTiles`. @throws CFailure when a file cannot be written.
    void Add(const CTileTable::CZone& zone, const CTilePnt* pPnts, std::size_t nNum);

    /// Writes what is still in memory. @throws CFailure likewise, and when tiles have not got their points.
    void Finish();

    /// @return bytes of a tile's file that is complete.
    static std::int64_t CalcSize(const CTilePlan& plan, const CTileCount& tile);

private:
    /// What has yet to be written of a tile.
    struct CPiece
    {
        std::vector<unsigned char> vecBytes;
        std::int64_t nNumPnts = 0; // all so far
        bool bStarted = false;     // has the file its head?
    };

    void Pack(const CTilePnt* pPnts, std::size_t nNum);
    void Append(std::size_t nTile, const unsigned char* pBytes, std::size_t nNum);
    void PutHead(std::size_t nTile);
    void Reserve(CPiece& piece);
    void WritePiece(std::size_t nTile);
    void WriteAll();

    std::string m_sFolder;
    const CTilePlan& m_plan;
    const std::vector<CTileCount>& m_vecTiles;
    std::size_t m_nPntSize;
    std::size_t m_nMaxBytes;
    std::size_t m_nPieceSize;
    std::vector<CPiece> m_vecPieces;
    std::size_t m_nNumReserved = 0; // pieces that have memory
    std::vector<unsigned char> m_vecPacked;
};

} // namespace zorcld

#endif
