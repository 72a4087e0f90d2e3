#ifndef HOST_SERVE_PAGEFILES_H
#define HOST_SERVE_PAGEFILES_H

#include <cstddef>

namespace zorcld
{

/// A file of the page, embedded in the program: as it is, and compressed with gzip.
struct CPageFile
{
    const char* pPath; ///< as it is asked for: "/app.js"; "/" for the page itself
    const char* pType;
    const unsigned char* pPlain;
    std::size_t nPlainSize;
    const unsigned char* pGzip;
    std::size_t nGzipSize;
};

/// Both stand in a source file that the build makes (EmbedPage.cmake).
extern const CPageFile* const c_pPageFiles;
extern const std::size_t c_nNumPageFiles;

} // namespace zorcld

#endif
