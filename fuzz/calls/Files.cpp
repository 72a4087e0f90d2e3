// Calls that write, load and look at files.

#include <fuzz/calls/CCalls.h>
#include <tests/io/CMemFile.h>
#include <zor4data/CFileFacts.h>
#include <zor4data/CFileUnits.h>
#include <zor4data/LoadNative.h>
#include <zor4data/ReadPnts.h>
#include <zor4data/SaveCloud.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace
{

namespace fs = std::filesystem;

/// A folder that goes away with the program.
class CFolder
{
public:
    CFolder()
    {
        std::string sPath = (fs::temp_directory_path() / "zor4data-calls-XXXXXX").string();
        Check(mkdtemp(sPath.data()) != nullptr, "there is room for a folder");
        m_sPath = sPath;
    }
    CFolder(const CFolder&) = delete;
    CFolder& operator=(const CFolder&) = delete;
    ~CFolder()
    {
        std::error_code ec;
        fs::remove_all(m_sPath, ec);
    }

    const std::string& GetPath() const { return m_sPath; }

private:
    std::string m_sPath;
};

std::string ReadAll(const std::string& sPath)
{
    std::ifstream stream(sPath, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// What WriteToFile makes of a cloud.
std::string Write(CPntCld& cld)
{
    const CMemFile file;
    cld.WriteToFile(file.GetPath(), 1);
    return ReadAll(file.GetPath());
}

template <class T>
void Append(std::string& sBytes, T value)
{
    sBytes.append(static_cast<const char*>(static_cast<const void*>(&value)), sizeof value);
}

struct CPlyPnt
{
    float x;
    float y;
    float z;
    std::array<std::uint8_t, 3> color;
};

std::string MakePly(const std::vector<CPlyPnt>& vecPnts, bool bColor)
{
    std::string sBytes = "ply\nformat binary_little_endian 1.0\nelement vertex " +
                         std::to_string(vecPnts.size()) +
                         "\nproperty float x\nproperty float y\nproperty float z\n";
    if (bColor)
        sBytes += "property uchar red\nproperty uchar green\nproperty uchar blue\n";
    sBytes += "end_header\n";
    for (const CPlyPnt& pnt : vecPnts)
    {
        Append(sBytes, pnt.x);
        Append(sBytes, pnt.y);
        Append(sBytes, pnt.z);
        if (bColor)
            Append(sBytes, pnt.color);
    }
    return sBytes;
}

/// Counts what a reader delivers; each call may stop it.
class CCounter final : public IPntCldReadListener
{
public:
    explicit CCounter(CCallHost& host) : m_host(host) {}

    void OnReadType(enumPntCldType) override { m_host.Call(); }
    void OnReadNumPnts(int nNumPnts) override
    {
        m_nAnnounced = nNumPnts;
        m_host.Call();
    }
    void OnReadPnt(double, double, double, unsigned char, unsigned char, unsigned char) override
    {
        ++m_nNumPnts;
        m_host.Call();
    }
    void OnReadPnt(double, double, double) override
    {
        ++m_nNumPnts;
        m_host.Call();
    }
    void OnReadEnd() override { m_bEnd = true; }

    int m_nAnnounced = 0;
    int m_nNumPnts = 0;
    bool m_bEnd = false;

private:
    CCallHost& m_host;
};

} // namespace

const std::string& CCalls::GetFolder()
{
    static const CFolder folder;
    return folder.GetPath();
}

void CCalls::CallWriteAndLoad()
{
    CPair& from = PickPair();
    CPair& to = PickPair();
    const CMemFile file;
    bool bWritten = false;
    if (Try([&] { bWritten = from.cld.WriteToFile(file.GetPath(), 1); }) != enumEnd::Done)
        return;
    Check(bWritten == (from.model.GetStore() != nullptr), "WriteToFile's result");
    const bool bProgress = m_input.Bool();
    bool bLoaded = false;
    const zor::String sPath(file.GetPath());
    const enumEnd eEnd = Try(
        [&]
        {
            bLoaded = bProgress ? LoadNative(to.cld, &m_host, sPath)
                                : to.cld.ReadFromFile(&m_host, PntCldFile_Native, sPath);
        });
    if (eEnd == enumEnd::NoMemory) // the path may be what found no room
    {
        to.model.sPath = to.cld.GetFilePath().c_str();
        to.model.nFileType = to.cld.GetFileType();
        return;
    }
    to.model.sPath = file.GetPath();
    to.model.nFileType = PntCldFile_Native;
    if (eEnd == enumEnd::Stopped)
        return;
    CModelCld saved = from.model;
    to.model.nType = static_cast<std::int16_t>(from.model.nType); // the file holds 16 bits of it
    CModelStore* const pStore = to.model.GetStore();
    Check(bLoaded == (pStore != nullptr), "what names a type loads");
    if (pStore != nullptr)
        pStore->Load(saved.GetStore() != nullptr ? *saved.GetStore() : CModelStore::NoStore());
}

// The target is the old file or the new one, whatever happens, and nothing lies beside it.
void CCalls::CallSaveCloud()
{
    CPair& pair = PickPair();
    const std::string sPath = GetFolder() + "/cloud.cld";
    if (m_sSavedFile.empty())
        fs::remove(sPath);
    const CModelStore* const pStore = pair.model.GetStore();
    const bool bCanBeSaved = pStore != nullptr && pStore->pArray != nullptr && pStore->pTree != nullptr;
    const std::string sNew = bCanBeSaved ? Write(pair.cld) : std::string();
    enumFileCause eCause = FileCause_NothingToSave;
    const bool bTold = m_input.Bool();
    const TOnTempFile onTempFile = [this](const zor::String&) { m_host.Call(); };
    const zor::String sTarget(sPath.c_str());
    const enumEnd eEnd = Try(
        [&] { eCause = bTold ? SaveCloud(pair.cld, sTarget, onTempFile) : SaveCloud(pair.cld, sTarget); });
    const std::string sNow = ReadAll(sPath);
    if (eEnd == enumEnd::Done)
    {
        Check(eCause == (bCanBeSaved ? FileCause_None : FileCause_NothingToSave), "SaveCloud's result");
        Check(sNow == (bCanBeSaved ? sNew : m_sSavedFile), "SaveCloud's file");
    }
    Check(sNow == m_sSavedFile || sNow == sNew, "the file is the old one or the new one");
    m_sSavedFile = sNow;
    const auto nNumFiles = std::distance(fs::directory_iterator(GetFolder()), fs::directory_iterator());
    Check(nNumFiles == (m_sSavedFile.empty() ? 0 : 1), "nothing is left beside the file");
}

void CCalls::Empty(CPair& pair)
{
    CModelStore& store = *pair.model.GetStore();
    pair.cld.Clear();
    pair.cld.Init(1); // the first point stored sets the origin, which may be that of the file by now
    pair.cld.AddPnt(0.0, 0.0, 0.0);
    pair.cld.Clear();
    store.Init(1);
    pair.model.Add(0.0, 0.0, 0.0, {});
    store.Clear();
    pair.cld.SetModified(false);
    pair.cld.SetVersion(0);
    store.bModified = false;
    store.nVersion = 0;
}

void CCalls::CallReadPly()
{
    CPair& pair = PickPair();
    const bool bColor = m_input.Bool();
    std::vector<CPlyPnt> vecPnts(1 + m_input.Get<std::uint8_t>() % 100U);
    for (CPlyPnt& pnt : vecPnts)
        pnt = {Float(), Float(), Float(), Color()};
    const CMemFile file(MakePly(vecPnts, bColor));
    const zor::String sPath(file.GetPath());
    bool bRead = false;
    if (m_input.Below(3) == 0)
    {
        CCounter counter(m_host);
        const int nNumPnts = static_cast<int>(vecPnts.size());
        if (Try([&] { bRead = ReadPnts(counter, &m_host, PntCldFile_Ply, sPath); }) == enumEnd::Done)
            Check(bRead && counter.m_bEnd && counter.m_nNumPnts == nNumPnts &&
                      counter.m_nAnnounced == nNumPnts,
                  "ReadPnts reads every point");
        return;
    }
    pair.cld.OnReadType(bColor ? PntCldType_PntColor : PntCldType_Pnt);
    pair.model.nType = bColor ? 1 : 0;
    CModelStore& store = *pair.model.GetStore();
    pair.cld.Clear();
    store.Clear();
    const enumEnd eEnd = Try([&] { bRead = pair.cld.ReadFromFile(&m_host, PntCldFile_Ply, sPath); });
    pair.model.nFileType = pair.cld.GetFileType(); // the path may be what found no room
    pair.model.sPath = pair.cld.GetFilePath().c_str();
    if (eEnd == enumEnd::Done)
    {
        Check(bRead && pair.model.sPath == sPath.c_str(), "a PLY file is read");
        store.Init(static_cast<int>(vecPnts.size()));
        for (const CPlyPnt& pnt : vecPnts)
            pair.model.Add(double{pnt.x}, double{pnt.y}, double{pnt.z}, pnt.color);
        store.ReadEnd();
        return;
    }
    Check(pair.cld.GetNumPnts() <= static_cast<int>(vecPnts.size()), "points until it was broken off");
    Empty(pair);
}

void CCalls::CallFileFacts()
{
    static const std::array<std::string, 6> c_asBegins{"",
                                                       "ply\nformat binary_little_endian 1.0\n",
                                                       "ncols 3\nnrows ",
                                                       "cld",
                                                       "LASF",
                                                       std::string("cld\0\1", 5)};
    const std::size_t nBegin = static_cast<std::size_t>(m_input.Below(6));
    const CMemFile file(c_asBegins[nBegin] + m_input.Text(200));
    const zor::String sPath(file.GetPath());
    const auto eType = static_cast<enumPntCldFile>(m_input.Below(7) - 1);
    const bool bLas = eType == PntCldFile_Las || nBegin == 4; // LASzip does not survive a lack of memory
    CFileFacts facts;
    Try(
        [&]
        {
            facts = FindFileFacts(sPath);
            facts = FindFileFacts(sPath, eType);
        },
        !bLas);
    Try([&] { FindFileLosses(sPath, eType); }, !bLas);
    Try([&] { FindFileUnits(sPath, eType); }, !bLas);
    facts = FindFileFacts(sPath, eType);
    Check((facts.eCause == FileCause_None) == facts.sCause.empty(), "a cause has its words");
}
