#ifndef HOST_SERVE_CGATE_H
#define HOST_SERVE_CGATE_H

#include <string>
#include <string_view>
#include <vector>

namespace zorcld
{

struct CRequest;

/// Who may ask: whoever brings the token, and names this server as the one that he asks and comes from. So
/// neither another user of the machine nor a page of another server reads the cloud. Instead of the token,
/// which the addresses of the page's own files do not have, there may be the page's cookie: a secret of its
/// own, since browsers give cookies to every server of a machine, whatever the port, and these are not to
/// learn the token, which opens the page from elsewhere, too.
class CGate
{
public:
    /// @param sAddress  that is listened on, an IP address.
    /// @param sToken    as MakeToken makes it.
    CGate(const std::string& sAddress, int nPort, std::string sToken);

    /// @throws CRefusal
    void Check(const CRequest& request) const;

    /// Does the request bring the token?
    bool HasTokenParam(const CRequest& request) const;

    /// The header's value that gives the cookie. Its name has the port in it: browsers keep one jar for all
    /// ports of a machine.
    std::string FormatCookie() const;

    const std::string& GetToken() const { return m_sToken; }

private:
    bool IsOwnHost(std::string_view sHost) const;
    bool IsFromElsewhere(const CRequest& request) const;
    bool HasCookie(std::string_view sCookies) const;
    static bool IsFromPage(const CRequest& request);

    std::string m_sToken;
    std::string m_sCookieName;
    std::string m_sCookieSecret;
    std::string m_sPort;                 // with the colon before it
    std::vector<std::string> m_vecHosts; // names of this server, without the port
    bool m_bAnyAddress;                  // all addresses of this machine are listened on
};

/// 128 random bits of the system, as 32 digits.
/// @throws CFailure when the system has none.
std::string MakeToken();

/// Takes as long for texts of one length wherever they differ.
bool IsSameSecret(std::string_view sOne, std::string_view sOther);

} // namespace zorcld

#endif
