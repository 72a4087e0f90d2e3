#ifndef FORMATS_FINDLASCOORDSYSTEM_H
#define FORMATS_FINDLASCOORDSYSTEM_H

#include <formats/CCoordSystem.h>

class CSizedFile;
struct CLasHeader;

/// The coordinate system that the records of a LAS or LAZ file state, before the points or behind them. Where
/// a file states it both ways, the mark in its header says which one holds.
///
/// @param file    kept during the call only.
/// @param header  of the file, with nothing wrong in it.
/// @return none where no record states one that can be read.
CCoordSystem FindLasCoordSystem(CSizedFile& file, const CLasHeader& header);

/// @return whether a record states a coordinate system, one that can be read or not. Parameters as above.
bool HasLasCoordSystem(CSizedFile& file, const CLasHeader& header);

#endif
