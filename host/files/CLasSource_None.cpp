#include <host/files/CLasSource.h>

namespace zorcld
{

std::unique_ptr<IPntSource> MakeLasSource(const std::string&, CLasGuard&)
{
    return nullptr;
}

} // namespace zorcld
