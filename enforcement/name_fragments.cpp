#include "enforcement/name_fragments.h"

#include <algorithm>
#include <utility>

namespace {

// Up to here a plain search for each fragment in each name is quicker than sorting the names' endings.
constexpr std::size_t FewFragments = 64;

// What is left of a name from one of its characters on. A fragment occurs in a name when it begins an ending
// of it.
struct Ending {
    TextView Text;
    std::size_t Name;
};

// A name read from the game has at most LongestName characters, or its endings would take seconds to sort.
std::vector<Ending> SortedEndings(const Lines& Names) {
    std::vector<Ending> Endings;
    for (std::size_t Name = 0; Name < Names.size(); ++Name)
        for (std::size_t Start = 0; Start < Names[Name].size(); ++Start)
            Endings.push_back({TextView(Names[Name]).substr(Start), Name});
    std::sort(Endings.begin(), Endings.end(),
              [](const Ending& A, const Ending& B) { return A.Text < B.Text; });
    return Endings;
}

void CountByEndings(const Lines& Names, const Lines& Fragments, std::vector<Long>& Counts) {
    const std::vector<Ending> Endings = SortedEndings(Names);
    // Which fragment was last counted for each name: one that occurs twice in a name is one match.
    std::vector<const std::wstring*> Counted(Names.size(), nullptr);
    for (const std::wstring& Fragment : Fragments) {
        if (Fragment.empty()) continue;
        auto At = std::lower_bound(
            Endings.begin(), Endings.end(), TextView(Fragment),
            [](const Ending& Candidate, TextView Wanted) { return Candidate.Text < Wanted; });
        for (; At != Endings.end() && At->Text.starts_with(Fragment); ++At)
            if (std::exchange(Counted[At->Name], &Fragment) != &Fragment) ++Counts[At->Name];
    }
}

void CountOneByOne(const Lines& Names, const Lines& Fragments, std::vector<Long>& Counts) {
    for (std::size_t Name = 0; Name < Names.size(); ++Name)
        Counts[Name] = static_cast<Long>(
            std::count_if(Fragments.begin(), Fragments.end(), [&](const std::wstring& Fragment) {
                return !Fragment.empty() && Names[Name].find(Fragment) != std::wstring::npos;
            }));
}

} // namespace

std::vector<Long> CountFragments(const Lines& Names, const Lines& Fragments) {
    std::vector<Long> Counts(Names.size(), 0);
    if (Fragments.size() <= FewFragments)
        CountOneByOne(Names, Fragments, Counts);
    else
        CountByEndings(Names, Fragments, Counts);
    return Counts;
}
