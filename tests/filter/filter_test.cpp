// What the packet-filter library wants and how the engine follows, with an engine in memory.
#include <chrono>
#include <thread>

#include <gtest/gtest.h>

#include "filter/engine_rules.h"
#include "filter/service.h"
#include "tests/filter/fake_engine.h"

namespace {

using Rules = std::vector<Rule>;

constexpr Rule A{0x0A000001, 32768}, B{0x0A000002, 32768}, C{0x0A000002, 32769}, D{0x0A000003, 32768};

bool Await(bool (*Condition)()) {
    for (int Round = 0; Round < 2000; ++Round) {
        if (Condition()) return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return false;
}

bool IsRunning() { return Service::State() == Service::Running; }
bool IsStopped() { return Service::State() == Service::Stopped; }
bool HasTwoRules() { return FakeEngine::Rules().size() == 2; }

void LetPass(unsigned Milliseconds) {
    std::this_thread::sleep_for(std::chrono::milliseconds(Milliseconds / FakeThreads::Haste));
}

class FilterEngine : public testing::Test {
protected:
    FilterEngine() { FakeEngine::Reset(); }
    ~FilterEngine() override { EngineRules::Close(); }
};

class FilterService : public testing::Test {
protected:
    FilterService() { FakeEngine::Reset(); }
    ~FilterService() override {
        Service::Stop();
        FakeThreads::Join();
        EXPECT_FALSE(FakeEngine::Look().IsOpen);
    }
    static void LoadAndStart() {
        Service::Load();
        Service::Start();
    }
};

} // namespace

TEST(FilterRule, ByteOrders) {
    const struct {
        std::int32_t Address;
        std::int16_t Port;
        Rule Wanted;
    } Rows[] = {{0x04030201, 80, {0x01020304, 80}},
                {-1, -1, {0xFFFFFFFF, 65535}},
                {0, 0, {0, 0}},
                {0x000000C0, -32768, {0xC0000000, 32768}},
                {static_cast<std::int32_t>(0xFE000080), 32767, {0x800000FE, 32767}}};
    for (const auto& Row : Rows) EXPECT_EQ(RuleOfCall(Row.Address, Row.Port), Row.Wanted) << Row.Address;
}

TEST_F(FilterEngine, OneTransactionForEachChangeAndNoneWithoutOne) {
    EXPECT_FALSE(EngineRules::Follow({A, B, D}));
    const auto Before = FakeEngine::Look().Filters;
    EXPECT_FALSE(EngineRules::Follow({A, B, D}));
    EXPECT_EQ(FakeEngine::Look().Filters, Before);
    EXPECT_EQ(FakeEngine::Look().Transactions, 1);
    EXPECT_FALSE(EngineRules::Follow({B, C}));
    EXPECT_EQ(FakeEngine::Rules(), (Rules{B, C}));
    EXPECT_EQ(FakeEngine::Look().Filters.count(2), 1u) << "the rule that stays was touched";
    EXPECT_FALSE(EngineRules::Follow({}));
    EXPECT_EQ(FakeEngine::Look().Transactions, 3);
    EXPECT_EQ(FakeEngine::Rules(), Rules{});
}

// The first so many calls of a change go well, then one fails, or all from there on. Either the old rules
// stand, or the session is closed; and the next attempt makes it good.
TEST_F(FilterEngine, AFaultAtEveryCall) {
    for (const bool IsLasting : {false, true}) {
        for (int Good = 0; Good < 10; ++Good) {
            ASSERT_FALSE(EngineRules::Follow({A, B, D}));
            FakeEngine::FailAfter(Good, IsLasting);
            const Failure Failed = EngineRules::Follow({B, C});
            FakeEngine::FailAfter(-1);
            ASSERT_EQ(static_cast<bool>(Failed), Good < 5) << Good; // Begin, Remove, Add, Remove, Commit
            const Rules Standing = Good < 5 ? Rules{A, B, D} : Rules{B, C};
            EXPECT_EQ(FakeEngine::Rules(), FakeEngine::Look().IsOpen ? Standing : Rules{}) << Good;
            EXPECT_FALSE(EngineRules::Follow({B, C}));
            EXPECT_EQ(FakeEngine::Rules(), (Rules{B, C})) << Good;
        }
    }
}

// Another program's transaction makes every call fail for as long as it takes.
TEST_F(FilterEngine, ABusyEngineCostsNoRule) {
    ASSERT_FALSE(EngineRules::Follow({A, B}));
    FakeEngine::FailAfter(0, true);
    for (int Second = 0; Second < 40; ++Second) {
        EXPECT_FALSE(EngineRules::Check());
        EXPECT_FALSE(EngineRules::Follow({A, B}));
        EXPECT_TRUE(EngineRules::Follow({B, C})) << "not done";
    }
    EXPECT_EQ(FakeEngine::Rules(), (Rules{A, B}));
    FakeEngine::FailAfter(-1);
    EXPECT_FALSE(EngineRules::Follow({B, C}));
    EXPECT_EQ(FakeEngine::Rules(), (Rules{B, C}));
}

TEST_F(FilterEngine, CallsGrowWithTheNumberOfChanges) {
    Rules Many;
    for (std::uint32_t Address = 0; Address < 10000; ++Address) Many.push_back({Address, 32768});
    EXPECT_FALSE(EngineRules::Follow(Many));
    EXPECT_EQ(FakeEngine::Look().Calls, 10003);
    Many.erase(Many.begin() + 5000);
    EXPECT_FALSE(EngineRules::Follow(Many));
    EXPECT_EQ(FakeEngine::Look().Calls, 10006);
}

TEST_F(FilterService, ARebuildWaitsForTheLastCall) {
    Service::AddRule(A);
    LoadAndStart();
    Service::AddRule(A);
    Service::AddRule(B);
    ASSERT_TRUE(Await(HasTwoRules));
    for (int Round = 0; Round < 8; ++Round) {
        Service::ClearRules();
        LetPass(100);
        EXPECT_EQ(FakeEngine::Rules(), (Rules{A, B}));
        Service::AddRule(B);
        Service::AddRule(A);
    }
    LetPass(2000);
    EXPECT_EQ(FakeEngine::Look().Transactions, 1) << "the same rules are no change";
    EXPECT_TRUE(IsRunning());
}

// Many servers ask for another attempt, or send their rules, at shorter intervals than the pause.
TEST_F(FilterService, CallsWithoutAPauseAreHeard) {
    Service::AddRule(A);
    FakeEngine::FailAfter(0, true);
    LoadAndStart();
    ASSERT_TRUE(Await(IsStopped));
    FakeEngine::FailAfter(-1);
    EXPECT_TRUE(Await([] {
        LoadAndStart();
        return IsRunning();
    }));
    for (int Round = 0; Round < 250 && !HasTwoRules(); ++Round) {
        Service::ClearRules();
        for (const Rule& Blocked : {A, B}) Service::AddRule(Blocked);
        LetPass(200);
    }
    EXPECT_TRUE(HasTwoRules());
}

TEST_F(FilterService, RulesCountBetweenStartAndStop) {
    Service::Load();
    Service::AddRule(A);
    EXPECT_NE(Service::State(), Service::Running) << "nothing is known yet";
    ASSERT_TRUE(Await(IsRunning));
    EXPECT_EQ(FakeEngine::Rules(), Rules{});
    Service::Start();
    EXPECT_TRUE(Await([] { return FakeEngine::Rules() == Rules{A}; }));
    Service::Stop();
    EXPECT_TRUE(IsStopped());
    FakeThreads::Join();
    EXPECT_FALSE(FakeEngine::Look().IsOpen);
    LoadAndStart();
    EXPECT_TRUE(Await(IsRunning));
    EXPECT_EQ(FakeEngine::Rules(), Rules{});
}

// The plug-in asks every few seconds, and loads and starts again when the answer is another one.
TEST_F(FilterService, FailuresShowInTheStateAndOnceInTheLog) {
    Service::AddRule(A);
    FakeEngine::FailAfter(0, true);
    for (int Tick = 0; Tick < 3; ++Tick) {
        LoadAndStart();
        LetPass(1000);
        EXPECT_TRUE(IsStopped());
    }
    EXPECT_EQ(FakeEngine::Look().Reports, 1);
    FakeEngine::FailAfter(-1);
    LoadAndStart();
    EXPECT_TRUE(Await(IsRunning));
    EXPECT_EQ(FakeEngine::Rules(), Rules{A});
    FakeEngine::LoseSession();
    EXPECT_TRUE(Await(IsStopped));
    EXPECT_EQ(FakeEngine::Look().Reports, 2);
    LetPass(1500);
    EXPECT_TRUE(IsStopped()) << "nobody has asked for another attempt";
    LoadAndStart();
    EXPECT_TRUE(Await(IsRunning));
    EXPECT_EQ(FakeEngine::Rules(), Rules{A}) << "although nobody has sent it again";
    EXPECT_EQ(FakeEngine::Look().Reports, 2);
}
