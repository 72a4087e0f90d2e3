#include <companions/LookAtFile.h>

#include <formats/AsciiGridCells.h>
#include <formats/AsciiGridFindings.h>
#include <formats/CAsciiGridMeaning.h>
#include <formats/CByteReader.h>
#include <formats/CLasGuard.h>
#include <formats/CLasSource.h>
#include <formats/CPlyMeaning.h>
#include <formats/CPlySource.h>
#include <formats/CPlyWalk.h>
#include <formats/Compact.h>
#include <formats/LasFindings.h>
#include <formats/NativeFacts.h>
#include <formats/NativeFindings.h>
#include <formats/PlyFacts.h>
#include <formats/PlyFindings.h>
#include <io/las/CLasReader.h>

#include <algorithm>
#include <cmath>

namespace
{

/// Takes bounds that can be those of points.
void SetBounds(const std::array<double, 3>& adMin, const std::array<double, 3>& adMax, CFileFacts& facts)
{
    for (std::size_t k = 0; k < adMin.size(); ++k)
        if (!std::isfinite(adMin[k]) || !std::isfinite(adMax[k]) || adMin[k] > adMax[k])
            return;
    facts.bBounds = true;
    facts.bounds = {adMin[0], adMin[1], adMin[2], adMax[0], adMax[1], adMax[2]};
}

void LookAtNative(CByteReader& reader, CFileLook& look)
{
    const CNativeFacts native = look.bLosses ? FindNativeFacts(reader) : FindNativeHead(reader);
    const CNativeHeader& header = native.header;
    look.cause = header.FindCause();
    if (!header.IsTypeKnown())
        return;
    look.facts.nAnnounced = std::max<std::int64_t>(header.nNumPnts, 0);
    look.facts.bColor = header.nType == 1;
    if (look.bLosses)
        look.vecFindings = FindNativeFindings(native);
    if (!native.bTreeHeader || native.nNumHeld == 0 || !native.treeHeader.IsPossible())
        return;
    std::array<double, 3> adMin{};
    std::array<double, 3> adMax{};
    for (std::size_t k = 0; k < adMin.size(); ++k)
    {
        const double dCentre = native.treeHeader.anCentre[k] / c_dCompactScale + header.afOrg[k];
        const double dHalf = 0.5 * native.treeHeader.anExtent[k] / c_dCompactScale;
        adMin[k] = dCentre - dHalf;
        adMax[k] = dCentre + dHalf;
    }
    SetBounds(adMin, adMax, look.facts);
}

void LookAtPly(CByteReader& reader, CFileLook& look)
{
    CPlyMeaning meaning;
    CPlyHeader header;
    static_cast<void>(header.Read(reader, &meaning)); // refused or not: its cause tells
    CPlyWalk walk(header, reader.GetSize());
    reader.SetOnBlock([&](std::int64_t nPos, std::string_view sBlock) { walk.Take(nPos, sBlock); });
    while (walk.GetPosWanted() >= 0 && reader.ReadBlockAt(walk.GetPosWanted()))
    {
    }
    reader.SetOnBlock(nullptr);
    look.cause = walk.GetCause();
    look.facts = FindPlyFacts(header);
    if (!look.bLosses || look.cause.IsRefusal() || !meaning.GetCause().empty())
        return;
    look.vecFindings = FindPlyFindings(meaning);
    const CMadeSource made = MakePlySource(meaning, reader);
    if (made.pSource != nullptr)
        look.vecLeftOut = made.pSource->GetLeftOut();
}

/// @return whether the library takes a header and a height behind it.
bool HasTakenCell(std::FILE* pFile, bool& bHeader)
{
    if (fseeko(pFile, 0, SEEK_SET) != 0)
        return false;
    CAsciiGridText text(pFile);
    CAsciiGridHeader header;
    bHeader = header.Read(text);
    bool bCell = false;
    if (bHeader)
        ForEachAsciiGridCell(text, header,
                             [&](std::int32_t, std::int32_t, double)
                             {
                                 bCell = true;
                                 return false;
                             });
    return bCell;
}

/// Counts beyond the library's are none by their words.
CFileCause FindNoCellsCause(const CAsciiGridMeaning& meaning)
{
    CFileCause cause = meaning.FindCause();
    if (cause.empty())
        cause = {FileCause_GridNoCells,
                 "no cell holds a height: there are none, or all have the no-data value"};
    return cause;
}

/// The words tell why, the library's own reading tells whether.
void LookAtGrid(CByteReader& reader, CFileLook& look)
{
    const CAsciiGridMeaning meaning = ReadAsciiGridMeaning(reader);
    bool bHeader = false;
    const bool bCell = HasTakenCell(reader.GetFile(), bHeader);
    look.cause = meaning.FindTakenCause();
    if (bCell)
        look.cause.eCause = FileCause_None;
    else if (bHeader && look.cause.empty())
        look.cause = FindNoCellsCause(meaning);
    else if (bHeader)
        look.cause.eCause = FileCause_GridNoCells;
    else if (!look.cause.IsRefusal())
        look.cause = {FileCause_GridLine,
                      "its header has a line that is no key with a value, or too long a one"};
    if (look.bLosses && !look.cause.IsRefusal())
        look.vecFindings = FindAsciiGridFindings(meaning);
}

void LookAtLas(const zor::String& sPath, CFileLook& look)
{
    CLasGuard guard(sPath.c_str());
    const bool bLet = guard.Check();
    look.cause = CLasReader::FindCause(guard);
    if (!bLet)
        return;
    const CLasHeader& header = guard.GetHeader();
    // The file's count has 64 bits and no sign.
    look.facts.nAnnounced = header.GetNumAnnounced();
    look.facts.bColor = header.IsColorTaken();
    if (header.nNumPnts != 0)
        SetBounds(header.adMin, header.adMax, look.facts);
    if (!look.bLosses)
        return;
    look.vecFindings = FindLasFindings(guard, false);
    if (header.HasColor() && !header.IsColorTaken())
        look.vecFindings.push_back(FindUntakenColors(header, false));
    const CMadeSource made = MakeLasSource(guard);
    if (made.pSource != nullptr)
        look.vecLeftOut = made.pSource->GetLeftOut();
}

} // namespace

void LookAtFile(const zor::String& sPath, CFilePtr pFile, CFileLook& look)
{
    const enumPntCldFile eType = look.facts.eType;
    if (eType == PntCldFile_Las)
        return LookAtLas(sPath, look);
    CByteReader reader(std::move(pFile));
    if (eType == PntCldFile_Native)
        LookAtNative(reader, look);
    else if (eType == PntCldFile_Ply)
        LookAtPly(reader, look);
    else if (eType == PntCldFile_AsciiGrid)
        LookAtGrid(reader, look);
    else
        look.cause = {FileCause_UnknownKind, "there is no kind of file with this number"};
}
