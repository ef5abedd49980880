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

TEST_F(Window, TheLayoutShowsEveryControlWholeAtEverySize) {
    const auto Size96 = SmallestLayout();
    EXPECT_LE(Size96.Width, 480);
    EXPECT_LE(Size96.Height, 372);
    for (const int Dpi : {96, 120, 144, 192}) {
        FakeWindow::PixelsPerInch = Dpi;
        for (const auto& [Width, Height] :
             {std::pair(0, 0), std::pair(480, 372), std::pair(700, 400), std::pair(480, 900),
              std::pair(1200, 900), std::pair(2400, 1700)}) {
            std::map<int, Rect> Where;
            for (const Placed& Each : LayOut(Width * Dpi / 96, Height * Dpi / 96))
                EXPECT_TRUE(Where.emplace(Each.Id, Each.Where).second) << Each.Id;
            for (const ControlRow& Row : Controls()) {
                if (Row.What == Kind::HiddenLabel) continue;
                ASSERT_EQ(Where.count(Row.Id), 1u) << Row.Id;
                const Rect& Place = Where[Row.Id];
                EXPECT_GT(Place.Width, 0) << Row.Id;
                EXPECT_GT(Place.Height, 0) << Row.Id;
                if (Row.Parent != 0) {
                    const Rect& Page = Where[Row.Parent];
                    EXPECT_TRUE(Contains({0, 0, Page.Width, Page.Height}, Place))
                        << Row.Id << " at " << Width;
                }
                if (Row.What == Kind::Push || Row.What == Kind::Option || Row.What == Kind::Check) {
                    EXPECT_GT(Place.Width, Measure::TextWidth(Row.Caption)) << Row.Id;
                } else if (Row.What == Kind::Caption) {
                    EXPECT_GE(Place.Height, Measure::TextHeight(Row.Caption, Place.Width)) << Row.Id;
                }
            }
            for (const ControlRow& A : Controls())
                for (const ControlRow& B : Controls()) {
                    const bool Holds = A.What == Kind::Frame || A.What == Kind::Tab || A.What == Kind::Page;
                    if (A.Id == B.Id || A.Parent != B.Parent || Where.count(A.Id) == 0 ||
                        Where.count(B.Id) == 0 || B.What == Kind::Page || B.What == Kind::Tab)
                        continue;
                    const bool Fine =
                        !Overlap(Where[A.Id], Where[B.Id]) ||
                        (Holds ? Contains(Where[A.Id], Where[B.Id]) : Contains(Where[B.Id], Where[A.Id]));
                    EXPECT_TRUE(Fine)
                        << A.Id << " and " << B.Id << " at " << Width << " x " << Height << ", " << Dpi;
                }
        }
    }
}

} // namespace
