#ifndef HOST_FILES_IPNTSOURCE_H
#define HOST_FILES_IPNTSOURCE_H

#include <host/files/CFinding.h>
#include <host/files/CSourcePnt.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace zorcld
{

/// The points of a file as the host itself reads them: more kinds of files than the library takes, nothing
/// rounded or removed. May be asked for them several times; memory does not grow with the file where the
/// file can be read from front to back.
class IPntSource
{
public:
    using TOnPnt = std::function<void(const CSourcePnt&)>;

    virtual ~IPntSource() = default;

    virtual bool HasColor() const = 0;

    /// @return points that the file announces, or its cells; -1: it does not say.
    virtual std::int64_t GetNumAnnounced() const = 0;

    /// One call a point, in the order of the file.
    /// @throws CFailure when the file turns out to be damaged on the way.
    virtual void ForEach(const TOnPnt& onPnt) = 0;

    /// What the last `ForEach` saw beside the points.
    virtual std::vector<CFinding> GetFindings() const { return {}; }
};

} // namespace zorcld

#endif
