#ifndef SAMPLE_WRITESAMPLEPLY_H
#define SAMPLE_WRITESAMPLEPLY_H

#include <sample/CSampleTerrain.h>

#include <cstdio>
#include <functional>

/// Writes the terrain as binary little-endian PLY: coordinates as floats, colours as bytes.
///
/// A float cannot hold millimetres at (500000, 4000000): coordinates are written relative to
/// (c_dOrgX, c_dOrgY, 0), which a comment in the header says.
///
/// @param pFile       open for writing; stays open.
/// @param onProgress  called with the percentage done, now and then; may be empty.
/// @return false when a write failed, `errno` then telling why.
bool WriteSamplePly(const CSampleTerrain& terrain, std::FILE* pFile,
                    const std::function<void(int)>& onProgress = {});

#endif
