#ifndef HOST_SERVE_CREQUEST_H
#define HOST_SERVE_CREQUEST_H

#include <atomic>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zorcld
{

/// What a client asks for, taken apart; nothing of it is to be trusted.
struct CRequest
{
    /// @return the value of a parameter, null where it is not given.
    const std::string* FindParam(std::string_view sName) const
    {
        for (const auto& [sKey, sValue] : vecParams)
            if (sKey == sName)
                return &sValue;
        return nullptr;
    }

    /// Does nobody wait for the answer any more? May become true while it is made, on another thread.
    bool IsForNobody() const { return pGone != nullptr && *pGone; }

    std::string sMethod;
    std::string sPath;                                          ///< decoded, begins with a slash
    std::vector<std::pair<std::string, std::string>> vecParams; ///< decoded, in their order
    std::string sHost;
    std::string sOrigin;    ///< empty: not given
    std::string sFetchSite; ///< whose page asks, as browsers tell (Sec-Fetch-Site); empty: not given
    std::string sCookie;
    std::string sIfNoneMatch;
    std::string sAcceptEncoding;
    std::shared_ptr<const std::atomic<bool>> pGone; ///< has the client gone; null: not looked at
};

/// Takes the target of a request line apart: path and parameters behind a question mark. Where it is a whole
/// address its host replaces that of the request.
/// @return false where it is no address and does not begin with a slash, or holds an escape that is none or
/// stands for a byte
///         below a blank.
bool ParseTarget(std::string_view sTarget, CRequest& request);

} // namespace zorcld

#endif
