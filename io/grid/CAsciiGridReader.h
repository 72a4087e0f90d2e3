#ifndef IO_GRID_CASCIIGRIDREADER_H
#define IO_GRID_CASCIIGRIDREADER_H

#include <zor0lang/String.h>

class CAsciiGridCells;
struct CAsciiGridHeader;
class CAsciiGridText;
class IPntCldReadListener;

/// Reads the cells of an ESRI ASCII grid that hold data as points without colour.
class CAsciiGridReader
{
public:
    /// @param listener  receives the points; kept, not owned.
    explicit CAsciiGridReader(IPntCldReadListener& listener) : m_listener(listener) {}

    /// Reads the file from start to end.
    ///
    /// Calls OnReadType, OnReadNumPnts with the number of cells that hold data (the largest int where
    /// there are more), OnReadPnt once a cell, top row first, and OnReadEnd. The point lies on the upper
    /// left corner of its cell. What the file holds beyond its rows and columns is not looked at, and short
    /// rows have fewer points. A token that is no number counts as 0.
    ///
    /// @return false, without any call, when the file is missing, its header is not complete or holds
    ///         anything else, or no cell holds data.
    bool Read(const zor::String& sPath);

private:
    static void ReadCells(CAsciiGridText& text, const CAsciiGridHeader& header, CAsciiGridCells& cells);

    IPntCldReadListener& m_listener;
};

#endif
