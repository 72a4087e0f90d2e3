#include <host/serve/CGate.h>

#include <host/output/CFailure.h>
#include <host/serve/CRefusal.h>
#include <host/serve/CRequest.h>

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

#include <arpa/inet.h>
#include <sys/random.h>
#include <unistd.h>

namespace zorcld
{

namespace
{

/// As it stands in a URL: addresses of version 6 have brackets.
std::string HostFromAddress(const std::string& sAddress)
{
    return sAddress.find(':') == std::string::npos ? sAddress : "[" + sAddress + "]";
}

bool IsAddress(std::string sHost)
{
    if (sHost.size() > 2 && sHost.front() == '[' && sHost.back() == ']')
        sHost = sHost.substr(1, sHost.size() - 2);
    std::array<unsigned char, sizeof(in6_addr)> bytes{};
    return inet_pton(AF_INET, sHost.c_str(), bytes.data()) == 1 ||
           inet_pton(AF_INET6, sHost.c_str(), bytes.data()) == 1;
}

std::string ToLower(std::string_view sText)
{
    std::string sLower(sText);
    std::transform(sLower.begin(), sLower.end(), sLower.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return sLower;
}

} // namespace

CGate::CGate(const std::string& sAddress, int nPort, std::string sToken)
    : m_sToken(std::move(sToken)), m_sCookieName(fmt::format("zorcld-{}", nPort)),
      m_sCookieSecret(MakeToken()),
      m_sPort(fmt::format(":{}", nPort)), m_vecHosts{"127.0.0.1", "localhost", "[::1]",
                                                     ToLower(HostFromAddress(sAddress))},
      m_bAnyAddress(sAddress == "0.0.0.0" || sAddress == "::")
{
    std::array<char, 256> acName{};
    if (m_bAnyAddress && gethostname(acName.data(), acName.size() - 1) == 0)
        m_vecHosts.push_back(ToLower(acName.data()));
}

// A page of another server whose name is made to lead here, too, still says its own name.
bool CGate::IsOwnHost(std::string_view sHost) const
{
    const bool bPort =
        sHost.size() > m_sPort.size() && sHost.substr(sHost.size() - m_sPort.size()) == m_sPort;
    if (!bPort && m_sPort != ":80") // which browsers leave away
        return false;
    const std::string sName = ToLower(sHost.substr(0, sHost.size() - (bPort ? m_sPort.size() : 0)));
    return std::find(m_vecHosts.begin(), m_vecHosts.end(), sName) != m_vecHosts.end() ||
           (m_bAnyAddress && IsAddress(sName));
}

/// Is it another page that asks? Browsers tell by either header; a link to the page may stand anywhere.
bool CGate::IsFromElsewhere(const CRequest& request) const
{
    constexpr std::string_view c_sScheme = "http://";
    if (!request.sOrigin.empty() && (request.sOrigin.compare(0, c_sScheme.size(), c_sScheme) != 0 ||
                                     !IsOwnHost(std::string_view(request.sOrigin).substr(c_sScheme.size()))))
        return true;
    const std::string& sSite = request.sFetchSite;
    return !sSite.empty() && sSite != "none" && sSite != "same-origin" && request.sPath != "/";
}

void CGate::Check(const CRequest& request) const
{
    if (!IsOwnHost(request.sHost))
        throw CRefusal(403, "this server is not called so");
    if (IsFromElsewhere(request))
        throw CRefusal(403, "no other page may ask");
    if (request.FindParam("token") != nullptr ? !HasTokenParam(request) : !HasCookie(request.sCookie))
        throw CRefusal(403, "the token is missing: open the address that zorcld has printed");
    if (request.FindParam("token") == nullptr && !IsFromPage(request))
        throw CRefusal(403, "without the token the page itself may ask, no other");
}

/// May the cookie stand for the token? Browsers add it to what any page of this machine asks.
bool CGate::IsFromPage(const CRequest& request)
{
    const std::string& sSite = request.sFetchSite;
    return sSite.empty() || sSite == "same-origin" || (sSite == "none" && request.sPath == "/");
}

bool CGate::HasTokenParam(const CRequest& request) const
{
    const std::string* const pToken = request.FindParam("token");
    return pToken != nullptr && IsSameSecret(*pToken, m_sToken);
}

bool CGate::HasCookie(std::string_view sCookies) const
{
    while (!sCookies.empty())
    {
        const std::string_view sPart = sCookies.substr(0, sCookies.find(';'));
        sCookies.remove_prefix(std::min(sPart.size() + 1, sCookies.size()));
        const std::string_view sPair = sPart.substr(std::min(sPart.find_first_not_of(' '), sPart.size()));
        const std::size_t nEqual = sPair.find('=');
        if (nEqual != std::string_view::npos && sPair.substr(0, nEqual) == m_sCookieName &&
            IsSameSecret(sPair.substr(nEqual + 1), m_sCookieSecret))
            return true;
    }
    return false;
}

std::string CGate::FormatCookie() const
{
    return fmt::format("{}={}; Path=/; HttpOnly; SameSite=Strict", m_sCookieName, m_sCookieSecret);
}

std::string MakeToken()
{
    std::array<unsigned char, 16> random{};
    if (getrandom(random.data(), random.size(), 0) != static_cast<ssize_t>(random.size()))
        throw CFailure("serve", "the system gives no random numbers");
    std::string sToken;
    for (const unsigned char uc : random)
        sToken += fmt::format("{:02x}", uc);
    return sToken;
}

bool IsSameSecret(std::string_view sOne, std::string_view sOther)
{
    if (sOne.size() != sOther.size())
        return false;
    volatile unsigned char ucDifferent = 0;
    for (std::size_t i = 0; i < sOne.size(); ++i)
        ucDifferent = static_cast<unsigned char>(
            ucDifferent | (static_cast<unsigned char>(sOne[i]) ^ static_cast<unsigned char>(sOther[i])));
    return ucDifferent == 0;
}

} // namespace zorcld
