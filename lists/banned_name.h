// A banned name: what is matched and how, with the forms in which the file and the window write it.
#pragma once

#include <optional>

#include "host/text.h"

struct BannedName {
    std::wstring Name;
    std::wstring Tag; // "[1]": matches the whole name, "[2]": a part of it

    static BannedName Whole(TextView Name);
    static BannedName Part(TextView Name);
    // From "Bob[2]"; error 5 for a text that is shorter than a tag.
    static BannedName OfKey(TextView Key);
    // From "[2] Bob"; error 5 for a text that is shorter than a tag and a blank.
    static BannedName OfItem(TextView Item);

    std::wstring Key() const;  // "Bob[2]"
    std::wstring Item() const; // "[2] Bob"
    bool IsPart() const;
};

// Whether a tag stands anywhere in a key, or at its end.
bool HoldsTag(TextView Key);
bool EndsInTag(TextView Key);
// Whether the tag of a part stands anywhere in a key, or in a line that begins with one.
bool HoldsPartTag(TextView Line);
// The part of a name that a key such as "bob[2]" bans; none for any other key.
std::optional<std::wstring> PartOfKey(std::wstring Key);

// For a name that no file can hold as a whole because of how it begins ("[ABC]Bob"): the part of it that can
// be banned instead ("ABC]Bob"). None for any other name, and when fewer than three letters are left.
std::optional<BannedName> PartInsteadOf(TextView Name);
