#ifndef HOST_FILES_IPNTSOURCE_H
#define HOST_FILES_IPNTSOURCE_H

#include <host/files/CFinding.h>
#include <host/files/CSourcePnt.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

struct CAsciiGridMeaning;
class CByteReader;
class CPlyMeaning;

namespace zorcld
{

class CConsole;
class CInputFile;

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

// Each keeps the parsed head and the reader it is lent, and throws CFailure with the cause when the head
// tells that the points cannot be read.

std::unique_ptr<IPntSource> MakePlySource(const std::string& sPath, const CPlyMeaning& meaning,
                                          CByteReader& reader);
std::unique_ptr<IPntSource> MakeGridSource(const std::string& sPath, const CAsciiGridMeaning& meaning,
                                           CByteReader& reader);

/// Loads the file through the library: coordinates come to 1/10000 and points at one x and y may come once.
std::unique_ptr<IPntSource> MakeCloudSource(CInputFile& file, const CConsole& console);

} // namespace zorcld

#endif
