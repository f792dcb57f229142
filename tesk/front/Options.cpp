#include "front/Options.h"

#include <algorithm>
#include <array>

namespace front {

namespace {

struct Token {
    std::string_view Text;
    bool Options::*Field;
};

constexpr std::array kTokens{
    Token{"j", &Options::Jedec},     Token{"h", &Options::Ascii},
    Token{"i", &Options::Hl},        Token{"f", &Options::Fuse},
    Token{"x", &Options::Equations}, Token{"a", &Options::Absolute},
    Token{"l", &Options::List},      Token{"e", &Options::Expanded},
    Token{"p", &Options::Pdif},      Token{"b", &Options::Pla},
    Token{"c", &Options::Palasm},    Token{"t", &Options::Edif},
    Token{"zx", &Options::Xnf},      Token{"zq", &Options::Qdif},
    Token{"kb", &Options::Best},     Token{"kd", &Options::Demorgan},
    Token{"ks", &Options::Share},    Token{"kx", &Options::Keep},
    Token{"g", &Options::Secure},    Token{"d", &Options::Deactivate},
    Token{"s", &Options::Simulate},  Token{"w", &Options::ViewSimulation},
    Token{"o", &Options::Onehot},    Token{"n", &Options::Name},
};

}  // namespace

Options Options::Parse(std::string_view text) {
    Options result;
    for (std::size_t at = 0; at < text.size();) {
        const char c = text[at];
        if (c == 'm' && at + 1 < text.size() && text[at + 1] >= '0' && text[at + 1] <= '9') {
            result.Minimization = std::min(text[at + 1] - '0', 4);
            at += 2;
            continue;
        }
        const auto token = std::find_if(kTokens.begin(), kTokens.end(), [&](const Token& candidate) {
            return text.substr(at, candidate.Text.size()) == candidate.Text;
        });
        if (token != kTokens.end()) result.*(token->Field) = true;
        at += token == kTokens.end() ? 1 : token->Text.size();
    }
    return result;
}

}  // namespace front
