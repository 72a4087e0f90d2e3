#include <host/files/CShiftedSource.h>

#include <utility>

namespace zorcld
{

namespace
{

class CShiftedSource final : public IPntSource
{
public:
    CShiftedSource(std::unique_ptr<IPntSource> pSource, const zor::geom::PNT_2D& shift)
        : m_pSource(std::move(pSource)), m_shift(shift)
    {
    }

    bool HasColor() const override { return m_pSource->HasColor(); }
    std::int64_t GetNumAnnounced() const override { return m_pSource->GetNumAnnounced(); }
    std::int64_t GetNumUntaken() const override { return m_pSource->GetNumUntaken(); }
    std::vector<CFinding> GetFindings() const override { return m_pSource->GetFindings(); }
    std::vector<CLeftOut> GetLeftOut() const override { return m_pSource->GetLeftOut(); }

    std::string ForEach(const TOnPnt& onPnt) override
    {
        return m_pSource->ForEach(
            [&](CSourcePnt pnt)
            {
                pnt.x += m_shift.x;
                pnt.y += m_shift.y;
                onPnt(pnt);
            });
    }

private:
    std::unique_ptr<IPntSource> m_pSource;
    zor::geom::PNT_2D m_shift;
};

} // namespace

std::unique_ptr<IPntSource> MakeShiftedSource(std::unique_ptr<IPntSource> pSource,
                                              const zor::geom::PNT_2D& shift)
{
    return std::make_unique<CShiftedSource>(std::move(pSource), shift);
}

} // namespace zorcld
