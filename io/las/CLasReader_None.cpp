#include <io/las/CLasReader.h>

// The build has no library that reads LAS.
bool CLasReader::Read(IDlgProgress* /*pProgress*/, const zor::String& /*sPath*/)
{
    static_cast<void>(m_listener);
    return false;
}
