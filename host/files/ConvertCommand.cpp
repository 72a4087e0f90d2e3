#include <host/files/ConvertCommand.h>

#include <formats/MakePrintable.h>
#include <host/files/CInputFile.h>
#include <host/files/CTakenPnts.h>
#include <host/output/CFailure.h>

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>

#include <unistd.h>

namespace zorcld
{

namespace fs = std::filesystem;

namespace
{

/// The name as a shell takes it for one word, and a command for the name of a file.
std::string Quote(const std::string& sName)
{
    std::string sText = !sName.empty() && sName.front() == '-' ? "./" + sName : sName;
    const bool bPlain = std::all_of(sText.begin(), sText.end(),
                                    [](unsigned char c)
                                    {
                                        return std::isalnum(c) != 0 ||
                                               std::string_view("/._-+,=@%").find(static_cast<char>(c)) !=
                                                   std::string_view::npos;
                                    });
    if (bPlain && !sText.empty())
        return sText;
    std::string sQuoted = "'";
    for (const char c : sText)
        sQuoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return sQuoted + "'";
}

/// File systems take names of 255 bytes, of which some are for a temporary ending. Letters stay whole.
std::string CutName(std::string sName)
{
    constexpr std::size_t c_nMaxBytes = 200;
    std::size_t nSize = std::min(sName.size(), c_nMaxBytes);
    while (nSize < sName.size() && nSize > 0 && (static_cast<unsigned char>(sName[nSize]) & 0xC0U) == 0x80U)
        --nSize;
    sName.resize(nSize);
    return sName;
}

/// Where the converted file goes: beside the file where something can be made there, else into the current
/// folder. The whole name is in its own, so that files beside each other never get the same.
/// @return the name of a file that does not exist.
std::string FindFreePath(const fs::path& path)
{
    std::error_code error; // what cannot be looked at counts as free
    fs::path folder = path.parent_path();
    if (!folder.empty() && ::access(folder.c_str(), W_OK | X_OK) != 0)
        folder.clear();
    const std::string sName = CutName(path.filename().string()) + "_converted";
    std::string sFree = (folder / (sName + ".cld")).string();
    for (int i = 2; fs::exists(fs::symlink_status(sFree, error)); ++i)
        sFree = (folder / fmt::format("{}_{}.cld", sName, i)).string();
    return sFree;
}

} // namespace

std::string FormatConvertCommand(const CInputOptions& input)
{
    if (ReplaceControls(input.sPath) != input.sPath) // it could not be printed as it is
        return {};
    const std::string sOut = FindFreePath(input.sPath);
    const std::string sType = input.sType.empty() ? "" : "--type " + input.sType + ' ';
    return fmt::format("zorcld convert {}{} {}", sType, Quote(input.sPath), Quote(sOut));
}

/// Does the shell's `*` name a file in the folder?
static bool HasFile(const fs::path& folder)
{
    std::error_code error; // a folder that cannot be looked into has none
    for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error))
    {
        std::error_code ignored;
        if (it->path().filename().native().front() != '.' && it->is_regular_file(ignored))
            return true;
    }
    return false;
}

std::string FormatCheckCommand(const CInputOptions& folder)
{
    if (!HasFile(folder.sPath))
        return {};
    const std::size_t nSize = folder.sPath.find_last_not_of('/') + 1; // of the root 0
    const std::string sType = folder.sType.empty() ? "" : "--type " + folder.sType + ' ';
    return fmt::format("zorcld check {}{}/*", sType, nSize == 0 ? "" : Quote(folder.sPath.substr(0, nSize)));
}

bool CanConvert(CInputFile& file, const CConsole& console)
{
    try
    {
        const std::unique_ptr<IPntSource> pSource = file.MakeSource();
        return pSource != nullptr && CTakenPnts::CanTake(CollectSourceFacts(*pSource, file.GetPath(), console,
                                                                            "checking ", nullptr));
    }
    catch (const CFailure&)
    {
        return false;
    }
}

std::string FindConvertCommand(CInputFile& file, const CConsole& console)
{
    std::string sCommand = FormatConvertCommand(file.GetInput());
    return !sCommand.empty() && CanConvert(file, console) ? sCommand : std::string();
}

} // namespace zorcld
