#ifndef HOST_TILE_CALCSEAL_H
#define HOST_TILE_CALCSEAL_H

#include <host/tile/CJsonField.h>

#include <string>

namespace zorcld
{

/// The hash of all values of a manifest but its field "seal", whatever the order of keys and the way numbers
/// are written. docs/tiles.md tells what is hashed; the Python module does the same.
/// @throws CFieldError when brackets are nested too deep.
std::string CalcSeal(const CJsonField::TJson& json);

} // namespace zorcld

#endif
