#include <host/files/AddInputOptions.h>

#include <host/files/CFileKind.h>
#include <host/files/OpenInputFile.h>

#include <CLI/CLI.hpp>

namespace zorcld
{

void AddTypeOption(CLI::App& command, std::string& sType)
{
    std::vector<std::string> vecNames;
    for (const CFileKind* pKind : GetFileKinds())
        vecNames.emplace_back(pKind->pName);
    command.add_option("--type", sType, "Type of the file, where first bytes and extension mislead")
        ->check(CLI::IsMember(vecNames));
}

void AddInputOptions(CLI::App& command, CInputOptions& input)
{
    command.add_option("FILE", input.sPath, "File to read")->required();
    AddTypeOption(command, input.sType);
}

} // namespace zorcld
