#ifndef TESTS_ANALYSIS_GROUND_REFMORPH_H
#define TESTS_ANALYSIS_GROUND_REFMORPH_H

#include <tests/analysis/ground/MorphCase.h>

#include <vector>

/// The rules of the progressive morphological filter followed one by one, windows found by looking at the
/// points themselves: no octree, no cells. Says what is right where the published filter's octree and this
/// library differ.
///
/// REQUIRES: parameters with which the windows grow.
std::vector<int> ExtractByScan(const CMorphCase& morphCase);

inline void ExpectAsByScan(const CMorphCase& morphCase)
{
    EXPECT_TRUE(morphCase.Extract() == ExtractByScan(morphCase)) << morphCase.pCloud->size() << " points";
}

#endif
