#ifndef IO_GRID_CASCIIGRIDREADER_H
#define IO_GRID_CASCIIGRIDREADER_H

#include <zor0lang/String.h>

#include <cstdint>
#include <limits>

class IPntCldReadListener;

/// Reads the cells of an ESRI ASCII grid that hold data as points without colour.
class CAsciiGridReader
{
public:
    /// @param listener     receives the points; kept, not owned.
    /// @param nMaxWaiting  values that may wait in memory until all are counted, 8 bytes each; a file of more
    ///                     is read twice.
    explicit CAsciiGridReader(IPntCldReadListener& listener,
                              std::int64_t nMaxWaiting = std::numeric_limits<std::int64_t>::max())
        : m_listener(listener), m_nMaxWaiting(nMaxWaiting)
    {
    }

    /// Reads the file from start to end.
    ///
    /// Calls OnReadType, OnReadNumPnts with the number of cells that hold data (the largest int where
    /// there are more), OnReadPnt once a cell, top row first, and OnReadEnd. The point lies on the upper
    /// left corner of its cell. What the file holds beyond its rows and columns is not looked at, and short
    /// rows have fewer points. A token that is no number counts as 0.
    ///
    /// @return false, without any call, when the file is missing, its header is not complete or holds
    ///         anything else, or no cell holds data. False without OnReadEnd when a file that is read twice
    ///         is no longer there to be read.
    bool Read(const zor::String& sPath);

private:
    IPntCldReadListener& m_listener;
    std::int64_t m_nMaxWaiting;
};

#endif
