#ifndef ZOR0LANG_ISWHITESPACE_H
#define ZOR0LANG_ISWHITESPACE_H

namespace zor
{

/// @return whether `c` is one of the six white-space characters of the C locale, whatever the locale is.
constexpr bool IsWhiteSpace(char c) noexcept
{
    return c == ' ' || (c >= '\t' && c <= '\r'); // tab, line feed, vertical tab, form feed, carriage return
}

} // namespace zor

#endif
