#ifndef HOST_OUTPUT_PNTWRITER_H
#define HOST_OUTPUT_PNTWRITER_H

#include <host/output/COutFile.h>
#include <host/output/CPntSummary.h>
#include <zor3geom/PNT_3D.h>
#include <zor4data/CCldCadPnt.h>

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace zorcld
{

/// Writes points one by one.
class IPntWriter
{
public:
    virtual ~IPntWriter() = default;
    virtual void Add(const CCldCadPnt& pnt) = 0;

    /// To be called after the last point.
    virtual void Finish() = 0;

    /// What the user should know of the file, or nothing.
    virtual std::string GetNote() const { return {}; }
};

/// Takes the bytes of a file, piece after piece.
using TWriteBytes = std::function<void(std::string_view)>;

/// The bytes go to a file, which outlives whoever writes them.
inline TWriteBytes WriteTo(COutFile& out)
{
    return [&out](std::string_view sBytes) { out.Write(sBytes); };
}

using TMakePntWriter = std::function<std::unique_ptr<IPntWriter>(TWriteBytes, const CPntSummary&)>;

/// Finds the writer for the extension of a path.
/// @throws CUsageError for an unknown one.
TMakePntWriter FindPntWriter(const std::string& sPath);

/// Both write what stands before the points at once, and the points in large pieces.
std::unique_ptr<IPntWriter> MakeCsvWriter(TWriteBytes write, const CPntSummary& summary);
std::unique_ptr<IPntWriter> MakePlyWriter(TWriteBytes write, const CPntSummary& summary);

} // namespace zorcld

#endif
