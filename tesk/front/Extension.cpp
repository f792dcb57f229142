#include "front/Extension.h"

#include <stdexcept>
#include <string>

#include "base/Text.h"

namespace front {

namespace {

constexpr model::Words<Extension, 18> kWords{{{Extension::None, ""},
                                              {Extension::D, "D"},
                                              {Extension::T, "T"},
                                              {Extension::J, "J"},
                                              {Extension::K, "K"},
                                              {Extension::S, "S"},
                                              {Extension::R, "R"},
                                              {Extension::L, "L"},
                                              {Extension::CK, "CK"},
                                              {Extension::CE, "CE"},
                                              {Extension::LE, "LE"},
                                              {Extension::AR, "AR"},
                                              {Extension::AP, "AP"},
                                              {Extension::SR, "SR"},
                                              {Extension::SP, "SP"},
                                              {Extension::OE, "OE"},
                                              {Extension::IO, "IO"},
                                              {Extension::DQ, "DQ"}}};

}  // namespace

std::string_view ExtensionName(Extension extension) { return kWords.Of(extension); }

std::optional<Extension> ExtensionOf(std::string_view name) {
    return name.empty() ? std::nullopt : kWords.Find(base::Upper(name));
}

bool IsRegisterInput(Extension extension) { return extension >= Extension::D && extension <= Extension::L; }

model::Input InputOf(Extension extension) {
    if (extension == Extension::None) return model::Input::Out;
    const auto input = model::InputWords.Find(ExtensionName(extension));
    if (!input) throw std::logic_error("extension " + std::string(ExtensionName(extension)) + " on the left");
    return *input;
}

model::RegisterKind RegisterKindOf(Extension kind) {
    switch (kind) {
        case Extension::D:
            return model::RegisterKind::D;
        case Extension::T:
            return model::RegisterKind::T;
        case Extension::J:
            return model::RegisterKind::Jk;
        case Extension::R:
            return model::RegisterKind::Rs;
        case Extension::L:
            return model::RegisterKind::Latch;
        default:
            return model::RegisterKind::None;
    }
}

}  // namespace front
