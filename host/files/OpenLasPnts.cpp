#include <host/files/OpenLasPnts.h>

#include <host/files/CFileKind.h>
#include <host/files/CInputFile.h>
#include <host/output/CFailure.h>

#include <fmt/format.h>

namespace zorcld
{

namespace
{

/// The points of another source, without those of the classes that are not kept. That none is left counts as
/// damage: nothing can be made of it.
class CChosenSource final : public IPntSource
{
public:
    CChosenSource(std::unique_ptr<IPntSource> pSource, const CClassChoice& choice)
        : m_pSource(std::move(pSource)), m_choice(choice)
    {
        m_pSource->CountLeftOutOf([choice](const CSourcePnt& pnt)
                                  { return choice.IsKept(pnt.attributes.nClass); });
    }

    bool HasColor() const override { return m_pSource->HasColor(); }

    std::int64_t GetNumAnnounced() const override { return m_pSource->GetNumAnnounced(); }

    std::string ForEach(const TOnPnt& onPnt) override
    {
        TLasClasses classes;
        const std::string sCause = m_pSource->ForEach(
            [&](const CSourcePnt& pnt)
            {
                classes.set(pnt.attributes.nClass);
                if (m_choice.IsKept(pnt.attributes.nClass))
                    onPnt(pnt);
            });
        return sCause.empty() && (classes & m_choice.GetKept()).none() ? m_choice.FormatNone(classes)
                                                                       : sCause;
    }

    std::int64_t GetNumUntaken() const override { return m_pSource->GetNumUntaken(); }

    std::vector<CFinding> GetFindings() const override { return m_pSource->GetFindings(); }

    std::vector<CLeftOut> GetLeftOut() const override { return m_pSource->GetLeftOut(); }

private:
    std::unique_ptr<IPntSource> m_pSource;
    CClassChoice m_choice;
};

} // namespace

std::unique_ptr<IPntSource> OpenLasPnts(CInputFile& file, const CClassChoice& choice)
{
    if (file.GetKind().eFile != PntCldFile_Las)
        throw CFailure(file.GetPath(),
                       fmt::format("points of {} have no classes, intensities or returns: those of LAS and "
                                   "LAZ have",
                                   file.GetKind().pTitle));
    std::unique_ptr<IPntSource> pSource = file.MakeSource();
    if (pSource == nullptr)
        throw CFailure(file.GetPath(), "this zorcld was built without LASzip, which it takes to read "
                                       "classes, intensities and returns");
    if (!choice.IsAsked())
        return pSource;
    return std::make_unique<CChosenSource>(std::move(pSource), choice);
}

void ForEachLasPnt(IPntSource& source, const CInputFile& file, const IPntSource::TOnPnt& onPnt)
{
    const std::string sCause = source.ForEach(onPnt);
    if (!sCause.empty())
        throw CFailure(file.GetPath(), sCause);
}

} // namespace zorcld
