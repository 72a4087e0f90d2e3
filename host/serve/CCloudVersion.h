#ifndef HOST_SERVE_CCLOUDVERSION_H
#define HOST_SERVE_CCLOUDVERSION_H

#include <host/files/CFileColors.h>
#include <host/serve/CUpperTiles.h>
#include <zor4data/CPntArrays.h>
#include <zor4data/CPntCld.h>
#include <zor4data/CRootCube.h>

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace zorcld
{

/// A cloud that is shown, which nothing changes any more: many threads ask it at once.
class CCloudVersion
{
public:
    /// @param sName           what of the file it is: "all", "ground".
    /// @param nVersion        as it stands in the paths of tiles.
    /// @param vecFileIndices  of each point the index that the first version has for it, where this is a part
    ///                        of that one; empty: it is the first one.
    CCloudVersion(const CPntCld& cloud, std::string sName, std::int64_t nVersion,
                  std::vector<std::int32_t> vecFileIndices = {});

    /// Before anybody else knows the version.
    void SetUpperTiles(CUpperTiles&& tiles) { m_upperTiles = std::move(tiles); }

    /// @return null where the tile has to be made. REQUIRES: there is such a tile.
    const CReply* FindUpperTile(const CTileAddress& address) const { return m_upperTiles.Find(address); }

    const CPntCld& GetCloud() const { return m_cloud; }
    const std::string& GetName() const { return m_sName; }
    std::int64_t GetVersion() const { return m_nVersion; }
    const CPntArrays& GetArrays() const { return m_arrays; }

    /// Of edge 0 and at 0 where the cloud has no octree.
    const CRootCube& GetRoot() const { return m_root; }

    /// The deepest level: its tiles hold every point.
    int GetNumLevels() const { return m_nNumLevels; }

    /// The index that clients know a point by, whatever the version: that of the first one.
    int GetFileIndex(int nIndex) const
    {
        return m_vecFileIndices.empty() ? nIndex : m_vecFileIndices[static_cast<std::size_t>(nIndex)];
    }

    /// The way back: this version's index of a point. @return -1: it has no such point.
    int FindFileIndex(int nFileIndex) const;

    /// The spacing to which tiles of a level are thinned, coordinate units.
    double CalcLod(int nLevel) const;

private:
    int CalcNumLevels() const;

    CPntCld m_cloud;
    std::string m_sName;
    std::int64_t m_nVersion;
    CPntArrays m_arrays;
    std::vector<std::int32_t> m_vecFileIndices; // empty: as they are
    CRootCube m_root{};
    int m_nNumLevels = 0;
    CUpperTiles m_upperTiles; // none at first
};

using TVersion = std::shared_ptr<const CCloudVersion>;

} // namespace zorcld

#endif
