#ifndef IO_PLY_CPLYREADER_H
#define IO_PLY_CPLYREADER_H

#include <zor0lang/String.h>

class IDlgProgress;
class IPntCldReadListener;

/// Reads the vertices of a binary little-endian PLY file as points, with colour when the vertices have
/// red, green and blue. Other elements are read over.
class CPlyReader
{
public:
    /// @param listener  receives the points; kept, not owned.
    explicit CPlyReader(IPntCldReadListener& listener) : m_listener(listener) {}

    /// Reads the file from start to end.
    ///
    /// @param pProgress  SetPos is called before each item of each element, with the percentage of the
    ///                   elements done and, in whole percent, of this one; null: no calls. Of an element
    ///                   without properties no more than 1000 items are told.
    ///
    /// For a vertex element it calls OnReadType, OnReadNumPnts with the count of the header, and OnReadPnt
    /// once a vertex; at the end OnReadEnd.
    ///
    /// @return false without any call when the file is missing, is not a binary little-endian PLY, or has
    ///         no element of positive count. False without OnReadEnd when the vertices lack x, y or z, a
    ///         property is of an unknown type, or the data end early; also when the listener cannot
    ///         allocate more points than the rest of the file can hold. What else the listener throws
    ///         passes through.
    bool Read(IDlgProgress* pProgress, const zor::String& sPath);

private:
    IPntCldReadListener& m_listener;
};

#endif
