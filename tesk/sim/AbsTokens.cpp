#include "sim/AbsTokens.h"

#include <algorithm>

#include "base/modLib.h"

namespace sim {
bool IsNetName(std::string_view text) {
    return !text.empty() && text.size() <= 63 && std::all_of(text.begin(), text.end(), base::IsWordChar);
}

bool CanHave(const Net& net, Input input) {
    if (net.Kind == NetKind::Input) return false;
    const auto kind = net.Register;
    const bool clocked = kind != RegisterKind::None && kind != RegisterKind::Latch;
    switch (input) {
        case Input::Out:
            return kind == RegisterKind::None;
        case Input::D:
        case Input::T:
            return kind == (input == Input::D ? RegisterKind::D : RegisterKind::T);
        case Input::J:
        case Input::K:
            return kind == RegisterKind::Jk;
        case Input::S:
        case Input::R:
            return kind == RegisterKind::Rs;
        case Input::L:
        case Input::Le:
            return kind == RegisterKind::Latch;
        case Input::Ck:
        case Input::Ce:
        case Input::Sr:
        case Input::Sp:
            return clocked;
        case Input::Ar:
        case Input::Ap:
            return kind != RegisterKind::None;
        case Input::Oe:
            break;
    }
    return net.Kind != NetKind::Node;
}

}  // namespace sim
