#ifndef ZOR0LANG_CUNSIGNEDTEXT_H
#define ZOR0LANG_CUNSIGNEDTEXT_H

#include <zor0lang/IsWhiteSpace.h>

#include <string>

namespace zor
{

/// The text behind white space and a sign: where digits, or "inf" and "nan", must follow.
struct CUnsignedText
{
    const char* pStart;
    const char* pEnd;
    bool bNegative = false;

    /// @param sText  must outlive the object.
    explicit CUnsignedText(const std::string& sText) : pStart(sText.data()), pEnd(sText.data() + sText.size())
    {
        while (pStart != pEnd && IsWhiteSpace(*pStart))
            ++pStart;
        if (pStart == pEnd || (*pStart != '-' && *pStart != '+'))
            return;
        bNegative = *pStart == '-';
        ++pStart;
    }

    /// A second sign ends the text: from_chars alone would take it for the number's own.
    bool HasSecondSign() const { return pStart != pEnd && *pStart == '-'; }
};

} // namespace zor

#endif
