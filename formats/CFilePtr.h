#ifndef FORMATS_CFILEPTR_H
#define FORMATS_CFILEPTR_H

#include <cstdio>
#include <memory>

/// Closes a C stream when its owner goes away.
class CFileCloser
{
public:
    void operator()(std::FILE* pFile) const noexcept { static_cast<void>(std::fclose(pFile)); }
};

/// A C stream that closes itself; null when it could not be opened.
using CFilePtr = std::unique_ptr<std::FILE, CFileCloser>;

#endif
