#ifndef ZOR0LANG_DOUBLEDASTRING_H
#define ZOR0LANG_DOUBLEDASTRING_H

#include <zor0lang/Export.h>

#include <string>

namespace zor
{

/// The number at the start of a text: the longest decimal number after white space and an optional
/// sign, "inf" and "nan" in either case included. The decimal separator is the point, whatever the
/// locale; what follows the number is not looked at.
///
/// @return the nearest double; infinite where the number is beyond its range, 0 with the number's sign
///         where it is too small; 0 without a number.
ZOR_API double DoubleDaString(const std::string& sText);

} // namespace zor

#endif
