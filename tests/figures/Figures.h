#ifndef FIGURES_FIGURES_H
#define FIGURES_FIGURES_H

#include <cstdint>

/// Prints the largest error of stored coordinates by the distance from the first point and the coordinates'
/// size.
///
/// @param nNum  points of each line.
/// @return whether every error is within the bound.
bool PrintAccuracy(std::int64_t nNum);

/// Prints what a cloud of terrain takes at every stage: seconds, and bytes a point, held and at the most.
/// @return whether every stage succeeded.
bool PrintSizes(std::int64_t nNum, bool bColor);

/// Writes a LAZ file of equal points in chunks of 50,000: the smallest that so many can be.
/// @return whether it could be written, which takes LASzip.
bool WriteEqualLaz(std::int64_t nNum, int nFormat, const char* sPath);

#endif
