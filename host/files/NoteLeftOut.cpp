#include <host/files/NoteLeftOut.h>

#include <host/files/CInputFile.h>
#include <host/files/OpenLasPnts.h>
#include <host/output/CConsole.h>
#include <host/output/FormatCount.h>

#include <fmt/format.h>

namespace zorcld
{

namespace
{

/// @param pWhose  put behind every number.
std::string FormatLeftOut(const std::vector<CLeftOut>& vecLeftOut, const char* pWhose)
{
    std::string sText;
    for (std::size_t i = 0; i < vecLeftOut.size(); ++i)
    {
        const CLeftOut& one = vecLeftOut[i];
        sText += one.sName;
        const bool bLast = i + 1 == vecLeftOut.size();
        if (!bLast && vecLeftOut[i + 1].HasSameNum(one)) // they share what stands behind the last of them
            sText += ", ";
        else
            sText += (one.nNum < 0 ? "" : fmt::format(" ({}{})", FormatCount(one.nNum, one.pNoun), pWhose)) +
                     (bLast ? "" : "; ");
    }
    return sText;
}

void NoteText(const std::string& sText, const std::string& sOutPath, const CConsole& console)
{
    if (!sText.empty())
        console.Note(fmt::format("{}: not written: {}", sOutPath, sText));
}

/// What the points of the chosen classes have.
std::vector<CLeftOut> FindLeftOut(CInputFile& file, const CClassChoice& choice)
{
    if (!choice.IsAsked())
        return file.FindLeftOut();
    const std::unique_ptr<IPntSource> pSource = OpenLasPnts(file, choice);
    static_cast<void>(pSource->ForEach([](const CSourcePnt&) {})); // what is damaged has been told
    return pSource->GetLeftOut();
}

} // namespace

void NoteLeftOut(const std::vector<CLeftOut>& vecLeftOut, const std::string& sOutPath,
                 const CConsole& console)
{
    NoteText(FormatLeftOut(vecLeftOut, ""), sOutPath, console);
}

void NoteLeftOut(CInputFile& file, const CClassChoice& choice, std::int64_t nLoaded, std::int64_t nWritten,
                 const std::string& sOutPath, const CConsole& console)
{
    if (console.IsQuiet() || nWritten == 0)
        return;
    const char* const pWhose = nWritten < nLoaded ? " read" : "";
    NoteText(FormatLeftOut(FindLeftOut(file, choice), pWhose), sOutPath, console);
}

} // namespace zorcld
