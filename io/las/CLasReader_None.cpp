#include <io/las/CLasReader.h>

CFileCause CLasReader::FindCause(const CLasGuard& /*guard*/)
{
    return {FileCause_NoReader, "this library was built without one that reads LAS (ZOR4DATA_LAS)"};
}

// The build has no library that reads LAS.
bool CLasReader::Read(IDlgProgress* /*pProgress*/, const zor::String& /*sPath*/)
{
    static_cast<void>(m_listener);
    return false;
}
