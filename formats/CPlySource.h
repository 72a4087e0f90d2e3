#ifndef FORMATS_CPLYSOURCE_H
#define FORMATS_CPLYSOURCE_H

#include <formats/IPntSource.h>

class CByteReader;
class CPlyMeaning;

/// The points of a PLY file of any format, as its header means them.
///
/// @param meaning  of the file's header; kept, not owned.
/// @param reader   of the file; kept, not owned, and moved by every pass.
/// @return the cause where the header cannot be taken as it is meant, or its vertices cannot be read.
CMadeSource MakePlySource(const CPlyMeaning& meaning, CByteReader& reader);

#endif
