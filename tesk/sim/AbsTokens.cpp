#include "sim/AbsTokens.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/modLib.h"

namespace sim {
namespace {

template <typename Value, std::size_t n>
using Words = std::array<std::pair<Value, std::string_view>, n>;

constexpr Words<NetKind, 4> netKinds{{{NetKind::Input, "INPUT"},
                                      {NetKind::Output, "OUTPUT"},
                                      {NetKind::Bidirectional, "BIDIRECTIONAL"},
                                      {NetKind::Node, "NODE"}}};

constexpr Words<RegisterKind, 6> registerKinds{{{RegisterKind::None, "NONE"},
                                                {RegisterKind::D, "D"},
                                                {RegisterKind::T, "T"},
                                                {RegisterKind::Jk, "JK"},
                                                {RegisterKind::Rs, "RS"},
                                                {RegisterKind::Latch, "LATCH"}}};

constexpr Words<Input, 16> inputs{{{Input::Out, "OUT"},
                                   {Input::D, "D"},
                                   {Input::T, "T"},
                                   {Input::J, "J"},
                                   {Input::K, "K"},
                                   {Input::S, "S"},
                                   {Input::R, "R"},
                                   {Input::L, "L"},
                                   {Input::Ck, "CK"},
                                   {Input::Ce, "CE"},
                                   {Input::Le, "LE"},
                                   {Input::Ar, "AR"},
                                   {Input::Ap, "AP"},
                                   {Input::Sr, "SR"},
                                   {Input::Sp, "SP"},
                                   {Input::Oe, "OE"}}};

template <typename Value, std::size_t n>
std::string_view Find(const Words<Value, n>& words, Value value) {
    return std::find_if(words.begin(), words.end(), [&](const auto& w) { return w.first == value; })->second;
}

template <typename Value, std::size_t n>
std::optional<Value> Find(const Words<Value, n>& words, std::string_view text) {
    const auto it = std::find_if(words.begin(), words.end(), [&](const auto& w) { return w.second == text; });
    return it == words.end() ? std::nullopt : std::optional<Value>(it->first);
}

}  // namespace

std::string_view Word(NetKind kind) { return Find(netKinds, kind); }
std::string_view Word(RegisterKind kind) { return Find(registerKinds, kind); }
std::string_view Word(Input input) { return Find(inputs, input); }

std::optional<NetKind> NetKindOf(std::string_view word) { return Find(netKinds, word); }
std::optional<RegisterKind> RegisterKindOf(std::string_view word) { return Find(registerKinds, word); }
std::optional<Input> InputOf(std::string_view word) { return Find(inputs, word); }

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

const std::vector<HeaderKeyword>& HeaderKeywords() {
    static const std::vector<HeaderKeyword> keywords{
        {"Name", ""},    {"Partno", ""},       {"Date", ""},        {"Revision", "Rev"}, {"Designer", ""},
        {"Company", ""}, {"Assembly", "Assy"}, {"Location", "Loc"}, {"Device", ""},      {"Format", ""}};
    return keywords;
}

}  // namespace sim
