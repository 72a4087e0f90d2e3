#ifndef ZOR0LANG_STRINGTRIMBOTH_H
#define ZOR0LANG_STRINGTRIMBOTH_H

#include <zor0lang/Export.h>

#include <string>

namespace zor
{

/// Removes white space (the six characters of the C locale) at both ends, in place.
ZOR_API void StringTrimBoth(std::string& sText);

} // namespace zor

#endif
