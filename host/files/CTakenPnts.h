#ifndef HOST_FILES_CTAKENPNTS_H
#define HOST_FILES_CTAKENPNTS_H

#include <host/files/SourceFacts.h>

#include <functional>
#include <string>
#include <vector>

namespace zorcld
{

/// The points of a source as a cloud can take them: those with numbers for coordinates and within reach of
/// each other, one first of whose reach are all others, and colours of 8 bits.
class CTakenPnts
{
public:
    using TOnPnt = std::function<void(const CSourcePnt&)>; // channels up to 255

    /// Looks at all points, up to three times.
    /// @param sPath  named in failures and on the progress bar.
    /// @throws CFailure when there are none, or too many, or most would have to be left out.
    CTakenPnts(IPntSource& source, const std::string& sPath, const CConsole& console);

    /// Would most of the points be taken? Judged without another pass: exact for less than 4096 points, of
    /// more by the sample of them.
    static bool CanTake(const CSourceFacts& facts);

    const CPntSummary& GetSummary() const { return m_summary; }

    /// What was done to them, a sentence each.
    const std::vector<std::string>& GetNotes() const { return m_vecNotes; }

    void ForEach(const TOnPnt& onPnt) const;

private:
    void MoveFirst(const CSourceFacts& facts);
    void Check(const CSourceFacts& facts, const std::string& sPath);
    CSourcePnt WithByteColor(CSourcePnt pnt) const;

    IPntSource& m_source;
    CPntSummary m_summary;
    CSourcePnt m_first;
    bool m_bMoveFirst = false; // it is not the first in the file
    bool m_bDeepColor = false;
    std::vector<std::string> m_vecNotes;
};

} // namespace zorcld

#endif
