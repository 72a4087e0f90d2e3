#include <host/tile/CalcSeal.h>

#include <host/tile/HashFile.h>

#include <fmt/format.h>

#include <cstdint>
#include <cstring>
#include <map>

namespace zorcld
{

using TJson = CJsonField::TJson;

namespace
{

constexpr int c_nMaxDepth = 64; // a manifest has five

void AddText(const std::string& sText, std::string& sAll)
{
    sAll += fmt::format("s{}:{}", sText.size(), sText);
}

void AddNumber(double d, std::string& sAll)
{
    std::uint64_t nBits = 0;
    std::memcpy(&nBits, &d, sizeof nBits);
    sAll += fmt::format("d{:016x}", nBits);
}

void Add(const TJson& json, int nDepth, std::string& sAll);

/// By keys, so that their order does not matter.
void AddObject(const TJson& json, int nDepth, std::string& sAll)
{
    std::map<std::string, const TJson*> mapFields;
    for (const auto& item : json.items())
        if (nDepth > 0 || item.key() != "seal")
            mapFields[item.key()] = &item.value();
    sAll += '{';
    for (const auto& [sKey, pValue] : mapFields)
    {
        AddText(sKey, sAll);
        Add(*pValue, nDepth + 1, sAll);
    }
    sAll += '}';
}

void Add(const TJson& json, int nDepth, std::string& sAll)
{
    if (nDepth > c_nMaxDepth)
        throw CFieldError("seal is of too many brackets in each other");
    if (json.is_object())
        return AddObject(json, nDepth, sAll);
    if (json.is_string())
        return AddText(json.get_ref<const std::string&>(), sAll);
    if (json.is_number())
        return AddNumber(json.get<double>(), sAll);
    if (!json.is_array())
    {
        sAll += json.is_null() ? 'n' : json.get<bool>() ? 't' : 'f';
        return;
    }
    sAll += '[';
    for (const TJson& value : json)
        Add(value, nDepth + 1, sAll);
    sAll += ']';
}

} // namespace

std::string CalcSeal(const TJson& json)
{
    std::string sAll;
    Add(json, 0, sAll);
    return HashText(sAll);
}

} // namespace zorcld
