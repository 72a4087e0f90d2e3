#include <host/tile/SealedJson.h>

#include <host/tile/HashFile.h>

namespace zorcld
{

using TJson = nlohmann::ordered_json;

namespace
{

std::string WrapText(const std::string& sText)
{
    return R"({"xxh128":")" + HashText(sText) + R"(","sealed":)" + sText + "}";
}

} // namespace

std::string SealJson(const TJson& json)
{
    return WrapText(json.dump(-1, ' ', false, TJson::error_handler_t::replace));
}

std::optional<TJson> OpenSealedJson(const std::string& sText)
{
    const std::size_t nEmpty = WrapText({}).size();
    if (sText.size() <= nEmpty)
        return {};
    const std::string sInner = sText.substr(nEmpty - 1, sText.size() - nEmpty);
    if (WrapText(sInner) != sText)
        return {};
    TJson json = TJson::parse(sInner, nullptr, false);
    if (json.is_discarded())
        return {};
    return json;
}

} // namespace zorcld
