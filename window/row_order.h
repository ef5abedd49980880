// How the texts of a grid column are ordered.
#pragma once

#include <compare>

#include "host/text.h"

using Order = std::weak_ordering;

// By value; texts that are no numbers come last, by character code.
Order CompareNumbers(TextView A, TextView B);
// Without regard to case and accents, in the single-byte range that the game's names come from.
Order CompareNames(TextView A, TextView B);
// Dotted addresses by their numbers, part after part.
Order CompareAddresses(TextView A, TextView B);
