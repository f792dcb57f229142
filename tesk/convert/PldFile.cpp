#include "convert/PldFile.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/Text.h"
#include "base/modLib.h"
#include "convert/Failure.h"
#include "front/Limits.h"
#include "front/Names.h"
#include "front/Parser.h"

namespace convert {
namespace {

constexpr std::size_t Width = 100;
constexpr std::size_t NamesInLine = 8;

// "NC" drops the term that it stands in.
bool IsKept(const std::string& name) { return front::IsReserved(name) || name == "NC"; }

std::string Valid(std::string_view wanted) {
    std::string name;
    for (const char c : wanted) {
        if (base::IsWordChar(c))
            name += c;
        else if (c != '<' && c != '>' && c != '[' && c != ']' && c != '(' && c != ')')
            name += '_';
    }
    const bool hasLetter = std::any_of(name.begin(), name.end(), [](char c) {
        return base::UpperChar(c) >= 'A' && base::UpperChar(c) <= 'Z';
    });
    if (!hasLetter || base::IsDigitChar(name[0])) name.insert(0, "N");
    if (IsKept(name)) name += '_';
    return name.substr(0, front::Limits::NameLength);
}

std::string Letters(int number) {
    std::string letters;
    for (; number > 0; number = (number - 1) / 26)
        letters.insert(0, 1, static_cast<char>('a' + (number - 1) % 26));
    return letters;
}

// A header text ends with ";" and may hold no comment.
std::string HeaderText(std::string_view text) {
    std::string result;
    for (const char c : base::TrimView(text)) {
        if (c == '*' && result.ends_with('/')) continue;
        result += c == ';' ? ',' : static_cast<unsigned char>(c) < ' ' ? ' ' : c;
    }
    // Behind a header's word these two make an equation of it.
    if (result.starts_with('.') || result.starts_with('=')) result.insert(0, "_");
    return result.empty() ? "None" : result;
}

// Breaks behind operators: a "$" that is first on its line would be a command.
void AddWrapped(std::string& out, const std::string& line) {
    std::size_t start = 0;
    while (line.size() - start > Width) {
        std::size_t cut = start + Width;
        while (cut > start && !(line[cut] == ' ' && (line[cut - 1] == '#' || line[cut - 1] == '&'))) --cut;
        for (cut = cut > start ? cut : start + Width;
             cut < line.size() && !(line[cut] == ' ' && line[cut + 1] != '$'); ++cut) {
        }
        if (cut >= line.size()) break;
        out += line.substr(start, cut - start) + "\r\n   ";
        start = cut;
    }
    out += line.substr(start) + "\r\n";
}

std::string DeclarationOf(const Pin& pin) {
    return "PIN " + (pin.Number > 0 ? std::to_string(pin.Number) + " " : "") + "= " +
           (pin.ActiveLow ? "!" : "") + pin.Name + " ;\r\n";
}

// Pins that the fitter places stand several to a line.
std::string Declarations(const std::vector<Pin>& pins) {
    std::string text;
    for (std::size_t i = 0; i < pins.size();) {
        std::size_t end = i;
        while (end < pins.size() && end - i < NamesInLine && pins[end].Number == 0 && !pins[end].ActiveLow)
            ++end;
        if (end - i < 2) {
            text += DeclarationOf(pins[i++]);
            continue;
        }
        text += "PIN = [" + pins[i++].Name;
        while (i < end) text += ", " + pins[i++].Name;
        text += "] ;\r\n";
    }
    return text;
}

}  // namespace

bool NameMaker::Claim(const std::string& name) {
    const auto indexed = front::SplitIndex(name);
    const std::string key =
        indexed ? std::string(indexed->Stem) + "#" + std::to_string(indexed->Index) : name;
    return taken_.insert(key).second;
}

const std::string& NameMaker::Of(const std::string& key, std::string_view wanted) {
    const auto [at, isNew] = names_.emplace(key, std::string());
    if (!isNew) return at->second;
    const std::string first = Valid(wanted);
    std::string name = first;
    for (int& tried = tried_[first]; !Claim(name);) {
        const std::string tail = "_" + Letters(++tried);
        name = first.substr(0, front::Limits::NameLength - tail.size()) + tail;
    }
    return at->second = name;
}

void PldFile::AddEquation(const std::string& target, const Formula& value) {
    if (Body.size() + value.Text().size() > front::Limits::FileBytes)
        Fail(0, "the design becomes larger than the compiler takes");
    AddWrapped(Body, target + " = " + value.Text() + " ;");
}

std::string PldFile::Text() const {
    const std::array<std::pair<const char*, const std::string*>, 7> given{{{"Name", &Name},
                                                                           {"Partno", &Partno},
                                                                           {"Date", &Date},
                                                                           {"Revision", &Revision},
                                                                           {"Designer", &Designer},
                                                                           {"Company", &Company},
                                                                           {"Device", &Device}}};
    std::string text;
    for (const auto& [word, value] : given) text += base::PadRight(word, 10) + HeaderText(*value) + " ;\r\n";
    text += "Assembly  None ;\r\nLocation  None ;\r\n\r\n";
    std::string origin = base::ReplaceAll(HeaderText(Origin), "*/", "* /");
    text += "/* " + origin + " */\r\n\r\n" + Declarations(Pins);
    for (const std::string& node : Nodes) text += "NODE " + node + " ;\r\n";
    return text + "\r\n" + Body;
}

std::string DeviceOf(std::string_view part) {
    constexpr std::array<std::string_view, 42> mnemonics{
        "G16V8", "G20V8", "G22V10", "G18V10", "P22V10", "P16L8", "P16R4", "P16R6",  "P16R8",
        "P20L8", "P20R4", "P20R6",  "P20R8",  "P10L8",  "P10H8", "P10P8", "P12L6",  "P12H6",
        "P12P6", "P14L4", "P14H4",  "P14P4",  "P16L2",  "P16H2", "P16P2", "P12L10", "P12H10",
        "P14L8", "P14H8", "P16L6",  "P16H6",  "P18L4",  "P18H4", "P20L2", "P6L16",  "P8L14",
        "P16P8", "P18P8", "P20L10", "P16RP4", "P16RP6", "P16RP8"};
    // The makers' words of one kind of part; an erasable one is programmed as the G kind.
    constexpr std::array<std::pair<std::string_view, std::string_view>, 4> makers{
        {{"PALCE", "G"}, {"PALC", "P"}, {"PAL", "P"}, {"GAL", "G"}}};
    const std::string upper = base::Upper(part);
    for (const auto& [maker, kind] : makers) {
        if (!base::StartsWith(upper, maker)) continue;
        const std::string name = std::string(kind) + upper.substr(maker.size());
        for (const std::string_view mnemonic : mnemonics) {
            // Speed and package may follow: "PAL16R4-10PC", "PAL16R4A".
            if (base::StartsWith(name, mnemonic)) return std::string(mnemonic);
        }
    }
    for (const std::string_view mnemonic : mnemonics)
        if (upper == mnemonic) return upper;
    return "virtual";
}

}  // namespace convert
