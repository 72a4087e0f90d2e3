#include <host/files/NoteLeftOut.h>

#include <host/files/CInputFile.h>
#include <host/output/CConsole.h>
#include <host/output/FormatCount.h>

#include <fmt/format.h>

namespace zorcld
{

void NoteLeftOut(const std::vector<CLeftOut>& vecLeftOut, const std::string& sOutPath,
                 const CConsole& console)
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
            sText += (one.nNum < 0 ? "" : fmt::format(" ({})", FormatCount(one.nNum, one.pNoun))) +
                     (bLast ? "" : "; ");
    }
    if (!sText.empty())
        console.Note(fmt::format("{}: not written: {}", sOutPath, sText));
}

void NoteLeftOut(CInputFile& file, const std::string& sOutPath, const CConsole& console)
{
    if (!console.IsQuiet())
        NoteLeftOut(file.FindLeftOut(), sOutPath, console);
}

} // namespace zorcld
