#include "enforcement/name_fragments.h"

#include <unordered_set>

namespace {

// Up to here a plain search for each fragment is quicker than looking up every stretch of the name.
constexpr std::size_t FewFragments = 64;

} // namespace

void NameFragments::Add(std::wstring Fragment) {
    if (Fragment.empty()) return;
    const std::size_t Length = Fragment.size();
    const auto [Entry, IsNew] = ByLength[Length].emplace(std::move(Fragment), 0);
    ++Entry->second;
    if (IsNew) ++Distinct;
}

Long NameFragments::CountIn(TextView Name) const {
    return Distinct <= FewFragments ? CountOneByOne(Name) : CountByIndex(Name);
}

Long NameFragments::CountOneByOne(TextView Name) const {
    Long Count = 0;
    for (const auto& [Length, Fragments] : ByLength)
        for (const auto& [Fragment, Entries] : Fragments)
            if (Name.find(Fragment) != TextView::npos) Count += Entries;
    return Count;
}

Long NameFragments::CountByIndex(TextView Name) const {
    Long Count = 0;
    for (const auto& [Length, Fragments] : ByLength) {
        if (Length > Name.size()) break;
        // A fragment that occurs twice in the name is one match.
        std::unordered_set<TextView> Seen;
        for (std::size_t Start = 0; Start + Length <= Name.size(); ++Start) {
            const auto Found = Fragments.find(Name.substr(Start, Length));
            if (Found != Fragments.end() && Seen.insert(Found->first).second) Count += Found->second;
        }
    }
    return Count;
}
