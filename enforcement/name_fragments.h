// Which part-of-name bans match which names, without trying every ban on every name.
#pragma once

#include <vector>

#include "host/failure.h"
#include "host/text.h"

// For each name the number of fragments that occur in it, with regard to case; a fragment that is listed
// twice counts twice. An empty fragment would match everybody and matches nobody.
std::vector<Long> CountFragments(const Lines& Names, const Lines& Fragments);
