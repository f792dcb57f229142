#include "front/Extension.h"

#include <array>

#include "base/Text.h"

namespace front {

namespace {
constexpr std::array<std::string_view, 18> kNames{"",   "D",  "T",  "J",  "K",  "S",  "R",  "L",  "CK",
                                                  "CE", "LE", "AR", "AP", "SR", "SP", "OE", "IO", "DQ"};
}

std::string_view ExtensionName(Extension extension) { return kNames[static_cast<std::size_t>(extension)]; }

std::optional<Extension> ExtensionOf(std::string_view name) {
    for (std::size_t i = 1; i < kNames.size(); ++i)
        if (base::EqualNoCase(name, kNames[i])) return static_cast<Extension>(i);
    return std::nullopt;
}

bool IsRegisterInput(Extension extension) { return extension >= Extension::D && extension <= Extension::L; }

}  // namespace front
