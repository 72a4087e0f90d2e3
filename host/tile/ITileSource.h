#ifndef HOST_TILE_ITILESOURCE_H
#define HOST_TILE_ITILESOURCE_H

#include <host/tile/CTilePnt.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace zorcld
{

/// A file whose points are cut into tiles. Read from front to back, several times; memory does not grow with
/// it.
class ITileSource
{
public:
    using TOnPnts = std::function<void(std::vector<CTilePnt>& vecPnts)>;

    virtual ~ITileSource() = default;

    virtual bool HasColor() const = 0;

    /// @return points that the file announces; -1: it does not say.
    virtual std::int64_t GetNumAnnounced() const = 0;

    /// What the file says of its units.
    virtual CTileUnits GetUnits() const = 0;

    /// @return the origin of a native file, of another one its first point with numbers for coordinates;
    ///         none: there is no point. May read the file.
    virtual std::optional<TOrigin> FindOrigin() = 0;

    /// The points whose coordinates are numbers, in the order of the file, many in a call, which may keep or
    /// change what it gets, and leave another vector there, whatever is in it.
    /// @throws CFailure for a damaged file, and for a point that no tile with that origin can hold.
    virtual void ForEach(const TOrigin& origin, const TOnPnts& onPnts) = 0;

    /// @return how many points the last `FindOrigin` or `ForEach` has found whose coordinates are no numbers.
    virtual std::int64_t GetNumNotFinite() const { return 0; }

    /// @return what is to be told of the last `ForEach`, a line each.
    virtual std::vector<std::string> GetNotes() const = 0;

protected:
    static constexpr std::size_t c_nNumAtOnce = 16384; ///< points of a call, or somewhat more
};

} // namespace zorcld

#endif
