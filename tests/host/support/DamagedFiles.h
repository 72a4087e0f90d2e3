#ifndef TESTS_HOST_SUPPORT_DAMAGEDFILES_H
#define TESTS_HOST_SUPPORT_DAMAGEDFILES_H

#include <string>
#include <vector>

/// A sound file, or one with a damage of its own, from which damaged ones are made.
struct CSeedFile
{
    std::string sName;
    std::string sType; ///< as --type takes it
    std::string sBytes;
};

/// The corpora of the fuzz targets and the small native files of the tests.
/// @param sSources  the folder of the sources.
std::vector<CSeedFile> ReadSeeds(const std::string& sSources);

/// Those of one type, in their order.
std::vector<CSeedFile> OfType(const std::vector<CSeedFile>& vecAll, const std::string& sType);

/// One of the seeds, damaged in one to four places: it is cut, gets the end of another one, or bytes that do
/// not belong there; a bit turns over, a byte or a number becomes another one, which counts, extents, offsets
/// and origins should not be.
///
/// A LAS file that announces thousands of millions of points takes half a minute a load, since so many are
/// made: known, told, and tested where it is about that. Here counts stay below 65536.
/// @param nFile  says what is done: the same on every machine.
CSeedFile MakeDamaged(const std::vector<CSeedFile>& vecSeeds, int nFile);

#endif
