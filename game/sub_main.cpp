#include "game/sub_main.h"

#include "game/mdlVNT.h"
#include "game/show_msg.h"
#include "host/file_helper.h"
#include "host/memory_helper.h"
#include "host/platform.h"

void SubMain() noexcept {
    // Each step on its own: a missing helper object must not take the other one and the paths with it.
    Trapped(L"SubMain", 0, [] {
        mdlVNT::HostBaseFolder = HostBaseOf(Platform::PluginFolder());
        mdlVNT::PlayersIniPath = mdlVNT::HostBaseFolder + L"\\Plugins\\Players.ini";
    });
    Trapped(L"SubMain", 0, [] { FileHelper::Create(); });
    Trapped(L"SubMain", 0, [] { MemoryHelper::Create(); });
}
