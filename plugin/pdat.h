// PDAT, the host's array of profile data, after it has crossed the COM boundary.
//
// Each element was converted by the platform's own automation rules at the boundary; what cannot be converted
// fails only when it is asked for, as it would in the array itself.
#pragma once

#include <optional>

#include "host/failure.h"
#include "host/text.h"

// One Variant, in the forms that the plug-in asks for; absent where it has none.
struct HostValue {
    std::optional<std::wstring> Text;
    std::optional<Long> Number;
    std::optional<bool> Flag;
};

using Pdat = std::vector<HostValue>;

// The elements that the plug-in reads.
namespace PdatElement {
inline constexpr std::size_t HostText0 = 0, GameId = 1, ProcessRef = 2, HostText3 = 3, HostText4 = 4,
                             HostText5 = 5, MessageRef = 6, ProfileFolder = 7, HostText8 = 8;
inline constexpr std::size_t Administrator = 10; // who asks, for the administration log
inline constexpr std::size_t HostWideLogs = 11;  // Boolean
inline constexpr std::size_t AreaHeight = 12;    // twips
inline constexpr std::size_t AreaWidth = 13;     // twips
} // namespace PdatElement

// Error 9 for an element that is not there, 13 for one of another kind; both name the element.
std::wstring PdatText(const Pdat& Data, std::size_t Element, Place Where = Place::current());
Long PdatNumber(const Pdat& Data, std::size_t Element, Place Where = Place::current());
bool PdatFlag(const Pdat& Data, std::size_t Element, Place Where = Place::current());
