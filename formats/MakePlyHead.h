#ifndef FORMATS_MAKEPLYHEAD_H
#define FORMATS_MAKEPLYHEAD_H

#include <cstdint>
#include <string>
#include <vector>

/// The header of a binary little-endian PLY file of points that any program reads rightly: coordinates as
/// floats, then with `bColor` red, green and blue as a byte each.
///
/// @param vecComments  a line each, without line feeds; before the element.
std::string MakePlyHead(std::int64_t nNumPnts, bool bColor, const std::vector<std::string>& vecComments);

#endif
