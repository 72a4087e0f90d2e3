#include <host/commands/Commands.h>
#include <host/files/AddInputOptions.h>
#include <host/files/CFileKind.h>
#include <host/files/CheckFile.h>
#include <host/files/DescribeFacts.h>
#include <host/output/CConsole.h>
#include <host/output/FormatCount.h>
#include <host/output/PrintMessage.h>

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <memory>

namespace zorcld
{

namespace
{

using TJson = nlohmann::ordered_json;

constexpr int c_nUnreadable = 1;
constexpr int c_nWarnings = 3;

struct COptions
{
    std::vector<std::string> vecPaths;
    std::string sType;
    bool bJson = false;
};

/// @return the command or the advice that helps; empty: nothing does.
std::string GetHelp(const CCheckResult& result, bool bConvert, const std::string& sHint)
{
    return bConvert ? result.sCommand : sHint;
}

int GetStatus(const CCheckResult& result)
{
    if (!result.cause.empty())
        return c_nUnreadable;
    return result.vecFindings.empty() ? 0 : c_nWarnings;
}

TJson ToJson(const CCheckResult& result)
{
    constexpr const char* c_statuses[] = {"ok", "unreadable", "", "warnings"};
    TJson file;
    file["file"] = result.sPath;
    file["type"] = result.pKind == nullptr ? TJson() : TJson(result.pKind->pName);
    file["points"] = result.nNumPnts < 0 ? TJson() : TJson(result.nNumPnts);
    file["status"] = c_statuses[GetStatus(result)];
    DescribeCause(result.cause, file);
    DescribeHead(result.facts, file);
    const std::string sHelp = GetHelp(result, result.bConvert, "");
    file["help"] = sHelp.empty() ? TJson() : TJson(sHelp);
    file["warnings"] = TJson::array();
    for (const CFinding& finding : result.vecFindings)
    {
        const std::string sFindingHelp = GetHelp(result, finding.bConvert, finding.sHint);
        file["warnings"].push_back({{"code", finding.pCode},
                                    {"text", finding.sText},
                                    {"help", sFindingHelp.empty() ? TJson() : TJson(sFindingHelp)}});
    }
    file["remarks"] = TJson::array();
    for (const CFinding& remark : result.vecRemarks)
        file["remarks"].push_back({{"code", remark.pCode}, {"text", remark.sText}});
    return file;
}

void Print(const CCheckResult& result)
{
    const auto print = [](const std::string& sText) { PrintMessage(stdout, sText); };
    std::string sFacts = result.pKind == nullptr ? "" : result.pKind->pTitle;
    if (result.nNumPnts >= 0 && result.cause.empty())
        sFacts += ", " + FormatCount(result.nNumPnts, "point");
    bool bConvert = result.bConvert;
    if (!result.cause.empty())
        print(result.sPath + ": cannot be loaded: " + result.cause.sText);
    else
        print(result.sPath + ": " + sFacts + (result.vecFindings.empty() ? ": no problems found" : ""));
    for (const CFinding& finding : result.vecFindings)
    {
        print("    " + finding.sText);
        if (!finding.bConvert && !finding.sHint.empty())
            print("        what helps: " + finding.sHint);
        bConvert = bConvert || finding.bConvert;
    }
    if (bConvert)
        print("        what helps: " + result.sCommand);
    for (const CFinding& remark : result.vecRemarks)
        print("    " + remark.sText);
}

void Check(const COptions& options, const CConsole& console)
{
    bool bUnreadable = false;
    bool bWarnings = false;
    TJson files = TJson::array();
    for (const std::string& sPath : options.vecPaths)
    {
        const CCheckResult result = CheckFile({sPath, options.sType}, console);
        bUnreadable = bUnreadable || GetStatus(result) == c_nUnreadable;
        bWarnings = bWarnings || GetStatus(result) == c_nWarnings;
        if (options.bJson)
            files.push_back(ToJson(result));
        else
            Print(result);
    }
    if (options.bJson)
        fmt::print("{}\n", TJson{{"files", files}}.dump(2, ' ', false, TJson::error_handler_t::replace));
    if (bUnreadable || bWarnings)
        throw CLI::RuntimeError(bUnreadable ? c_nUnreadable : c_nWarnings);
}

} // namespace

void AddCheckCommand(CLI::App& app, const CConsole& console)
{
    const auto pOptions = std::make_shared<COptions>();
    CLI::App* const pCommand = app.add_subcommand(
        "check", "Tells what would go wrong or be lost if files were loaded, and what helps");
    pCommand->add_option("FILE", pOptions->vecPaths, "Files to look at")->required();
    AddTypeOption(*pCommand, pOptions->sType);
    pCommand->add_flag("--json", pOptions->bJson, "Print the result as JSON");
    pCommand->footer(
        "Exit status: 0 no problems found, 3 warnings, 1 a file cannot be loaded; of several files "
        "1 goes before 3.");
    pCommand->callback([pOptions, &console] { Check(*pOptions, console); });
}

} // namespace zorcld
