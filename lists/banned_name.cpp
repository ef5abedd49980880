#include "lists/banned_name.h"

#include "game/ini_key.h"

namespace {

constexpr TextView WholeTag = L"[1]";
constexpr TextView PartTag = L"[2]";
constexpr std::size_t TagLength = 3;
constexpr std::size_t FewestLetters = 3; // a shorter part would ban too many

} // namespace

BannedName BannedName::Whole(TextView Name) { return {std::wstring(Name), std::wstring(WholeTag)}; }
BannedName BannedName::Part(TextView Name) { return {std::wstring(Name), std::wstring(PartTag)}; }

BannedName BannedName::OfKey(TextView Key) {
    if (Key.size() < TagLength) Fail(ErrorNumber::InvalidCall);
    const std::size_t NameLength = Key.size() - TagLength;
    return {std::wstring(Key.substr(0, NameLength)), std::wstring(Key.substr(NameLength))};
}

BannedName BannedName::OfItem(TextView Item) {
    if (Item.size() < TagLength + 1) Fail(ErrorNumber::InvalidCall);
    return {std::wstring(Item.substr(TagLength + 1)), std::wstring(Item.substr(0, TagLength))};
}

std::wstring BannedName::Key() const { return Name + Tag; }
std::wstring BannedName::Item() const { return Tag + L" " + Name; }
bool BannedName::IsPart() const { return Tag == PartTag; }

bool HoldsTag(TextView Key) { return Key.find(WholeTag) != TextView::npos || HoldsPartTag(Key); }

bool EndsInTag(TextView Key) { return Key.ends_with(WholeTag) || Key.ends_with(PartTag); }

bool HoldsPartTag(TextView Line) { return Line.find(PartTag) != TextView::npos; }

std::optional<std::wstring> PartOfKey(std::wstring Key) {
    if (!Key.ends_with(PartTag)) return std::nullopt;
    Key.resize(Key.size() - TagLength);
    return Key;
}

std::optional<BannedName> PartInsteadOf(TextView Name) {
    const std::size_t Start = OddBeginning(Name);
    const TextView Rest = Name.substr(Start);
    if (Start == 0 || Rest.size() < FewestLetters || !CanBeKey(Rest)) return std::nullopt;
    return BannedName::Part(Rest);
}
