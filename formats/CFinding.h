#ifndef FORMATS_CFINDING_H
#define FORMATS_CFINDING_H

#include <string>

/// Something about a file that will surprise its user: it goes wrong or is lost when the file is loaded.
struct CFinding
{
    const char* pCode;     ///< short and lasting, for programs: "ply-double"
    std::string sText;     ///< for people, without a full stop
    bool bConvert = false; ///< `zorcld convert` makes a file without it: it reads files as they are meant
    std::string sHint;     ///< what else helps; often empty
    bool bPart = false;    ///< the file that `zorcld convert` makes lacks what this one lacks
};

#endif
