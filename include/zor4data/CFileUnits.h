#ifndef ZOR4DATA_CFILEUNITS_H
#define ZOR4DATA_CFILEUNITS_H

#include <zor0lang/String.h>
#include <zor4data/Export.h>
#include <zor4data/enumPntCldFile.h>

#include <string>

/// A unit of coordinates as a file states it.
struct CFileUnit
{
    std::string sName;    ///< in the file's words; empty: not stated
    double dMetres = 0.0; ///< 0: not known, or an angle
    bool bAngle = false;  ///< degrees, for instance
};

/// The units of the coordinates of a file.
struct CFileUnits
{
    CFileUnit plan;   ///< of x and y
    CFileUnit height; ///< of z; that of x and y where none is stated and those are no angles
};

/// Tells in which units a file states its coordinates to be. Nothing is looked up but the sizes of units.
///
/// @param sPath  the file.
/// @param eType  the kind to take it for.
/// @return nothing stated for every kind but LAS and LAZ, and for a file that is not there or would not load.
///
/// Cost: the head of the file and its records before and behind the points. Throws std::bad_alloc only.
ZOR4DATA_API CFileUnits FindFileUnits(const zor::String& sPath, enumPntCldFile eType);

#endif
