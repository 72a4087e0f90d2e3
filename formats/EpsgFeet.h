#ifndef FORMATS_EPSGFEET_H
#define FORMATS_EPSGFEET_H

/// Which feet the coordinates of a system are in that a file names by nothing but its number in the EPSG
/// dataset. Only feet are known here: what is not found may be in metres, or be younger than the table.
///
/// @param nCode  of a projected system; of a system of heights.
/// @return the number of the unit, see CoordUnits.h; 0: none known.
int FindFeetOfProjection(int nCode);
int FindFeetOfHeights(int nCode);

#endif
