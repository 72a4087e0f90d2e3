#ifndef HOST_SERVE_CREFUSAL_H
#define HOST_SERVE_CREFUSAL_H

#include <stdexcept>
#include <string>

namespace zorcld
{

/// A request that is not answered: a status and one line that says why.
class CRefusal : public std::runtime_error
{
public:
    CRefusal(int nStatus, const std::string& sLine) : std::runtime_error(sLine), m_nStatus(nStatus) {}

    int GetStatus() const noexcept { return m_nStatus; }

private:
    int m_nStatus;
};

} // namespace zorcld

#endif
