#include "sim/Vcd.h"

#include "base/Text.h"

namespace sim {
namespace {

constexpr std::string_view lineEnd = "\r\n";

// The short name of a net: characters of the codes 33 to 126, a number of base 94.
std::string Identifier(std::size_t net) {
    std::string id;
    do {
        id += static_cast<char>(33 + net % 94);
        net /= 94;
    } while (net != 0);
    return id;
}

char VcdValue(Value value) { return "01xz"[static_cast<std::size_t>(value)]; }

}  // namespace

VcdWriter::VcdWriter(const AbsDesign& design) {
    const auto name = design.Header.find("Name");
    std::string scope = name == design.Header.end() ? "" : base::Trim(name->second);
    for (char& c : scope) {
        if (c <= ' ' || c > '~') c = '_';
    }
    text_ = "$timescale 1 ns $end\r\n$scope module " + (scope.empty() ? "design" : scope) + " $end\r\n";
    for (std::size_t i = 0; i < design.Nets.size(); ++i) {
        text_ += "$var wire 1 " + Identifier(i) + " " + design.Nets[i].Name + " $end\r\n";
    }
    text_ += "$upscope $end\r\n$enddefinitions $end\r\n";
    last_.assign(design.Nets.size(), Value::Unknown);
}

void VcdWriter::Sample(std::uint64_t time, const Machine& machine) {
    if (Full()) return;
    std::string changes;
    for (std::size_t i = 0; i < last_.size(); ++i) {
        const Value value = machine.Level(i);
        if (started_ && value == last_[i]) continue;
        last_[i] = value;
        (changes += VcdValue(value)) += Identifier(i);
        changes += lineEnd;
    }
    if (changes.empty()) return;
    text_ += "#" + std::to_string(time) + "\r\n";
    text_ += started_ ? changes : "$dumpvars\r\n" + changes + "$end\r\n";
    started_ = true;
}

std::string VcdWriter::Text(std::uint64_t end) const { return text_ + "#" + std::to_string(end) + "\r\n"; }

}  // namespace sim
