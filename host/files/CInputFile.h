#ifndef HOST_FILES_CINPUTFILE_H
#define HOST_FILES_CINPUTFILE_H

#include <formats/CByteReader.h>
#include <formats/CCoordSystem.h>
#include <formats/CFileCause.h>
#include <formats/IPntSource.h>
#include <host/files/CInputOptions.h>
#include <zor3geom/PNT_2D.h>
#include <zor4data/CFileFacts.h>

#include <nlohmann/json_fwd.hpp>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class CPntCld;

namespace zorcld
{

struct CFileKind;
struct CSourceFacts;

/// What its head tells of a file beside what the library knows of it.
struct CInputFacts
{
    std::int64_t nHeld = -1;           ///< points that it has room for; -1: not known
    bool bDuplicates = true;           ///< points at one x and y are removed while it is loaded
    std::vector<CFinding> vecFindings; ///< what the library tells of it as losses, and what helps
    std::vector<CFinding> vecRemarks;  ///< what is as it should be, and surprises all the same
    CCoordSystem coords;               ///< none for most kinds of file
    bool bNoProgress = false; ///< it announces items by the billion that take no bytes: no call for each
};

/// A file that a command reads: opened once, its head parsed once, then handed down. What the file announces,
/// and why it cannot be read, the library tells (`FindFileFacts`); what repairs it is found here.
///
/// The class of a kind parses the head in its constructor, which does not fail: a head in which anything is
/// wrong gives facts as far as they go.
class CInputFile
{
public:
    virtual ~CInputFile() = default;
    CInputFile(const CInputFile&) = delete;
    CInputFile& operator=(const CInputFile&) = delete;

    const CFileKind& GetKind() const { return m_kind; }
    const CInputOptions& GetInput() const { return m_input; } ///< as the user named it
    const std::string& GetPath() const { return m_input.sPath; }
    std::int64_t GetSize() const { return m_reader.GetSize(); }
    const CInputFacts& GetFacts() const { return m_facts; }

    /// What the library knows of the file. Found once and kept; reads its head.
    const CFileFacts& GetFileFacts();

    /// @return the points that it announces and has room for; -1: it does not say.
    std::int64_t CalcNumPnts();

    /// Keeps the type that the user gave the file, empty where it was found out.
    void SetToldType(const std::string& sType) { m_input.sType = sType; }

    /// @return why the library does not load the file, or nothing useful from it, as far as that is known
    ///         before the points are read; empty: nothing found.
    virtual CFileCause FindHeadCause();

    /// The same for good: reads the data as far as that takes and they have not been read before.
    virtual CFileCause FindCause() { return FindHeadCause(); }

    /// The points as the file means them; more than the library takes. The source uses this file's reader:
    /// one pass at a time, and none after the file is gone.
    /// @return null where only the library reads the points.
    /// @throws CFailure with the cause when the file cannot be read.
    std::unique_ptr<IPntSource> MakeSource();

    /// What the file has beside places and colours; empty where its source cannot be made. May read the file
    /// once more.
    std::vector<CLeftOut> FindLeftOut();

    /// Reads the points that the library takes, where it takes them as the file means them.
    /// @return false where it does not, or where the points cannot be read.
    bool ReadTaken(const IPntSource::TOnPnt& onPnt);

    /// From where the points of a grid are to where the centres of their cells are.
    /// @return none for what is no grid.
    virtual std::optional<zor::geom::PNT_2D> FindCentreShift() const { return {}; }

    /// Where there is no source: does only loading it tell whether the file is whole?
    virtual bool IsCheckedByLoading() const { return false; }

    /// Adds what goes wrong with the points of this kind of file when they are loaded.
    /// @param facts  from one pass over the file's source.
    virtual void FindInPnts(const CSourceFacts& /*facts*/, std::vector<CFinding>& /*vecFindings*/) const {}

    /// Where there is no source: adds what only a pass over the points in the file tells. Slow.
    virtual void FindByReading(std::vector<CFinding>& /*vecFindings*/) {}

    /// Adds what went wrong with the points while the file was loaded. May read the file again.
    virtual void FindInCloud(const CPntCld& cloud, std::vector<CFinding>& vecFindings);

    /// Does a cloud that has been loaded from this file have the points where the file means them, those
    /// apart that are told to lie out of reach?
    virtual bool IsPlaceTaken() const { return false; }

    /// Adds what the number of points tells that the library has read.
    virtual void FindInCount(std::int64_t /*nNumRead*/, std::vector<CFinding>& /*vecFindings*/) {}

    /// Makes good in the loaded cloud what was damaged in the file and can be found again.
    virtual void Mend(CPntCld& /*cloud*/) {}

    /// Adds what else the head says, for `info --json`.
    virtual void Describe(nlohmann::ordered_json& /*info*/) const {}

    /// Prints the same for people, on standard output, a label of 20 characters before each.
    virtual void Print(const nlohmann::ordered_json& /*info*/) const {}

protected:
    CInputFile(const CFileKind& kind, const std::string& sPath, CByteReader&& reader);

    CByteReader m_reader;
    CInputFacts m_facts;  // filled in by the constructor of the kind
    std::string m_sWrong; // this too: why nothing useful is loaded from a file that is not refused

private:
    virtual CMadeSource TryMakeSource() = 0;

    /// Must the points be read to know what they have beside places and colours?
    virtual bool HasLeftOutInPnts() const { return false; }

    /// Do all points get one x and y that are none, which has been told?
    virtual bool IsPlaceLost() const { return false; }

    /// @return why the points cannot be read as the header means them, though the library takes it.
    std::string FindUnreadable();

    virtual CFileFacts CalcFileFacts() const;

    const CFileKind& m_kind;
    CInputOptions m_input;
    std::optional<CFileFacts> m_fileFacts; // once found
};

} // namespace zorcld

#endif
