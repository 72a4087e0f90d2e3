#ifndef FORMATS_CASCIIGRIDSOURCE_H
#define FORMATS_CASCIIGRIDSOURCE_H

#include <formats/IPntSource.h>

class CByteReader;
struct CAsciiGridMeaning;

/// The points of an ESRI ASCII grid, one a cell with a height.
///
/// @param meaning  of the file's header; kept, not owned.
/// @param reader   of the file; kept, not owned, and moved by every pass.
/// @return the cause where the header is not that of a grid.
CMadeSource MakeAsciiGridSource(const CAsciiGridMeaning& meaning, CByteReader& reader);

#endif
