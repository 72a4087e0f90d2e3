#ifndef TESTS_ANALYSIS_OUTLINE_OUTLINECASES_H
#define TESTS_ANALYSIS_OUTLINE_OUTLINECASES_H

#include <tests/support/RefTree.h>

#include <cstdint>
#include <string>
#include <vector>

/// A small cloud, compact units, and a distance that matters for it.
struct COutlineCase
{
    std::string sName; ///< shape and seed
    std::vector<Ref::CPnt> vecPnts;
    double d = 0.0; ///< coordinate units
};

/// @return a cloud of one of twelve shapes: uniform, lattice, ring, comb, spiral, L, two blocks with a gap
///         around the distance, stacks, a few units across, the whole int32 span, line, circle. The same
///         seed, the same cloud.
COutlineCase MakeOutlineCase(std::uint64_t nSeed);

/// @return a filled ring with a saw-toothed rim, 3 points a square unit at random: its outline for the
///         distance of 2 has some 1.3 corners a unit of `dLength`, the length of the ring.
COutlineCase MakeSerratedRing(std::uint64_t nSeed, double dLength);

/// @return the plan of a scan of rooms, on a raster of 1/100: walls that are many points thick in height,
///         floors with holes, furniture. Its walk meets dead ends for most distances from 0.03 on.
COutlineCase MakeRooms(std::uint64_t nSeed, int nNumPnts, double dLength);

#endif
