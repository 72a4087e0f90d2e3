#ifndef IO_LAS_CLASREADER_H
#define IO_LAS_CLASREADER_H

#include <formats/CFileCause.h>
#include <zor0lang/String.h>

class CLasGuard;
class IDlgProgress;
class IPntCldReadListener;

/// Reads the points of a LAS or LAZ file through LASlib, with colour when the point format is 2, 3 or 5.
/// In a build without LAS (ZOR4DATA_LAS=OFF) it reads nothing.
class CLasReader
{
public:
    /// @param listener  receives the points; kept, not owned.
    explicit CLasReader(IPntCldReadListener& listener) : m_listener(listener) {}

    /// @param guard  of a file, after its check.
    /// @return why `Read` returns false without any call for that file.
    static CFileCause FindCause(const CLasGuard& guard);

    /// Reads the file from start to end.
    ///
    /// @param pProgress  SetPos is called before each point with the percentage of the announced points
    ///                   delivered before it; null: no calls.
    ///
    /// Calls OnReadType, OnReadNumPnts with the number of points that the header announces, OnReadPnt once
    /// a point, OnReadEnd. A file that holds fewer points than announced, or cannot be decoded from some
    /// point on, ends there, which is no failure.
    ///
    /// @return false without any call when the file is missing, is no LAS or LAZ file, or points outside
    ///         itself. False without OnReadEnd when the listener cannot allocate more points than the file
    ///         can hold. What else the listener throws passes through.
    bool Read(IDlgProgress* pProgress, const zor::String& sPath);

private:
    IPntCldReadListener& m_listener;
};

#endif
