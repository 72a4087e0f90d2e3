#ifndef ZOR0LANG_STRING_H
#define ZOR0LANG_STRING_H

#include <cstddef>
#include <string>

namespace zor
{

/// Narrow-character string, used for paths. It holds bytes and knows of no encoding.
class String
{
public:
    String() = default;

    /// @param pText  copied up to its terminating zero; null counts as empty.
    String(const char* pText) : m_sText(pText == nullptr ? "" : pText) {}

    /// Copies all of the text.
    String(const std::string& sText) : m_sText(sText) {}

    /// The text with a terminating zero, valid until the string changes or goes away.
    const char* c_str() const noexcept { return m_sText.c_str(); }

    /// Length in bytes, without the terminating zero.
    int GetLength() const noexcept { return static_cast<int>(m_sText.size()); }

    /// @return whether there is no byte in it.
    bool IsEmpty() const noexcept { return m_sText.empty(); }

    /// @return 0 when both are equal byte for byte, else below or above 0 by their first difference.
    int Compare(const char* pText) const { return m_sText.compare(pText == nullptr ? "" : pText); }

    /// @param prefix  what is looked for.
    /// @param nStart  position at which it must stand, from 0.
    /// @return true when `prefix` stands there, letter case significant.
    bool StartsWith(const String& prefix, int nStart) const
    {
        return IsPosition(nStart) &&
               m_sText.compare(static_cast<std::size_t>(nStart), prefix.m_sText.size(), prefix.m_sText) == 0;
    }

    /// @return the first position of `c` at or after `nStart`, or -1.
    int IndexOf(char c, int nStart) const
    {
        return ToInt(m_sText.find(c, nStart < 0 ? 0 : static_cast<std::size_t>(nStart)));
    }

    /// @return the last position of `c` at or before `nStart` (0x7fffffff: in the whole string), or -1.
    int LastIndexOf(char c, int nStart) const
    {
        return nStart < 0 ? -1 : ToInt(m_sText.rfind(c, static_cast<std::size_t>(nStart)));
    }

    /// @return the rest of the string from `nStart`; empty when that lies at or behind the end.
    String Substring(int nStart) const
    {
        return IsPosition(nStart) ? String(m_sText.substr(static_cast<std::size_t>(nStart))) : String();
    }

private:
    bool IsPosition(int n) const noexcept { return n >= 0 && static_cast<std::size_t>(n) <= m_sText.size(); }

    static int ToInt(std::size_t n) noexcept { return n == std::string::npos ? -1 : static_cast<int>(n); }

    std::string m_sText;
};

} // namespace zor

#endif
