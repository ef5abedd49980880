// Which part-of-name bans match a name, without trying every ban on every name.
#pragma once

#include <map>
#include <string>
#include <unordered_map>
#include <vector>

#include "host/failure.h"
#include "host/text.h"

class NameFragments {
public:
    // Adds the fragment of one ban entry. An empty one would match everybody and is left out.
    void Add(std::wstring Fragment);
    // The number of entries whose fragment occurs in the name, with regard to case.
    Long CountIn(TextView Name) const;

private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(TextView Text) const { return std::hash<TextView>()(Text); }
    };
    using Counted = std::unordered_map<std::wstring, Long, Hash, std::equal_to<>>;

    Long CountOneByOne(TextView Name) const;
    Long CountByIndex(TextView Name) const;

    std::size_t Distinct = 0;
    std::map<std::size_t, Counted> ByLength; // length of the fragment -> fragment -> number of entries
};
