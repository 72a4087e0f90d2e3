#ifndef HOST_FILES_CGRIDFILE_H
#define HOST_FILES_CGRIDFILE_H

#include <formats/CAsciiGridMeaning.h>
#include <formats/CAsciiGridSource.h>
#include <host/files/CFileKind.h>
#include <host/files/CInputFile.h>

namespace zorcld
{

/// An ESRI ASCII grid.
class CGridFile final : public CInputFile
{
public:
    static const CFileKind c_kind;

    CGridFile(const std::string& sPath, CByteReader&& reader);

    std::optional<zor::geom::PNT_2D> FindCentreShift() const override;
    void Describe(nlohmann::ordered_json& info) const override;
    void Print(const nlohmann::ordered_json& info) const override;

private:
    bool IsPlaceLost() const override { return m_meaning.IsPlaceLost(); }
    CMadeSource TryMakeSource() override { return MakeAsciiGridSource(m_meaning, m_reader); }

    CAsciiGridMeaning m_meaning; // of its header
};

} // namespace zorcld

#endif
