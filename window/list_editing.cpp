// Selecting, removing and searching in a list box.
#include "window/list_editing.h"

#include <algorithm>

#include "game/mdlVNT.h"
#include "game/show_msg.h"
#include "host/platform.h"

namespace {

// The first item from Start on that contains the text, with regard to case; -1 for none. One past the last
// item is looked at, too, and reads as empty.
int FindContaining(const ListBox& List, TextView Text, int Start) {
    const int Count = List.Count();
    for (int Item = Start; Item <= Count; ++Item)
        if (List.Item(Item).find(Text) != std::wstring::npos) return Item;
    return -1;
}

// If the first item is selected the search looks at it again: nothing has been searched for yet.
int SearchStart(const ListBox& List) {
    const int Selected = List.Selected();
    return Selected >= 1 ? Selected + 1 : 0;
}

bool WantsToBeginAgain(TextView NotFound) {
    return Platform::AskYesNo(std::wstring(NotFound) +
                                  L"\r\n\r\nThe search was not started from the beginning of the list.\r\n"
                                  L"Would you like to search again from the beginning of the list?",
                              L"Search Failed", Platform::Answer::Yes);
}

} // namespace

void SelectAndShow(const DetailedList& List, int Item) {
    List.Box.Select(Item);
    Trapped(List.Procedure, mdlVNT::CurrentProfile, List.ShowDetails);
}

void SelectFirst(const DetailedList& List) { SelectAndShow(List, std::min(0, List.Box.Count() - 1)); }

void DropItem(const ListBox& List, int Item) {
    const bool WasSelected = Item >= 0 && Item == List.Selected();
    List.Remove(Item);
    if (WasSelected) List.Select(std::min(0, List.Count() - 1));
}

int FindListItem(const ListBox& List, TextView Text) { return List.FindPrefix(Text); }

void SearchList(const DetailedList& List, TextView Text, TextView NotFound) {
    const int Start = SearchStart(List.Box);
    const int Found = FindContaining(List.Box, Text, Start);
    if (Found >= 0) {
        if (Found == List.Box.Count()) return; // past the end there is nothing to select
        SelectAndShow(List, Found);
        List.Box.ShowAtTop(Found);
    } else if (Start == 0) {
        ShowMsg(MsgKind::Failed, NotFound, mdlVNT::CurrentProfile);
    } else if (WantsToBeginAgain(NotFound)) {
        SelectAndShow(List, 0);
        SearchList(List, Text, NotFound);
    }
}
