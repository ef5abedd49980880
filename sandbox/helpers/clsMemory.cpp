// qrvGMF.clsMemory: another process's memory, its message block, and Base64.
#include "sandbox/helpers/automation.h"
#include "sandbox/helpers/base64.h"
#include "sandbox/helpers/game_process.h"

namespace {

using Automation::Arguments;

std::uint32_t Unsigned(const Arguments& Given, unsigned At) {
    return static_cast<std::uint32_t>(Given.Long(At));
}

void ReadLong(const Arguments& Given, VARIANT& Result) {
    std::int32_t Value = 0;
    GameProcess::Read(Unsigned(Given, 0), Unsigned(Given, 1), &Value, sizeof Value);
    Automation::SetLong(Result, Value);
}

void ReadByte(const Arguments& Given, VARIANT& Result) {
    std::uint8_t Value = 0;
    GameProcess::Read(Unsigned(Given, 0), Unsigned(Given, 1), &Value, sizeof Value);
    Automation::SetByte(Result, Value);
}

void ReadStr(const Arguments& Given, VARIANT& Result) {
    Automation::SetText(Result, GameProcess::ReadText(Unsigned(Given, 0), Unsigned(Given, 1)));
}

void WriteLong(const Arguments& Given, VARIANT&) {
    const std::int32_t Value = Given.Long(2), Size = Given.Long(3);
    if (Size != 1 && Size != 2 && Size != 4) throw Automation::Error{Automation::InvalidCall, "Bad size"};
    GameProcess::Write(Unsigned(Given, 0), Unsigned(Given, 1), &Value, static_cast<std::size_t>(Size));
}

void AddMsg(const Arguments& Given, VARIANT&) {
    const std::string Channel = Given.Text(4);
    const std::int32_t Kind = Given.Long(5);
    if ((Channel != "CMD" && Channel != "MSG") || Kind < 1 || Kind > 255)
        throw Automation::Error{Automation::InvalidCall, "No such channel or kind"};
    GameProcess::Deliver(
        Unsigned(Given, 1), Given.Boolean(3) ? Layout::Build::Affiliate : Layout::Build::Standard,
        Channel == "CMD" ? Layout::Message::Channel::Command : Layout::Message::Channel::Display,
        static_cast<std::uint8_t>(Kind), Given.Text(2));
}

void Enc64(const Arguments& Given, VARIANT& Result) {
    Automation::SetText(Result, EncodeBase64(Given.Text(0)));
}
void Dec64(const Arguments& Given, VARIANT& Result) {
    Automation::SetText(Result, DecodeBase64(Given.Text(0)));
}

constexpr Automation::Member Members[] = {
    {L"ReadLong", 2, 2, ReadLong},   {L"ReadByte", 2, 2, ReadByte}, {L"ReadStr", 2, 2, ReadStr},
    {L"WriteLong", 4, 4, WriteLong}, {L"AddMsg", 6, 6, AddMsg},     {L"Enc64", 1, 1, Enc64},
    {L"Dec64", 1, 1, Dec64},
};

} // namespace

const Automation::Class Automation::TheClass{
    L"qrvGMF.clsMemory",
    {0x9c21e7c3, 0x3ec8, 0x4622, {0xa1, 0x08, 0x66, 0x9e, 0x14, 0x4a, 0x44, 0x13}},
    Members};
