#ifndef HOST_TILE_CTILEWORK_H
#define HOST_TILE_CTILEWORK_H

#include <host/tile/CTilePlan.h>

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace zorcld
{

/// Of a folder that is to be made, and of those that it lies in, the ones that are not there yet: what is
/// empty of them then goes with this object.
class CMadeFolders
{
public:
    explicit CMadeFolders(const std::string& sPath);
    ~CMadeFolders();
    CMadeFolders(const CMadeFolders&) = delete;
    CMadeFolders& operator=(const CMadeFolders&) = delete;

private:
    std::vector<std::string> m_vecPaths; // the innermost first
};

/// What a run of `zorcld tile` notes beside the tiles while it makes them, so that another one goes on with
/// it after an interruption.
class CTileWork
{
public:
    static constexpr const char* c_pFolder = ".zorcld-tiles"; ///< beside the tiles

    /// @param sFolder  of the tiles; made where it is not there, and gone again where nothing stays in it.
    /// @throws CFailure when that fails, or another run works there.
    explicit CTileWork(const std::string& sFolder);
    ~CTileWork();
    CTileWork(const CTileWork&) = delete;
    CTileWork& operator=(const CTileWork&) = delete;

    /// Where tiles' points wait for their octrees.
    std::string GetPntsFolder() const { return m_sWork + "/points"; }

    /// @return none, too, where it is damaged, or another version of the program has made it.
    std::optional<CTilePlan> ReadPlan() const;
    bool HasPlan() const; ///< whatever it says
    /// Forgets which tiles of an earlier plan were done, or begun. REQUIRES: no note that points of another
    /// one are there.
    void WritePlan(const CTilePlan& plan) const;

    /// Tiles that are done. A line that an interruption has cut off is left out.
    std::vector<CTileEntry> ReadDone() const;
    void AddDone(const CTileEntry& entry) const;

    /// Tiles that a run has begun to write: a file of such a name may be its own, though not noted as done.
    std::set<CCell> ReadBegun() const;
    void AddBegun(const std::set<CCell>& setCells) const; ///< before any of their files is in its place

    /// Hashes (CPntsHash) of the points of all tiles, where all have been handed out; their files may have
    /// gone.
    std::map<CCell, std::uint64_t> ReadPntsHashes() const;
    void SetHasPnts(const std::map<CCell, std::uint64_t>& mapHashes) const;

    /// Removes the points, and the note that all are there.
    void ClearPnts() const;

    /// The work is done: removes all notes.
    void Clear() const;

private:
    CMadeFolders m_made;
    std::string m_sWork;
    int m_nLock = -1;
};

} // namespace zorcld

#endif
