#ifndef HOST_FILES_CLASFILE_H
#define HOST_FILES_CLASFILE_H

#include <formats/CLasGuard.h>
#include <formats/CLasSource.h>
#include <host/files/CFileKind.h>
#include <host/files/CInputFile.h>

namespace zorcld
{

/// A LAS or LAZ file.
class CLasFile final : public CInputFile
{
public:
    static const CFileKind c_kind;

    CLasFile(const std::string& sPath, CByteReader&& reader);

    bool IsCheckedByLoading() const override { return true; }
    bool IsPlaceTaken() const override;

    void FindInPnts(const CSourceFacts& facts, std::vector<CFinding>& vecFindings) const override;
    void FindInCloud(const CPntCld& cloud, std::vector<CFinding>& vecFindings) override;
    void FindInCount(std::int64_t nNumRead, std::vector<CFinding>& vecFindings) override;
    void Describe(nlohmann::ordered_json& info) const override;
    void Print(const nlohmann::ordered_json& info) const override;

private:
    bool HasLeftOutInPnts() const override { return true; }
    CMadeSource TryMakeSource() override { return MakeLasSource(m_guard); }

    CLasGuard m_guard;
    const CLasHeader& m_header;           // the guard's
    std::vector<CLasRecord> m_vecRecords; // up to c_nMaxRecords of them
    std::array<double, 3> m_adFirst{};    // x, y, z of the first point
};

} // namespace zorcld

#endif
