// The window and its pages; the group boxes are in layout_frames.
#include "window/layout.h"

#include <algorithm>

#include "window/controls.h"

namespace {

using Places = std::vector<Placed>;
using Measure::Scaled;

// A page with a list and its details on the left, what can be done with the list on the right.
struct ListPage {
    int List, Details, Options, Search, Add;
};
constexpr ListPage NamesPage{ID_lstBannedNames, ID_Frame8, ID_Frame3, ID_Frame4, ID_Frame1};
constexpr ListPage IpsPage{ID_lstBannedIps, ID_Frame9, ID_Frame6, ID_Frame7, ID_Frame10};

int LeastRight(const ListPage& Page) {
    return std::max(GroupWidth(Page.Options) + LayoutGap() + GroupWidth(Page.Search), GroupWidth(Page.Add));
}

// Beyond a width that is easy to read the list gets the rest.
int RightWidth(const ListPage& Page, int Width) {
    const int Spared = Width - 3 * LayoutGap() - GroupWidth(Page.Details);
    return std::max(LeastRight(Page), std::min({Spared, Width * 11 / 20, Scaled(400)}));
}

Size SmallestListPage(const ListPage& Page) {
    const int Right = LeastRight(Page);
    const int Tools = GroupHeight(Page.Options, GroupWidth(Page.Options));
    return {3 * LayoutGap() + GroupWidth(Page.Details) + Right,
            3 * LayoutGap() + std::max(ListHeight() + GroupHeight(Page.Details, GroupWidth(Page.Details)),
                                       Tools + GroupHeight(Page.Add, Right))};
}

void PlaceListPage(Places& Out, const ListPage& Page, int Width, int Height) {
    const int Gap = LayoutGap();
    const int Right = RightWidth(Page, Width);
    const int Left = Width - Right - 3 * Gap;
    const int Inside = Height - 3 * Gap;
    // A long reason gets the lines that the list does not need.
    const int Least = GroupHeight(Page.Details, Left);
    const int MoreLines = std::clamp((Inside / 2 - Least) / Measure::LineHeight(), 0, 3);
    const int Details = Least + (Page.Details == ID_Frame8 ? MoreLines * Measure::LineHeight() : 0);
    Out.push_back({Page.List, {Gap, Gap, Left, Inside - Details}});
    PlaceGroup(Out, Page.Details, {Gap, Height - Gap - Details, Left, Details});

    const int X = Left + 2 * Gap;
    const int Options = GroupWidth(Page.Options);
    const int Tools = GroupHeight(Page.Options, Options);
    PlaceGroup(Out, Page.Options, {X, Gap, Options, Tools});
    PlaceGroup(Out, Page.Search, {X + Options + Gap, Gap, Right - Options - Gap, Tools});
    PlaceGroup(Out, Page.Add, {X, Tools + 2 * Gap, Right, GroupHeight(Page.Add, Right)});
}

// The ban method with its explanations on the left, the two small boxes on the right.
int SettingsRight() { return std::max(GroupWidth(ID_Frame12), GroupWidth(ID_Frame13)); }

Size SmallestSettingsPage(int Width) {
    const int Gap = LayoutGap();
    const int Right = SettingsRight();
    const int Left = std::max(Width - Right - 3 * Gap, GroupWidth(ID_Frame5));
    return {Left + Right + 3 * Gap,
            2 * Gap + std::max(GroupHeight(ID_Frame5, Left),
                               GroupHeight(ID_Frame12, Right) + Gap + GroupHeight(ID_Frame13, Right))};
}

void PlaceSettingsPage(Places& Out, int Width) {
    const int Gap = LayoutGap();
    const int Wide = std::min(Width, std::max(Scaled(720), SmallestSettingsPage(0).Width));
    const int Right = SettingsRight();
    const int Left = Wide - Right - 3 * Gap;
    const int Idle = GroupHeight(ID_Frame12, Right);
    const int Refresh = GroupHeight(ID_Frame13, Right);
    const int Method = std::max(GroupHeight(ID_Frame5, Left), Idle + Gap + Refresh);
    PlaceGroup(Out, ID_Frame5, {Gap, Gap, Left, Method});
    PlaceGroup(Out, ID_Frame12, {2 * Gap + Left, Gap, Right, Idle});
    PlaceGroup(Out, ID_Frame13, {2 * Gap + Left, 2 * Gap + Idle, Right, Refresh});
}

Size SmallestSlapsPage() {
    return {2 * LayoutGap() + GroupWidth(ID_Frame11), 2 * LayoutGap() + GroupHeight(ID_Frame11, 0)};
}

Size Larger(const Size& A, const Size& B) {
    return {std::max(A.Width, B.Width), std::max(A.Height, B.Height)};
}

// The page size that every page fits into; texts break into more lines on a narrow page.
Size SmallestPage(int Width) {
    const Size Lists = Larger(SmallestListPage(NamesPage), SmallestListPage(IpsPage));
    const int Wide = std::max({Width, Lists.Width, SmallestSettingsPage(Width).Width});
    return Larger(Lists, Larger(SmallestSettingsPage(Wide), SmallestSlapsPage()));
}

// What the tab control needs around a page.
Size TabBorder() {
    constexpr int Any = 1000;
    const Rect Inside = Measure::TabInterior({0, 0, Any, Any});
    return {Any - Inside.Width, Any - Inside.Height};
}

int LeastTabHeight(int Width) { return SmallestPage(Width - TabBorder().Width).Height + TabBorder().Height; }

} // namespace

Size SmallestLayout() {
    const int Width = SmallestPage(0).Width + TabBorder().Width;
    return {Width + 2 * LayoutGap(), GroupHeight(ID_Frame2, Width) + LeastTabHeight(Width) + 3 * LayoutGap()};
}

std::vector<Placed> LayOut(int Width, int Height) {
    const Size Smallest = SmallestLayout();
    const int Gap = LayoutGap();
    const int Wide = std::max(Width, Smallest.Width) - 2 * Gap;
    const int Tall = std::max(Height, Smallest.Height);
    const int Tabs = std::max(LeastTabHeight(Wide), std::min(Tall * 2 / 5, Scaled(360)));
    const int Players = Tall - Tabs - 3 * Gap;

    Places Out;
    PlaceGroup(Out, ID_Frame2, {Gap, Gap, Wide, Players});
    const Rect Tab{Gap, Players + 2 * Gap, Wide, Tabs};
    const Rect Page = Measure::TabInterior(Tab);
    Out.push_back({ID_stMain, Tab});
    for (const int Id : {ID_pageNames, ID_pageIps, ID_pageSettings, ID_pageSlaps}) Out.push_back({Id, Page});
    PlaceListPage(Out, NamesPage, Page.Width, Page.Height);
    PlaceListPage(Out, IpsPage, Page.Width, Page.Height);
    PlaceSettingsPage(Out, Page.Width);
    PlaceGroup(Out, ID_Frame11, {Gap, Gap, Page.Width - 2 * Gap, Page.Height - 2 * Gap});
    return Out;
}
