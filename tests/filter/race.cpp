// Hosts that call the packet-filter library from several threads at once while the engine fails now and then,
// under the thread sanitizer. It cannot be mixed with the address sanitizer, so this is a program of its own.
//
// Ends with 1 when the engine is not what was asked last; the sanitizer ends it with 66.
#include <chrono>
#include <cstdio>
#include <thread>

#include "filter/service.h"
#include "tests/filter/fake_engine.h"

namespace {

constexpr int Rounds = 20, Calls = 400;

// A host's calls in no sensible order, by a small generator of its own.
void Play(std::uint32_t Seed) {
    for (int Call = 0; Call < Calls; ++Call) {
        Seed = Seed * 1664525 + 1013904223;
        const std::uint32_t Dice = Seed >> 24;
        if (Dice < 150)
            Service::AddRule({Seed >> 20, 32768});
        else if (Dice < 180)
            Service::State();
        else if (Dice < 200)
            Service::Load();
        else if (Dice < 220)
            Service::Start();
        else if (Dice < 240)
            Service::ClearRules();
        else if (Dice < 244)
            Service::Stop();
        else if (Dice < 250)
            FakeEngine::FailAfter(static_cast<int>(Dice % 5));
        else
            std::this_thread::sleep_for(std::chrono::milliseconds(Dice % 30));
    }
}

bool IsAsAsked(const std::vector<Rule>& Wanted) {
    for (int Attempt = 0; Attempt < 500; ++Attempt) {
        if (Service::State() == Service::Running && FakeEngine::Rules() == Wanted) return true;
        Service::Load();
        Service::Start();
        std::this_thread::sleep_for(std::chrono::milliseconds(40));
    }
    return false;
}

bool PlayRound(std::uint32_t Round) {
    std::thread First(Play, 3 * Round + 1), Second(Play, 3 * Round + 2), Third(Play, 3 * Round + 3);
    First.join();
    Second.join();
    Third.join();
    FakeEngine::FailAfter(-1);
    const std::vector<Rule> Wanted{{1, 32768}, {Round + 2, 32768}};
    Service::ClearRules();
    for (const Rule& Blocked : Wanted) Service::AddRule(Blocked);
    return IsAsAsked(Wanted);
}

} // namespace

int main() {
    FakeThreads::Haste = 50;
    bool IsGood = true;
    for (std::uint32_t Round = 0; Round < Rounds && IsGood; ++Round) {
        IsGood = PlayRound(Round);
        if (Round % 2 == 1) continue; // into the next round with the thread alive
        Service::Stop();
        FakeThreads::Join();
        IsGood = IsGood && !FakeEngine::Look().IsOpen;
    }
    Service::Stop();
    FakeThreads::Join();
    std::printf("%s\n", IsGood ? "as asked" : "not as asked");
    return IsGood ? 0 : 1;
}
