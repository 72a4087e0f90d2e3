#ifndef PYTHON_BIND_HASHFILE_H
#define PYTHON_BIND_HASHFILE_H

#include <string>

namespace zorpy
{

/// XXH3 of 128 bits over the bytes of a file, 32 hexadecimal digits: what manifests of tiles say.
/// Reads without the interpreter's lock; throws as `ThrowErrno`, and as `CheckSignals`.
std::string HashFile(const std::string& sPath);

/// The same of bytes.
std::string HashBytes(const std::string& sBytes);

} // namespace zorpy

#endif
