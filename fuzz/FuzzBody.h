#ifndef FUZZ_FUZZBODY_H
#define FUZZ_FUZZBODY_H

#include <cstddef>
#include <cstdint>

/// What a fuzz target does with one input. Ends the program where something that must hold does not.
///
/// @param pBytes  the input, not null unless it is empty.
void FuzzBody(const std::uint8_t* pBytes, std::size_t nSize);

#endif
