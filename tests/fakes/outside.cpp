#include "tests/fakes/outside.h"

#include <new>
#include <set>

#include "game/mdlVNT.h"
#include "game/sub_main.h"
#include "host/work.h"
#include "tests/fakes/faults.h"

namespace Outside {

Lines Journal;
Lines Reports;
long Calls = 0;
std::function<void(TextView)> BeforeCall;
Moment Clock;
std::int64_t Elapsed = 0;
bool ReportsArrive = true;
std::vector<bool> YesNoAnswers;
Lines TextAnswers;
std::optional<std::wstring> OpenFileAnswer;
std::function<void()> WhileBoxIsOpen;
Long ServiceState = 3;
bool FilterMissing = false;
std::vector<std::function<void()>>* Kept = nullptr;

namespace {

long FaultDue = 0; // the value of Calls at which the fault happens; 0 is never
Fault FaultKind = Fault::Failure;
std::wstring FaultyName;

} // namespace

void Record(std::wstring What) { Journal.push_back(std::move(What)); }

Lines Recorded(TextView Prefix) {
    Lines Found;
    for (const std::wstring& Text : Journal)
        if (Text.starts_with(Prefix)) Found.push_back(Text);
    return Found;
}

void FailCall(long Number, Fault Kind) {
    FaultDue = Number == 0 ? 0 : Calls + Number;
    FaultKind = Kind;
    FaultyName.clear();
}

std::wstring FaultyCall() { return FaultyName; }

// Counts one outside call; true when it is to answer empty.
bool Enter(TextView Name, bool CanFail, Place Where) {
    ++Calls;
    if (Calls != FaultDue) return false;
    FaultyName = Name;
    if (FaultKind == Fault::OutOfMemory) throw std::bad_alloc();
    if (!CanFail || FaultKind == Fault::Empty) return true;
    if (FaultKind == Fault::WrongType) Fail(ErrorNumber::TypeMismatch, {}, Where);
    Fail(1004, L"made to fail: " + std::wstring(Name), Where);
}

bool EnterHost(TextView Name, bool CanFail, Place Where) {
    Work::RequireServer(Where);
    if (BeforeCall) BeforeCall(Name);
    Work::RequireServer(Where);
    return Enter(Name, CanFail, Where);
}

void Reset() {
    ResetFiles();
    DetachAll();
    Journal.clear();
    Reports.clear();
    BeforeCall = nullptr;
    Clock = {2024, 5, 6, 7, 8, 9};
    YesNoAnswers.clear();
    TextAnswers.clear();
    OpenFileAnswer.reset();
    WhileBoxIsOpen = nullptr;
    ServiceState = 3;
    FilterMissing = false;
    ReportsArrive = true;
    FailCall(0, Fault::Failure);
    mdlVNT::Forget();
    PutFolder(std::wstring(Base) + L"\\Plugins");
    PutFolder(std::wstring(Base) + L"\\profiles");
    SubMain();
    Calls = 0;
    Journal.clear();
}

} // namespace Outside
