#include <python/bind/ReadCloud.h>

#include <python/bind/CCountedCld.h>
#include <python/bind/CMemFile.h>
#include <python/bind/CProgress.h>
#include <python/bind/Gil.h>
#include <zor4data/LoadNative.h>
#include <zor4data/SaveCloud.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>

namespace py = pybind11;

namespace zorpy
{

namespace
{

/// A cloud that tells how far an ASCII grid has come, which the library does not, and looks for signals at
/// every point. What comes first, the reading of the text, is told by nobody.
class CWatchedCld final : public CCountedCld
{
public:
    explicit CWatchedCld(CProgress& progress) : m_progress(progress) {}

    void OnReadNumPnts(int nNumPnts) override
    {
        m_nNumPnts = nNumPnts;
        CPntCld::OnReadNumPnts(nNumPnts);
    }

    void OnReadPnt(double x, double y, double z) override
    {
        if (m_nNumRead < m_nNextTold)
            m_progress.Poll();
        else
            Tell();
        ++m_nNumRead;
        CCountedCld::OnReadPnt(x, y, z);
    }

    void OnReadPnt(double x, double y, double z, unsigned char r, unsigned char g, unsigned char b) override
    {
        CCountedCld::OnReadPnt(x, y, z, r, g, b); // no grid has colours
    }

private:
    void Tell()
    {
        const std::int64_t nPercent = m_nNumRead * 100 / std::max<std::int64_t>(m_nNumPnts, 1);
        m_nNextTold = (nPercent + 1) * m_nNumPnts / 100;
        m_progress.SetPos(static_cast<int>(std::min<std::int64_t>(nPercent, 100)));
    }

    CProgress& m_progress;
    std::int64_t m_nNumPnts = 0;
    std::int64_t m_nNumRead = 0;
    std::int64_t m_nNextTold = 0;
};

/// What comes out of a file.
struct CLoaded
{
    TCloudPtr pCloud; ///< null: nothing
    std::int64_t nNumNotFinite = 0;
    std::int64_t nNumFar = 0;
};

CLoaded Load(CCountedCld& cld, CProgress& progress, enumPntCldFile eType, const zor::String& sPath)
{
    const bool bLoaded = eType == PntCldFile_Native ? LoadNative(cld, &progress, sPath)
                                                    : cld.ReadFromFile(&progress, eType, sPath);
    if (!bLoaded)
        return {};
    return {std::make_shared<CCloud>(cld), cld.GetNumNotFinite(), cld.GetNumFar()};
}

CLoaded Load(CProgress& progress, enumPntCldFile eType, const zor::String& sPath)
{
    if (eType != PntCldFile_AsciiGrid)
    {
        CCountedCld cld;
        return Load(cld, progress, eType, sPath);
    }
    CWatchedCld cld(progress);
    progress.SetPos(0);
    return Load(cld, progress, eType, sPath);
}

} // namespace

py::tuple ReadCloud(const std::string& sPath, int nKind, const py::object& callback)
{
    const auto eType = static_cast<enumPntCldFile>(nKind);
    CProgress progress(callback);
    CLoaded loaded;
    {
        const CReleasedGil released;
        loaded = Load(progress, eType, zor::String(sPath.c_str()));
        if (loaded.pCloud != nullptr)
            progress.SetPos(100);
        CheckSignals();
    }
    return py::make_tuple(loaded.pCloud, loaded.nNumNotFinite, loaded.nNumFar);
}

TCloudPtr CloudFromBytes(const py::buffer& bytes)
{
    const py::buffer_info info = bytes.request();
    const CReleasedGil released;
    CMemFile file;
    if (!file.Write(static_cast<const char*>(info.ptr), info.size * info.itemsize))
        ThrowErrno(errno);
    CPntCld cld(nullptr);
    if (!LoadNative(cld, nullptr, zor::String(file.GetPath().c_str())))
        return nullptr;
    return std::make_shared<CCloud>(cld);
}

py::bytes BytesFromCloud(const CCloud& cloud)
{
    CMemFile file;
    std::int64_t nSize = 0;
    {
        const CReleasedGil released;
        CPntCld cld(cloud.GetCld()); // a save is no const operation, though it changes nothing here
        errno = 0;
        cld.WriteToFile(zor::String(file.GetPath().c_str()), 1);
        if (errno != 0)
            ThrowErrno(errno); // memory is full, or files may not grow so large: the end would be missing
        nSize = file.FindSize();
    }
    const CPntArrays& arrays = cloud.GetArrays();
    if (nSize < std::int64_t{arrays.nNumPnts} * arrays.nStride)
        throw std::bad_alloc();
    PyObject* const pBytes = PyBytes_FromStringAndSize(nullptr, nSize);
    if (pBytes == nullptr)
        throw py::error_already_set();
    auto bytes = py::reinterpret_steal<py::bytes>(pBytes);
    char* const pData = PyBytes_AS_STRING(pBytes);
    const CReleasedGil released;
    if (!file.Read(pData, nSize))
        throw std::bad_alloc();
    return bytes;
}

py::tuple WriteCloud(const CCloud& cloud, const std::string& sPath)
{
    int nCause = 0;
    int nError = 0;
    {
        const CReleasedGil released;
        CPntCld cld(cloud.GetCld());
        nCause = SaveCloud(cld, zor::String(sPath.c_str()));
        nError = errno;
    }
    return py::make_tuple(nCause, nError);
}

} // namespace zorpy
