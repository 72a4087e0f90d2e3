#ifndef FORMATS_NATIVEFINDINGS_H
#define FORMATS_NATIVEFINDINGS_H

#include <formats/CFinding.h>

#include <cstdint>
#include <vector>

struct CNativeFacts;

/// What is missing from a native file, or damaged in it, without keeping it from being loaded.
std::vector<CFinding> FindNativeFindings(const CNativeFacts& native);

/// Of a file whose octree begins behind fewer points than are announced (`FindNumBeforeTree`).
CFinding MakeNativeCountFinding(std::int64_t nAnnounced, std::int64_t nNumBeforeTree);

/// Of a file whose octree has a possible box that is not the one of its points (`HasBoxOfItsPnts`).
CFinding MakeNativeBoxFinding();

#endif
