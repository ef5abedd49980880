// The window over controls, game and files in memory.
#pragma once

#include <gtest/gtest.h>

#include "game/mdlVNT.h"
#include "plugin/lifecycle.h"
#include "tests/fakes/fake_toolkit.h"
#include "tests/fakes/server.h"
#include "window/frmVNT.h"

class Window : public testing::Test {
protected:
    void SetUp() override { FakeWindow::Reset(); }
    void TearDown() override { FakeWindow::Reset(); }

    // Loads the window for the profile and forgets what that took.
    void Open(Long Index = TestProfile, TextView Folder = L"Server1") {
        Load(Index, 77, HostData(Folder));
        Outside::Journal.clear();
    }
    // A link of the name to an address, under the number Key.
    void PutLink(TextView Name, TextView Key, TextView Address) {
        Outside::PutIni(SettingsFile(L"BannedReference.ini"), Name, Key, Address);
    }

    Server Game;
};

// Opened for an empty server.
class PlayerList : public Window {
protected:
    void SetUp() override {
        Window::SetUp();
        Open();
    }
    // The players as the administrator sees them after a refresh.
    void Refresh() { FakeWindow::ChooseForRow(FakeWindow::Rows().empty() ? -1 : 0, ID_mnuRefresh); }
    void JoinBobAndRita() {
        Game.Join(3, "Bob", "10.0.0.7", 1, 50);
        Game.Join(12, "Rita", "10.0.0.9", 2, 140);
        Refresh();
        Outside::Journal.clear();
    }
};

// One of the profile's files, and the boxes that were shown.
inline std::wstring FileOf(TextView Name) { return Outside::FileText(SettingsFile(Name)); }
inline Lines Boxes() {
    Lines Found;
    for (const std::wstring& Entry : Outside::Journal)
        if (Entry.starts_with(L"Box") || Entry.starts_with(L"Ask")) Found.push_back(Entry);
    return Found;
}
