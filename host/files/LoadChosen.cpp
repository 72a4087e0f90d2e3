#include <host/files/LoadChosen.h>

#include <formats/ByteFromChannel.h>
#include <formats/CloudLimits.h>
#include <formats/LasFindings.h>
#include <host/files/CInputFile.h>
#include <host/files/CLasTally.h>
#include <host/files/ColorFindings.h>
#include <host/files/OpenLasPnts.h>
#include <host/files/SourceFacts.h>
#include <host/output/AttributeBytes.h>
#include <host/output/CConsole.h>
#include <host/output/CFailure.h>
#include <host/output/CProgressBar.h>
#include <host/output/FormatCount.h>
#include <host/output/GetFileName.h>
#include <zor4data/CPntCld.h>

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <new>

namespace zorcld
{

namespace
{

/// Hands points to a cloud, in the colours that the library would give them or with an attribute there.
class CFiller
{
public:
    CFiller(CPntCld& cloud, bool bColor, enumLasAttribute eAttribute)
        : m_cloud(cloud), m_bColor(bColor), m_eAttribute(eAttribute)
    {
    }

    void Start(std::int64_t nNumPnts)
    {
        m_cloud.OnReadType(m_bColor || HasAttribute() ? PntCldType_PntColor : PntCldType_Pnt);
        m_cloud.OnReadNumPnts(static_cast<int>(nNumPnts)); // checked: it is an int32
    }

    void Add(const CSourcePnt& pnt)
    {
        if (m_nNumPnts++ == 0)
            m_first = pnt;
        if (!pnt.IsFinite())
            ++m_nNumNotFinite;
        else if (m_first.IsFinite() && !pnt.IsInReachOf(m_first))
            ++m_nNumFar;
        m_nMaxColor = std::max({m_nMaxColor, pnt.r, pnt.g, pnt.b});
        if (HasAttribute())
        {
            const auto bytes = BytesFromAttribute(pnt.attributes.Get(m_eAttribute));
            m_cloud.OnReadPnt(pnt.x, pnt.y, pnt.z, bytes[0], bytes[1], bytes[2]);
        }
        else if (m_bColor)
            m_cloud.OnReadPnt(pnt.x, pnt.y, pnt.z, ByteFromChannel(pnt.r), ByteFromChannel(pnt.g),
                              ByteFromChannel(pnt.b));
        else
            m_cloud.OnReadPnt(pnt.x, pnt.y, pnt.z);
    }

    bool HasAttribute() const { return m_eAttribute != LasAttribute_None; }
    std::int64_t GetNumPnts() const { return m_nNumPnts; }
    std::int64_t GetNumFar() const { return m_nNumFar; }
    std::int64_t GetNumNotFinite() const { return m_nNumNotFinite; }
    std::uint16_t GetMaxColor() const { return m_nMaxColor; }

private:
    CPntCld& m_cloud;
    bool m_bColor;
    enumLasAttribute m_eAttribute;
    CSourcePnt m_first;
    std::int64_t m_nNumPnts = 0;
    std::int64_t m_nNumFar = 0;       // points out of the first one's reach
    std::int64_t m_nNumNotFinite = 0; // such a coordinate becomes that of the origin
    std::uint16_t m_nMaxColor = 0;
};

void CheckCount(std::int64_t nNumPnts, const CInputFile& file)
{
    if (nNumPnts > c_nMaxCloudPnts)
        throw CFailure(file.GetPath(), fmt::format("{} are chosen, a cloud holds {} at most",
                                                   CountOf(nNumPnts, "point"), c_nMaxCloudPnts));
}

/// What is told of colours, unless something else stands in their place.
void FindInColors(CInputFile& file, const IPntSource& source, const CFiller& filler,
                  std::vector<CFinding>& vecFindings)
{
    if (filler.HasAttribute() || !source.HasColor() || filler.GetNumPnts() == 0)
        return;
    CSourceFacts facts;
    facts.nMaxColor = filler.GetMaxColor();
    facts.nMaxColorTaken = facts.nMaxColor;
    file.FindInPnts(facts, vecFindings);
    if (facts.nMaxColor == 0)
        vecFindings.push_back(FindZeroColors(file.GetFileFacts().bColor));
}

/// What goes wrong with the points that are read so. How many there are has been counted.
std::vector<CFinding> CollectFindings(CInputFile& file, const IPntSource& source, const CLasTally& tally,
                                      const CFiller& filler)
{
    std::vector<CFinding> vecFindings;
    const auto take = [&](const std::vector<CFinding>& vecOthers)
    {
        for (const CFinding& finding : vecOthers)
            if (finding.pCode != std::string_view("las-count"))
                vecFindings.push_back(finding);
    };
    take(file.GetFacts().vecFindings);
    take(source.GetFindings());
    const std::int64_t nAnnounced = file.GetFileFacts().nAnnounced;
    const std::int64_t nNumThere = tally.Count();
    if (nNumThere > nAnnounced)
        vecFindings.push_back(FindTakenPnts(nAnnounced, nNumThere));
    else if (nNumThere < nAnnounced)
        vecFindings.push_back(FindUnreadPnts(nAnnounced, nNumThere, ZORCLD_HAS_LASZIP));
    FindInColors(file, source, filler, vecFindings);
    if (filler.GetNumFar() > 0)
        vecFindings.push_back({"span",
                               fmt::format("{} more than {} units from the first one chosen {} moved to "
                                           "that distance",
                                           FormatCount(filler.GetNumFar(), "point"), c_nReach,
                                           OneOrMany(filler.GetNumFar(), "is", "are")),
                               false, ""});
    return vecFindings;
}

/// The clock's time while points were read, and while the octree was built.
double CalcSeconds(CProgressBar::TClock::time_point from, CProgressBar::TClock::time_point to)
{
    return std::chrono::duration<double>(to - from).count();
}

} // namespace

CLoadFacts LoadChosen(CPntCld& cloud, CInputFile& file, const CLasWish& wish, const CLasTally& tally,
                      const CConsole& console)
{
    const std::int64_t nNumPnts = tally.Count(wish.choice);
    CheckCount(nNumPnts, file);
    const std::unique_ptr<IPntSource> pSource = OpenLasPnts(file, wish.choice);
    CLoadFacts facts;
    CFiller filler(cloud, file.GetFileFacts().bColor && pSource->HasColor(), wish.eAttribute);
    CProgressBar progress(console, "reading " + GetFileName(file.GetPath()));
    progress.Start();
    const auto timeStart = CProgressBar::TClock::now();
    try
    {
        filler.Start(nNumPnts);
        if (nNumPnts > 0)
            ForEachLasPnt(*pSource, file,
                          [&](const CSourcePnt& pnt)
                          {
                              progress.SetPos(static_cast<int>(filler.GetNumPnts() * 100 / nNumPnts));
                              filler.Add(pnt);
                          });
        if (filler.GetNumPnts() != nNumPnts) // places without a point would become points
            throw CFailure(file.GetPath(), "it was changed while it was read");
        const auto timeRead = CProgressBar::TClock::now();
        cloud.OnReadEnd();
        facts.dSecondsRead = CalcSeconds(timeStart, timeRead);
        facts.dSecondsIndex = CalcSeconds(timeRead, CProgressBar::TClock::now());
    }
    catch (const std::bad_alloc&)
    {
        throw CFailure(file.GetPath(), "not enough memory for the " + CountOf(nNumPnts, "point"));
    }
    progress.Stop();
    facts.dSeconds = facts.dSecondsRead + facts.dSecondsIndex;
    facts.coords = file.GetFacts().coords;
    facts.nNumRead = nNumPnts;
    facts.nNotNumbers = filler.GetNumNotFinite();
    facts.nDuplicates = std::max<std::int64_t>(nNumPnts - facts.nNotNumbers - cloud.GetNumPnts(), 0);
    facts.vecFindings = CollectFindings(file, *pSource, tally, filler);
    for (const CFinding& finding : facts.vecFindings)
        console.Note(fmt::format("{}: {}", file.GetPath(), finding.sText));
    if (nNumPnts == 0 && wish.choice.IsAsked())
        console.Note(fmt::format("{}: {}", file.GetPath(), wish.choice.FormatNone(tally.GetClasses())));
    return facts;
}

CLoadFacts LoadAsWished(CPntCld& cloud, CInputFile& file, const CLasWish& wish, const CConsole& console)
{
    if (!wish.IsAsked())
        return LoadOrAdvise(cloud, file, console);
    return LoadChosen(cloud, file, wish, CollectLasTally(file, console), console);
}

} // namespace zorcld
