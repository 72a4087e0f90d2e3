#ifndef FORMATS_FINDFILEKIND_H
#define FORMATS_FINDFILEKIND_H

#include <zor4data/enumPntCldFile.h>

#include <cstddef>
#include <string_view>

/// First bytes of a file that are enough to tell its kind.
constexpr std::size_t c_nFileKindBytes = 16;

/// @param sFirstBytes  of the file, up to c_nFileKindBytes of them.
/// @return the kind that they belong to; -1: none.
enumPntCldFile FindFileKind(std::string_view sFirstBytes) noexcept;

#endif
