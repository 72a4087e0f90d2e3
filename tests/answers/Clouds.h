#ifndef ANSWERS_CLOUDS_H
#define ANSWERS_CLOUDS_H

#include <zor4data/CPntCld.h>

#include <functional>
#include <string>

/// Hands `fn(name, cloud)` each of the fixed clouds, built: every shape of the tests' list, terrain and
/// clusters, without colours, with, and with points selected and deleted.
void ForEachCloud(ICldColorListener& colors, const std::function<void(const std::string&, CPntCld&)>& fn);

#endif
