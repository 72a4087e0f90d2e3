#ifndef ZOR4DATA_ENUMPNTCLDFILE_H
#define ZOR4DATA_ENUMPNTCLDFILE_H

#include <cstdint>

/// Kinds of file that `CPntCld::ReadFromFile` takes. Any other value selects no reader.
enum enumPntCldFile : std::int32_t
{
    PntCldFile_Native = 0,    ///< this library's own binary file, octree included
    PntCldFile_Ply = 1,       ///< PLY, binary little-endian 1.0
    PntCldFile_AsciiGrid = 2, ///< ESRI ASCII grid
    PntCldFile_Las = 3,       ///< LAS and LAZ
};

#endif
