#ifndef HOST_TILE_CTILEWORK_H
#define HOST_TILE_CTILEWORK_H

#include <host/tile/CTilePlan.h>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace zorcld
{

/// What a run of `zorcld tile` notes beside the tiles while it makes them, so that another one goes on with
/// it after an interruption.
class CTileWork
{
public:
    /// @param sFolder  of the tiles; made where it is not there.
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
    /// Forgets which tiles of an earlier plan were done. REQUIRES: no note that points of another one are
    /// there.
    void WritePlan(const CTilePlan& plan) const;

    /// Tiles that are done. A line that an interruption has cut off is left out.
    std::vector<CTileEntry> ReadDone() const;
    void AddDone(const CTileEntry& entry) const;

    /// Hashes (CPntsHash) of the points of all tiles, where all have been handed out; their files may have
    /// gone.
    std::map<CCell, std::uint64_t> ReadPntsHashes() const;
    void SetHasPnts(const std::map<CCell, std::uint64_t>& mapHashes) const;

    /// Removes the points, and the note that all are there.
    void ClearPnts() const;

    /// The work is done: removes all notes.
    void Clear() const;

private:
    std::string m_sWork;
    int m_nLock = -1;
    bool m_bMade = false; // the folder of the tiles was not there
};

} // namespace zorcld

#endif
