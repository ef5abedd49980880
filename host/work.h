// The door: one rule for calls inside calls.
//
// The host can come back into the plug-in inside any of our calls to its helper objects and the packet
// filter, inside a box and inside a menu: it may give a profile's index to another server there, disable the
// profile, unload everything, or start the same work once more. Whatever is begun from outside is therefore a
// Work, and what was begun for one server ends at the next call that would leave the plug-in (RequireServer).
// Nothing else asks.
//
// Works are kept in one array and not in the objects on the stack: a host may swallow a system exception, and
// the frames in between are then gone without a destructor. The next call from outside that is no deeper
// drops them.
#pragma once

#include "host/failure.h"
#include "host/text.h"

class Work {
public:
    enum class Kind : unsigned char {
        HostCall,   // a message or member that arrives; nothing ends it
        RemoteCall, // the same from a console
        Edit,       // of lists that were chosen before and stay what they are; nothing ends it
        FileChange, // of one such file, as part of other work; not begun once that has ended
        Load,       // from here on for the server of a profile: ends with it
        Reload,
        Click,
        Refresh,
        Tick,
        Request,
        GridHold, // from here on no work, only a mark on what runs
        Reply
    };
    enum class Fate : unsigned char { Runs, Exchanged, Closed };

    // Profile is an index, 0 where there is none. Frame is the caller's; a HostCall drops the frames that are
    // gone.
    Work(Kind What, Long Profile, const void* Frame = __builtin_frame_address(0)) noexcept;
    // Has the file for itself: error 5 if work of the same kind on it runs already, 0 if the work around it
    // has ended.
    Work(Kind What, Long Profile, TextView File, const void* Frame = __builtin_frame_address(0));
    ~Work();
    Work(const Work&) = delete;
    Work& operator=(const Work&) = delete;
    // What has become of the server that it was begun for.
    Fate ItsFate() const noexcept;

    // Ends what runs for the server of a profile, or of any.
    static void End(Long Profile, Fate How) noexcept;
    static void EndAll() noexcept;

    // Whether such work runs, for any profile or for this one.
    static bool Runs(Kind What) noexcept;
    static bool Runs(Kind What, Long Profile) noexcept;
    // How many works are on the stack; other threads may ask, too.
    static int Depth() noexcept;

    // Of the innermost work: whether its server has gone, and whether nobody at this machine has asked for
    // it.
    static bool HasEnded() noexcept;
    static bool IsUnattended() noexcept;
    // Fails with the number 0, which no trap reports, when the innermost work has ended.
    static void RequireServer(Place Where = Place::current());
};
