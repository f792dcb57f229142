#pragma once

#include <array>
#include <string_view>

namespace model {

// The keywords of the header of designs and vector files, in the order in which outputs list them.
struct HeaderWord {
    std::string_view Name;
    std::string_view Short;  // empty if there is none
};
inline constexpr std::array<HeaderWord, 10> headerWords{{{"Name", ""},
                                                         {"Partno", ""},
                                                         {"Date", ""},
                                                         {"Revision", "Rev"},
                                                         {"Designer", ""},
                                                         {"Company", ""},
                                                         {"Assembly", "Assy"},
                                                         {"Location", "Loc"},
                                                         {"Device", ""},
                                                         {"Format", ""}}};

}  // namespace model
