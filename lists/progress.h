// How long work tells how far it has come.
#pragma once

#include <functional>

#include "host/failure.h"

// Called before each entry with how many are done, of how many. Returns false to end the work there. An empty
// one lets it go on to its end.
using Progress = std::function<bool(Long Done, Long Total)>;

inline bool Continues(const Progress& GoOn, std::size_t Done, std::size_t Total) {
    return !GoOn || GoOn(static_cast<Long>(Done), static_cast<Long>(Total));
}
