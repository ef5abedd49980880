#include "window/list_editing.h"

#include "game/mdlVNT.h"
#include "game/show_msg.h"
#include "host/platform.h"
#include "window/events.h"

namespace {

// The first item from Start on that contains the text, with regard to case; -1 for none. One past the last
// item is looked at, too, and reads as empty.
int FindContaining(const ListBox& List, TextView Text, int Start) {
    const int Count = List.Count();
    for (int Index = Start; Index <= Count; ++Index)
        if (List.Item(Index).find(Text) != std::wstring::npos) return Index;
    return -1;
}

// With the first item selected the search begins there again, on purpose.
int SearchStart(const ListBox& List) {
    const int Selected = List.Selected();
    return Selected >= 1 ? Selected + 1 : 0;
}

bool WantsToBeginAgain(TextView NotFound) {
    return Platform::AskYesNo(std::wstring(NotFound) +
                                  L"\r\n\r\nThe search was not started from the beginning of the list.\r\n"
                                  L"Would you like to search again from the beginning of the list?",
                              L"Search Failed");
}

} // namespace

bool ListsShow(Long Index) { return Index == mdlVNT::CurrentProfile; }

void SelectAndShow(const ListBox& List, int Index) {
    List.Select(Index);
    Raise(List.Id, Event::Click);
}

void RemoveItem(const ListBox& List, int Index) {
    const bool WasSelected = Index >= 0 && Index == List.Selected();
    List.Remove(Index);
    if (WasSelected) SelectAndShow(List, List.Count() > 0 ? 0 : -1);
}

void RemoveSelected(const ListBox& List) { RemoveItem(List, List.Selected()); }

bool HasItem(const ListBox& List, TextView Text) {
    const int Count = List.Count();
    for (int Index = 0; Index < Count; ++Index)
        if (List.Item(Index) == Text) return true;
    return false;
}

int FindListItem(const ListBox& List, TextView Text) { return List.FindPrefix(Text); }

void SearchList(const ListBox& List, TextView Text, TextView NotFound) {
    const int Start = SearchStart(List);
    const int Found = FindContaining(List, Text, Start);
    if (Found >= 0) {
        if (Found == List.Count()) return; // past the end there is nothing to select
        SelectAndShow(List, Found);
        List.ShowAtTop(Found);
    } else if (Start == 0) {
        ShowMsg(MsgKind::Failed, NotFound, mdlVNT::CurrentProfile);
    } else if (WantsToBeginAgain(NotFound)) {
        SelectAndShow(List, 0);
        SearchList(List, Text, NotFound);
    }
}
