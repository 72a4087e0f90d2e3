#include <host/serve/CRequest.h>

#include <algorithm>

namespace zorcld
{

namespace
{

int DigitFromHex(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

/// @param bPlus  a plus stands for a blank, as in parameters.
/// @return false for what is no escape, and for bytes below a blank.
bool Decode(std::string_view sText, bool bPlus, std::string& sDecoded)
{
    sDecoded.clear();
    for (std::size_t i = 0; i < sText.size(); ++i)
    {
        char c = sText[i];
        if (c == '%')
        {
            const int nHigh = i + 2 < sText.size() ? DigitFromHex(sText[i + 1]) : -1;
            const int nLow = i + 2 < sText.size() ? DigitFromHex(sText[i + 2]) : -1;
            if (nHigh < 0 || nLow < 0)
                return false;
            c = static_cast<char>(nHigh * 16 + nLow);
            i += 2;
        }
        else if (c == '+' && bPlus)
            c = ' ';
        if (static_cast<unsigned char>(c) < ' ' || c == 127)
            return false;
        sDecoded += c;
    }
    return true;
}

bool ParseParams(std::string_view sQuery, CRequest& request)
{
    while (!sQuery.empty())
    {
        const std::string_view sPair = sQuery.substr(0, sQuery.find('&'));
        sQuery.remove_prefix(sPair.size() + (sPair.size() < sQuery.size() ? 1 : 0));
        if (sPair.empty())
            continue;
        const std::size_t nEqual = sPair.find('=');
        std::string sName;
        std::string sValue;
        if (!Decode(sPair.substr(0, nEqual), true, sName) ||
            (nEqual != std::string_view::npos && !Decode(sPair.substr(nEqual + 1), true, sValue)))
            return false;
        request.vecParams.emplace_back(std::move(sName), std::move(sValue));
    }
    return true;
}

/// Takes scheme and host off a target in absolute form: the host is then the one that is asked.
/// @return false where there is another scheme or no host.
bool TakeAuthority(std::string_view& sTarget, CRequest& request)
{
    constexpr std::string_view c_sScheme = "http://";
    const auto isSame = [](char c, char cOther)
    { return (c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c) == cOther; };
    if (sTarget.size() <= c_sScheme.size() ||
        !std::equal(c_sScheme.begin(), c_sScheme.end(), sTarget.begin(),
                    [&](char cScheme, char c) { return isSame(c, cScheme); }))
        return false;
    sTarget.remove_prefix(c_sScheme.size());
    request.sHost = sTarget.substr(0, sTarget.find_first_of("/?"));
    sTarget.remove_prefix(request.sHost.size());
    return !request.sHost.empty();
}

} // namespace

bool ParseTarget(std::string_view sTarget, CRequest& request)
{
    sTarget = sTarget.substr(0, sTarget.find('#'));
    if (sTarget.empty() || (sTarget.front() != '/' && !TakeAuthority(sTarget, request)))
        return false;
    const std::size_t nQuestion = sTarget.find('?');
    if (!Decode(sTarget.substr(0, nQuestion), false, request.sPath))
        return false;
    if (request.sPath.empty()) // behind a host that is all
        request.sPath = "/";
    return nQuestion == std::string_view::npos || ParseParams(sTarget.substr(nQuestion + 1), request);
}

} // namespace zorcld
