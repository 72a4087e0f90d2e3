#include <host/files/CGridFile.h>

#include <formats/AsciiGridFindings.h>
#include <host/output/PrintLine.h>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace zorcld
{

const CFileKind CGridFile::c_kind = {
    PntCldFile_AsciiGrid,
    "grid",
    "ESRI ASCII grid",
    {"asc", "agr"},
    [](const std::string& sPath, CByteReader&& reader) -> std::unique_ptr<CInputFile>
    { return std::make_unique<CGridFile>(sPath, std::move(reader)); }};

CGridFile::CGridFile(const std::string& sPath, CByteReader&& reader)
    : CInputFile(c_kind, sPath, std::move(reader)), m_meaning(ReadAsciiGridMeaning(m_reader))
{
    const CFileCause cause = m_meaning.FindTakenCause();
    m_facts.vecFindings = FindAsciiGridFindings(m_meaning);
    if (!cause.empty() && !cause.IsRefusal())
        m_facts.vecFindings.push_back({"misread", cause, true, ""});
    if (m_meaning.FindCause().empty() && (!cause.empty() || !m_meaning.IsPlaceLost()))
        m_facts.vecRemarks.push_back(
            {"grid-corner",
             fmt::format("its points are the upper left corners of their cells, half a cell ({:.10g} by "
                         "{:.10g}) from the "
                         "centres, where 'zorcld convert --cell-centre' puts them",
                         0.5 * m_meaning.GetCellWidth(), 0.5 * m_meaning.GetCellHeight()),
             false, ""});
}

std::optional<zor::geom::PNT_2D> CGridFile::FindCentreShift() const
{
    if (!m_meaning.FindCause().empty())
        return {};
    return zor::geom::PNT_2D(0.5 * m_meaning.GetCellWidth(), -0.5 * m_meaning.GetCellHeight());
}

void CGridFile::Describe(nlohmann::ordered_json& info) const
{
    info["grid"] = nlohmann::ordered_json();
    if (!m_meaning.FindCause().empty())
        return;
    info["grid"]["columns"] = m_meaning.nNumCols;
    info["grid"]["rows"] = m_meaning.nNumRows;
    info["grid"]["cell"] = {m_meaning.GetCellWidth(), m_meaning.GetCellHeight()};
    info["grid"]["points_at"] = m_meaning.IsPlaceLost() ? "nowhere" : "upper left corner";
}

void CGridFile::Print(const nlohmann::ordered_json& info) const
{
    const nlohmann::ordered_json& grid = info["grid"];
    if (grid.is_null())
        return;
    PrintLine("Cells", fmt::format("{} x {} of {:.10g} by {:.10g}", grid["columns"].get<std::int64_t>(),
                                   grid["rows"].get<std::int64_t>(), grid["cell"][0].get<double>(),
                                   grid["cell"][1].get<double>()));
    if (!m_meaning.IsPlaceLost())
        PrintLine("Points at", "the upper left corner of their cells, half a cell from the centre");
}

} // namespace zorcld
