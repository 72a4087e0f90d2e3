#include <host/tile/CJsonField.h>

#include <host/tile/HashFile.h>

#include <fmt/format.h>

#include <limits>

namespace zorcld
{

CJsonField CJsonField::At(const char* pKey) const
{
    if (!m_json.is_object())
        Fail("holds no fields");
    const std::string sName = m_sName.empty() ? pKey : m_sName + "." + pKey;
    const auto found = m_json.find(pKey);
    if (found == m_json.end())
        throw CFieldError(sName + " is missing");
    return CJsonField(*found, sName);
}

CJsonField CJsonField::Nth(std::size_t i) const
{
    if (!m_json.is_array() || i >= m_json.size())
        Fail(fmt::format("is no list of more than {}", i));
    return CJsonField(m_json[i], m_sName + "[" + std::to_string(i) + "]");
}

std::int64_t CJsonField::GetWhole(std::int64_t nMin, std::int64_t nMax) const
{
    constexpr std::uint64_t c_nMost = std::numeric_limits<std::int64_t>::max();
    const bool bFits =
        m_json.is_number_unsigned() ? m_json.get<std::uint64_t>() <= c_nMost : m_json.is_number_integer();
    const std::int64_t n = bFits ? m_json.get<std::int64_t>() : 0;
    if (!bFits || n < nMin || n > nMax)
        Fail(fmt::format("is no whole number from {} to {}", nMin, nMax));
    return n;
}

double CJsonField::GetNumber(double dMin, double dMax) const
{
    const double d = m_json.is_number() ? m_json.get<double>() : std::numeric_limits<double>::quiet_NaN();
    if (!(d >= dMin && d <= dMax))
        Fail(fmt::format("is no number from {:g} to {:g}", dMin, dMax));
    return d;
}

bool CJsonField::GetBool() const
{
    if (!m_json.is_boolean())
        Fail("is neither true nor false");
    return m_json.get<bool>();
}

std::string CJsonField::GetText() const
{
    if (!m_json.is_string())
        Fail("is no text");
    return m_json.get<std::string>();
}

std::string CJsonField::GetHash() const
{
    const std::string sText = m_json.is_string() ? m_json.get<std::string>() : std::string();
    if (!IsHash(sText))
        Fail("is no hash of 32 hexadecimal digits");
    return sText;
}

void CJsonField::RequireSize(std::size_t nNum) const
{
    if (!m_json.is_array() || m_json.size() != nNum)
        Fail(fmt::format("is no list of {}", nNum));
}

void CJsonField::Fail(const std::string& sCause) const
{
    throw CFieldError((m_sName.empty() ? "all of it" : m_sName) + " " + sCause);
}

} // namespace zorcld
