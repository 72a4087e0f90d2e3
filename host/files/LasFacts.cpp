#include <host/files/LasFacts.h>

#include <formats/CLasHeader.h>
#include <formats/CLasRecords.h>
#include <host/output/GroupDigits.h>
#include <host/output/PrintLine.h>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <cmath>

namespace zorcld
{

namespace
{

using TJson = nlohmann::ordered_json;

/// The first returns up to the last of which there is one.
std::vector<std::int64_t> TrimReturns(std::vector<std::int64_t> vecNumByReturn)
{
    while (!vecNumByReturn.empty() && vecNumByReturn.back() == 0)
        vecNumByReturn.pop_back();
    return vecNumByReturn;
}

std::string FormatAxes(const TJson& values)
{
    return fmt::format("{} {} {}", values[0].get<double>() + 0.0, values[1].get<double>() + 0.0,
                       values[2].get<double>() + 0.0); // no minus before 0
}

/// Damaged headers have numbers of hundreds of digits.
std::string FormatBound(double d)
{
    return std::fabs(d) < 1e15 ? fmt::format("{:14.4f}", d) : fmt::format("{:14.6g}", d);
}

std::string TextOrNone(const TJson& text)
{
    const std::string sText = text.get<std::string>();
    return sText.empty() ? "not given" : sText;
}

void PrintReturns(const TJson& returns)
{
    std::string sText;
    for (const TJson& count : returns)
        sText += (sText.empty() ? "" : ", ") + GroupDigits(count.get<std::int64_t>());
    PrintLine("Points by return", sText.empty() ? "not given" : sText);
}

} // namespace

TJson CollectLasFacts(const CLasHeader& header, const std::vector<CLasRecord>& vecRecords)
{
    TJson facts;
    facts["version"] = fmt::format("{}.{}", header.nMajor, header.nMinor);
    facts["point_format"] = header.nFormat;
    facts["point_bytes"] = header.nPntSize;
    facts["compressed"] = header.bCompressed;
    facts["points"] = header.nNumPnts;
    facts["points_by_return"] = TrimReturns(header.vecNumByReturn);
    facts["scale"] = header.adScale;
    facts["offset"] = header.adOffset;
    facts["bounds"] = {{"min", header.adMin}, {"max", header.adMax}};
    facts["system_identifier"] = header.sSystem;
    facts["generating_software"] = header.sSoftware;
    facts["created"] = header.GetDate();
    facts["records"] = TJson::array();
    for (const CLasRecord& record : vecRecords)
        facts["records"].push_back({{"user", record.GetUser()},
                                    {"id", record.GetId()},
                                    {"bytes", record.GetSize()},
                                    {"description", record.GetDescription()}});
    return facts;
}

void PrintLasFacts(const TJson& facts)
{
    if (facts.is_null())
        return;
    PrintLine("LAS version", fmt::format("{}{}", facts["version"].get<std::string>(),
                                         facts["compressed"].get<bool>() ? ", compressed (LAZ)" : ""));
    PrintLine("Point format", fmt::format("{} ({} bytes a point)", facts["point_format"].get<int>(),
                                          facts["point_bytes"].get<int>()));
    PrintReturns(facts["points_by_return"]);
    PrintLine("Scale", FormatAxes(facts["scale"]));
    PrintLine("Offset", FormatAxes(facts["offset"]));
    const char* pLabel = "Bounds in header";
    for (std::size_t k = 0; k < 3; ++k, pLabel = "")
        PrintLine(pLabel,
                  fmt::format("{} {} to {}", "xyz"[k], FormatBound(facts["bounds"]["min"][k].get<double>()),
                              FormatBound(facts["bounds"]["max"][k].get<double>())));
    PrintLine("System identifier", TextOrNone(facts["system_identifier"]));
    PrintLine("Generating software", TextOrNone(facts["generating_software"]));
    PrintLine("Created", TextOrNone(facts["created"]));
}

} // namespace zorcld
