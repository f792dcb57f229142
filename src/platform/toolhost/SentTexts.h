#pragma once

#include <cstdint>
#include <string_view>
#include <utility>

namespace platform::toolhost {

// The texts behind both parameters of a message that a library sends, where the number carries them; cut at
// the length that a message takes. They live as long as the library's call.
std::pair<std::string_view, std::string_view> SentTexts(std::uint32_t message, std::uintptr_t wparam,
                                                        std::intptr_t lparam);

}  // namespace platform::toolhost
