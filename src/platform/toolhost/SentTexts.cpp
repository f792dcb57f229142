#include "platform/toolhost/SentTexts.h"

#include <cstring>

#include "platform/ToolLibraries.h"

namespace platform::toolhost {
namespace {

// What can't be an address is no text: a library may leave any small number in a parameter without use.
std::string_view TextAt(std::uintptr_t address) {
    constexpr std::uintptr_t lowestAddress = 65536;
    if (address < lowestAddress) return {};
    const char* text = reinterpret_cast<const char*>(address);
    return {text, ::strnlen(text, ToolLibraries::MaxTextLength)};
}

}  // namespace

std::pair<std::string_view, std::string_view> SentTexts(std::uint32_t message, std::uintptr_t wparam,
                                                        std::intptr_t lparam) {
    switch (message) {
        case msgStatus:
        case msgDropped1:
        case msgInfo:
        case msgDropped2:
            return {TextAt(wparam), {}};
        case msgAddString:
            return {TextAt(wparam), TextAt(static_cast<std::uintptr_t>(lparam))};
        default:
            return {};
    }
}

}  // namespace platform::toolhost
