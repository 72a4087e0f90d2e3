#ifndef FORMATS_CLASSOURCE_H
#define FORMATS_CLASSOURCE_H

#include <formats/IPntSource.h>

class CLasGuard;

/// The points of a LAS or LAZ file, with the colours of every format that has them.
///
/// @param guard  of that file, after its check; kept, not owned. The source moves the file's position.
/// @return the guard's cause where it has refused the file; neither a source nor a cause in a build without
///         LASzip.
CMadeSource MakeLasSource(CLasGuard& guard);

/// Reads up to the first point that has a colour other than black: fields of colours are often never filled.
///
/// @param guard  as above.
/// @return false when there is none. A build without LASzip does not look, and says true of a format with
///         colours.
bool HasLasColors(CLasGuard& guard);

#endif
