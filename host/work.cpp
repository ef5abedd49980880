// The works on the stack.
#include "host/work.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <functional>

#include "host/platform.h"

namespace {

struct Entry {
    const Work* Owner;
    Work::Kind What;
    Work::Fate Its;
    Long Profile;
    std::wstring File;
    const void* Frame;
};

// A host that calls itself without end gets no further than this.
constexpr int MostEntries = 200;
std::array<Entry, MostEntries> Entries;
std::atomic<int> Count{0}; // the innermost is the last

bool IsForServer(const Entry& Present) {
    return Present.What >= Work::Kind::Load && Present.What < Work::Kind::GridHold;
}

template <class F> void Drop(F&& IsGone) {
    auto* const End = Entries.data() + Count;
    Count = static_cast<int>(std::remove_if(Entries.data(), End, IsGone) - Entries.data());
}

// The innermost that matches; null for none.
template <class F> Entry* Innermost(F&& Matches) noexcept {
    for (int Number = Count; Number-- > 0;)
        if (Entry& Found = Entries[static_cast<std::size_t>(Number)]; Matches(Found)) return &Found;
    return nullptr;
}

template <class F> void EndThose(Work::Fate How, F&& Matches) noexcept {
    for (int Number = 0; Number < Count; ++Number)
        if (Entry& Found = Entries[static_cast<std::size_t>(Number)]; IsForServer(Found) && Matches(Found))
            Found.Its = How;
}

} // namespace

Work::Work(Kind What, Long Profile, const void* Frame) noexcept {
    // The stack grows downwards: whoever runs from this frame or a deeper one has gone.
    if (What == Kind::HostCall)
        Drop([&](const Entry& Older) { return std::less_equal<>()(Older.Frame, Frame); });
    if (Count == MostEntries) return;
    Entries[static_cast<std::size_t>(Count)] = {this, What, Fate::Runs, Profile, {}, Frame};
    ++Count;
}

Work::Work(Kind What, Long Profile, TextView File, const void* Frame)
    : Work((RequireServer(), What), Profile, Frame) {
    const auto IsOnSameFile = [&](const Entry& Other) {
        return Other.What == What && !Other.File.empty() && Platform::IsSamePath(Other.File, File);
    };
    if (Innermost(IsOnSameFile) != nullptr)
        Fail(ErrorNumber::InvalidCall, std::wstring(File) + L" is in use by another request.");
    if (Entry* const Own = Innermost([&](const Entry& Found) { return Found.Owner == this; }))
        Own->File = File;
}

Work::~Work() {
    Drop([&](const Entry& Older) { return Older.Owner == this; });
}

Work::Fate Work::ItsFate() const noexcept {
    const Entry* const Own = Innermost([&](const Entry& Found) { return Found.Owner == this; });
    return Own != nullptr ? Own->Its : Fate::Closed;
}

void Work::End(Long Profile, Fate How) noexcept {
    EndThose(How, [&](const Entry& Found) { return Found.Profile == Profile; });
}

void Work::EndAll() noexcept {
    EndThose(Fate::Closed, [](const Entry&) { return true; });
}

bool Work::Runs(Kind What) noexcept {
    return Innermost([&](const Entry& Found) { return Found.What == What; }) != nullptr;
}

bool Work::Runs(Kind What, Long Profile) noexcept {
    return Innermost([&](const Entry& Found) { return Found.What == What && Found.Profile == Profile; }) !=
           nullptr;
}

int Work::Depth() noexcept { return Count; }

bool Work::HasEnded() noexcept {
    const Entry* const Found = Innermost([](const Entry& Any) { return Any.What < Kind::GridHold; });
    return Count == MostEntries || (Found != nullptr && Found->Its != Fate::Runs);
}

bool Work::IsUnattended() noexcept {
    const Entry* const Found =
        Innermost([](const Entry& Any) { return Any.What < Kind::GridHold && Any.What != Kind::FileChange; });
    return Found != nullptr && (Found->What == Kind::RemoteCall || Found->What == Kind::Refresh ||
                                Found->What == Kind::Tick || Found->What == Kind::Request);
}

void Work::RequireServer(Place Where) {
    if (HasEnded()) Fail(0, {}, Where);
}
