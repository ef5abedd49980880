// The floating-point settings of other tools' run-times: with VANTOR_CONTROL_WORD in the environment every
// test runs under that control word, and must leave it as it was.
#include <gtest/gtest.h>

#include <cstdlib>

namespace {

constexpr unsigned short Exceptions = 0x3F;

struct Settings {
    unsigned short X87;
    unsigned Sse;
    bool operator==(const Settings&) const = default;
};

void Set(Settings Wanted) {
    asm volatile("fnclex\n\tfldcw %0\n\tldmxcsr %1" : : "m"(Wanted.X87), "m"(Wanted.Sse));
}

Settings Current() {
    Settings Found{};
    asm volatile("fnstcw %0\n\tstmxcsr %1" : "=m"(Found.X87), "=m"(Found.Sse));
    Found.Sse &= ~unsigned{Exceptions}; // what has happened, not what is set
    return Found;
}

// The same exceptions unmasked in both units.
Settings Unmasked(unsigned short ControlWord) {
    return {ControlWord, (ControlWord & unsigned{Exceptions}) << 7};
}

class Guard final : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo&) override { Set(Wanted); }
    void OnTestEnd(const testing::TestInfo&) override {
        if (Current() != Wanted) std::printf("the floating-point settings were changed\n"), std::exit(1);
    }

    const Settings Wanted =
        Unmasked(static_cast<unsigned short>(std::strtoul(std::getenv("VANTOR_CONTROL_WORD"), nullptr, 16)));
};

class Setup final : public testing::Environment {
    void SetUp() override {
        if (std::getenv("VANTOR_CONTROL_WORD") != nullptr)
            testing::UnitTest::GetInstance()->listeners().Append(new Guard);
    }
};

const auto* const Installed = testing::AddGlobalTestEnvironment(new Setup);

} // namespace
