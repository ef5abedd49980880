// Where the controls lie.
#include <map>

#include "tests/native/window_fixture.h"
#include "window/layout.h"

namespace {

bool Overlap(const Rect& A, const Rect& B) {
    return A.X < B.X + B.Width && B.X < A.X + A.Width && A.Y < B.Y + B.Height && B.Y < A.Y + A.Height;
}
bool Contains(const Rect& Outer, const Rect& Inner) {
    return Inner.X >= Outer.X && Inner.Y >= Outer.Y && Inner.X + Inner.Width <= Outer.X + Outer.Width &&
           Inner.Y + Inner.Height <= Outer.Y + Outer.Height;
}

using Places = std::map<int, Rect>; // by identifier, each in its parent

// Inside its page, and large enough for its text.
void ExpectWhole(const ControlRow& Row, Places& Where) {
    ASSERT_EQ(Where.count(Row.Id), 1u) << Row.Id;
    const Rect& Place = Where[Row.Id];
    EXPECT_GT(Place.Width, 0) << Row.Id;
    EXPECT_GT(Place.Height, 0) << Row.Id;
    if (Row.Parent != 0) {
        const Rect& Page = Where[Row.Parent];
        EXPECT_TRUE(Contains({0, 0, Page.Width, Page.Height}, Place)) << Row.Id;
    }
    if (Row.What == Kind::Push || Row.What == Kind::Option || Row.What == Kind::Check) {
        EXPECT_GT(Place.Width, Measure::TextWidth(Row.Caption)) << Row.Id;
    } else if (Row.What == Kind::Caption) {
        EXPECT_GE(Place.Height, Measure::TextHeight(Row.Caption, Place.Width)) << Row.Id;
    }
}

bool HoldsOthers(const ControlRow& Row) {
    return Row.What == Kind::Frame || Row.What == Kind::Tab || Row.What == Kind::Page;
}

// Two of one parent stand apart, or one frames the other.
void ExpectApart(const ControlRow& A, const ControlRow& B, Places& Where) {
    if (A.Id == B.Id || A.Parent != B.Parent || Where.count(A.Id) == 0 || Where.count(B.Id) == 0 ||
        B.What == Kind::Page || B.What == Kind::Tab)
        return;
    const bool IsFramed =
        HoldsOthers(A) ? Contains(Where[A.Id], Where[B.Id]) : Contains(Where[B.Id], Where[A.Id]);
    EXPECT_TRUE(IsFramed || !Overlap(Where[A.Id], Where[B.Id])) << A.Id << " and " << B.Id;
}

TEST_F(Window, TheLayoutShowsEveryControlWholeAtEverySize) {
    const auto Size96 = SmallestLayout();
    EXPECT_LE(Size96.Width, 480);
    EXPECT_LE(Size96.Height, 372);
    for (const int Dpi : {96, 120, 144, 192})
        for (const auto& [Width, Height] :
             {std::pair(0, 0), std::pair(480, 372), std::pair(700, 400), std::pair(480, 900),
              std::pair(1200, 900), std::pair(2400, 1700)}) {
            SCOPED_TRACE(testing::Message() << Width << " x " << Height << " at " << Dpi);
            FakeWindow::PixelsPerInch = Dpi;
            Places Where;
            for (const Placed& Control : LayOut(Width * Dpi / 96, Height * Dpi / 96))
                EXPECT_TRUE(Where.emplace(Control.Id, Control.Area).second) << Control.Id;
            for (const ControlRow& Row : Controls())
                if (Row.What != Kind::HiddenLabel) ExpectWhole(Row, Where);
            for (const ControlRow& A : Controls())
                for (const ControlRow& B : Controls()) ExpectApart(A, B, Where);
        }
}

} // namespace
