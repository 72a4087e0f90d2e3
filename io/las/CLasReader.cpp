#include <io/las/CLasReader.h>

#include <formats/CLasGuard.h>
#include <io/las/DeliverLas.h>

#include <lasreader.hpp>

#include <memory>
#include <new>

namespace
{

/// Closes a reader and deletes it.
class CLasCloser
{
public:
    void operator()(LASreader* pReader) const
    {
        pReader->close();
        delete pReader;
    }
};

/// Tells the listener what will come.
/// @return false when it cannot allocate what the file cannot hold.
bool Announce(const LASreader& reader, bool bColor, const CLasGuard& guard, IPntCldReadListener& listener)
{
    listener.OnReadType(bColor ? PntCldType_PntColor : PntCldType_Pnt);
    try
    {
        listener.OnReadNumPnts(CountFromNumPnts(reader.npoints));
    }
    catch (const std::bad_alloc&)
    {
        // A count that the file cannot hold is the file's fault, not a lack of memory.
        if (reader.npoints <= guard.GetMaxNumPnts())
            throw;
        return false;
    }
    return true;
}

} // namespace

CFileCause CLasReader::FindCause(const CLasGuard& guard)
{
    if (guard.GetCause().IsRefusal() || !ZOR4DATA_LASLIB || guard.IsSafeAsItStands())
        return guard.GetCause();
    return {FileCause_LasUnsafe, "it is damaged in a way that this library does not read: its records or its "
                                 "table of compressed points are not there"};
}

bool CLasReader::Read(IDlgProgress* pProgress, const zor::String& sPath)
{
    CLasGuard guard(sPath.c_str());
    static_cast<void>(guard.Check());
    if (FindCause(guard).IsRefusal())
        return false;

    LASreadOpener opener;
    opener.set_file_name(sPath.c_str(), FALSE);
    std::unique_ptr<LASreader, CLasCloser> pReader(opener.open());
    if (pReader == nullptr)
        return false;

    // The file's own format: LASlib may show points of formats 1 and 3 as the later ones that they stand for.
    const bool bColor = guard.GetHeader().IsColorTaken();
    if (!Announce(*pReader, bColor, guard, m_listener))
        return false;
    DeliverLasPnts(*pReader, bColor, guard.GetMaxNumPnts(), m_listener, pProgress);
    pReader.reset();
    m_listener.OnReadEnd();
    return true;
}
