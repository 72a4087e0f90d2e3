#ifndef FORMATS_LASCLASSES_H
#define FORMATS_LASCLASSES_H

#include <bitset>
#include <cstdint>
#include <string>
#include <string_view>

/// A set of the classes that points of LAS files can have.
using TLasClasses = std::bitset<256>;

/// @return the name of a class, as "low vegetation"; empty: the number has no meaning of its own.
std::string GetLasClassName(std::uint8_t nClass);

/// @return number and name of a class: "3 low vegetation"; the number alone where there is no name.
std::string FormatLasClass(std::uint8_t nClass);

/// The classes that a name stands for, of which several may share one ("vegetation"). Letter case, and what
/// stands between the words, do not matter.
/// @return none for an unknown name.
TLasClasses FindLasClasses(std::string_view sName);

/// @return the names that `FindLasClasses` knows, as it takes them, one after the other.
std::string ListLasClassNames();

#endif
