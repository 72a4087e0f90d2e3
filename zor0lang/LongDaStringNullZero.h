#ifndef ZOR0LANG_LONGDASTRINGNULLZERO_H
#define ZOR0LANG_LONGDASTRINGNULLZERO_H

#include <zor0lang/Export.h>

#include <string>

namespace zor
{

/// The integer at the start of a text: the decimal digits after white space and an optional sign. What
/// follows them is not looked at.
///
/// @return the number, the nearest long where it is out of range; 0 without a number.
ZOR_API long LongDaStringNullZero(const std::string& sText);

} // namespace zor

#endif
