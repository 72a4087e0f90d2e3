#ifndef PYTHON_BIND_READCLOUD_H
#define PYTHON_BIND_READCLOUD_H

#include <python/bind/CCloud.h>

#include <pybind11/pybind11.h>

#include <string>

namespace zorpy
{

/// Loads a file. @param callback  told of the progress; None: nobody.
/// @return null where the library does not load it.
pybind11::tuple ReadCloud(const std::string& sPath, int nKind, const pybind11::object& callback);

/// Makes a cloud of a native file's bytes. @return null where they are none.
TCloudPtr CloudFromBytes(const pybind11::buffer& bytes);

/// @return the native file of a cloud.
pybind11::bytes BytesFromCloud(const CCloud& cloud);

/// Saves a cloud as a native file that appears whole or not at all.
/// @return number of the cause (0: it is there) and errno.
pybind11::tuple WriteCloud(const CCloud& cloud, const std::string& sPath);

} // namespace zorpy

#endif
