#ifndef HOST_FILES_CLASFILE_H
#define HOST_FILES_CLASFILE_H

#include <formats/LasHeader.h>
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

    /// Null for LAZ, of which only decoding it tells whether it is whole.
    std::unique_ptr<IPntSource> MakeSource() override;
    bool IsCheckedByLoading() const override { return true; }

    void FindInPnts(const CSourceFacts& facts, std::vector<CFinding>& vecFindings) const override;
    void FindInCloud(const CPntCld& cloud, std::vector<CFinding>& vecFindings) const override;
    std::int64_t CountRead(std::int64_t nNumCalls, std::vector<CFinding>& vecFindings) const override;
    void Describe(nlohmann::ordered_json& info) const override;
    void Print(const nlohmann::ordered_json& info) const override;

private:
    void FindCountFindings();

    CLasHeader m_header;
    std::string m_sHeaderCause; // without regard to whether this program reads LAS at all
};

} // namespace zorcld

#endif
