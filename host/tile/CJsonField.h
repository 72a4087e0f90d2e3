#ifndef HOST_TILE_CJSONFIELD_H
#define HOST_TILE_CJSONFIELD_H

#include <nlohmann/json.hpp>

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>

namespace zorcld
{

/// A field is missing, or is not what it is to be: one line that names it, without the file.
class CFieldError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// A value in a JSON text with the way to it, so that what is wrong with it can be told. Takes no value for
/// another one: a whole number has no fraction, a number is finite.
class CJsonField
{
public:
    using TJson = nlohmann::ordered_json;

    /// @param json  must outlive the object.
    explicit CJsonField(const TJson& json, std::string sName = {}) : m_json(json), m_sName(std::move(sName))
    {
    }

    /// All of these throw CFieldError.
    CJsonField At(const char* pKey) const;
    CJsonField Nth(std::size_t i) const;
    std::int64_t GetWhole(std::int64_t nMin, std::int64_t nMax) const;
    double GetNumber(double dMin, double dMax) const;
    bool GetBool() const;
    std::string GetText() const;
    std::string GetHash() const;              ///< 32 hexadecimal digits
    void RequireSize(std::size_t nNum) const; ///< a list of so many values
    [[noreturn]] void Fail(const std::string& sCause) const;

    bool Has(const char* pKey) const { return m_json.is_object() && m_json.contains(pKey); }
    bool IsNull() const { return m_json.is_null(); }

    /// `fn(field)` for each value of a list. @throws CFieldError where it is none.
    template <class TFn>
    void ForEach(const TFn& fn) const
    {
        if (!m_json.is_array())
            Fail("is no list");
        for (std::size_t i = 0; i < m_json.size(); ++i)
            fn(Nth(i));
    }

private:
    const TJson& m_json;
    std::string m_sName;
};

} // namespace zorcld

#endif
