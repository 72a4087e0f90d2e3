#ifndef FORMATS_IPNTSOURCE_H
#define FORMATS_IPNTSOURCE_H

#include <formats/CFinding.h>
#include <formats/CLeftOut.h>
#include <formats/CPlainPnts.h>
#include <formats/CSourcePnt.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// The points of a file as it means them: more kinds of files than the library takes, nothing rounded or
/// removed. May be asked for them several times; memory does not grow with the file where the file can be
/// read from front to back.
class IPntSource
{
public:
    using TOnPnt = std::function<void(const CSourcePnt&)>;

    virtual ~IPntSource() = default;

    virtual bool HasColor() const = 0;

    /// @return points that the file announces, or its cells; -1: it does not say.
    virtual std::int64_t GetNumAnnounced() const = 0;

    /// One call a point, in the order of the file.
    /// @return what turned out to be damaged on the way, so that the points behind it are missing, without a
    ///         full stop; empty: nothing.
    virtual std::string ForEach(const TOnPnt& onPnt) = 0;

    using TOnPlaces = std::function<void(const CSourcePnt* pPnts, std::size_t nNum)>;

    /// The same points for whoever wants places and colours alone, many at a time, which costs less: the
    /// attributes are not filled, and `CountLeftOutOf` sees none of them. What it is given is used anew
    /// afterwards.
    virtual std::string ForEachPlace(const TOnPlaces& onPlaces);

    /// @return how points stand in the file; none where they have to be parsed or decompressed.
    virtual std::optional<CPlainPnts> FindPlainPnts() const { return {}; }

    using TOnRecords = std::function<void(const unsigned char* pRecords, std::size_t nNum)>;

    /// Of such a file the same points as they stand, many at a time. REQUIRES: FindPlainPnts gives how.
    virtual std::string ForEachRecord(const TOnRecords& /*onRecords*/) { return {}; }

    /// @return how many points `ForEach` has delivered that the library does not take, since they lie behind
    ///         the announced ones. Up to date in each call, for the point that it gets.
    virtual std::int64_t GetNumUntaken() const { return 0; }

    /// What the last `ForEach` saw beside the points.
    virtual std::vector<CFinding> GetFindings() const { return {}; }

    using TIsCounted = std::function<bool(const CSourcePnt&)>;

    /// From here on `GetLeftOut` counts those points only of which `isCounted` says so; by default all.
    virtual void CountLeftOutOf(const TIsCounted& /*isCounted*/) {}

    /// What the file has beside places and colours; of points, what the last `ForEach` saw of it.
    virtual std::vector<CLeftOut> GetLeftOut() const { return {}; }

protected:
    /// @return how many points of so many bytes are to be read at once: few enough to stay near the
    /// processor.
    static std::size_t CalcNumAtOnce(std::size_t nPntSize);
};

/// A source, or why there is none.
struct CMadeSource
{
    std::unique_ptr<IPntSource> pSource; ///< null: the file cannot be read so
    std::string sCause;                  ///< why not, without a full stop; empty: it is not known
};

#endif
