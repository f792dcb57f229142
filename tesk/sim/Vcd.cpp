#include "sim/Vcd.h"

#include "base/Text.h"

namespace sim {
namespace {

constexpr std::size_t pieceBytes = 1u << 16;

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

VcdWriter::VcdWriter(const AbsDesign& design, Sink& sink) : sink_(sink) {
    const auto name = design.Header.find("Name");
    std::string scope = name == design.Header.end() ? "" : base::Trim(name->second);
    for (char& c : scope) {
        if (c <= ' ' || c > '~') c = '_';
    }
    text_ = "$timescale 1 ns $end\r\n$scope module " + (scope.empty() ? "design" : scope) + " $end\r\n";
    for (std::size_t i = 0; i < design.Nets.size(); ++i) {
        names_.push_back(Identifier(i) + "\r\n");
        text_ += "$var wire 1 " + Identifier(i) + " " + design.Nets[i].Name + " $end\r\n";
    }
    text_ += "$upscope $end\r\n$enddefinitions $end\r\n";
    last_.assign(design.Nets.size(), Value::Unknown);
}

void VcdWriter::Flush() {
    sink_.Put(text_);
    bytes_ += text_.size();
    text_.clear();
}

void VcdWriter::Sample(std::uint64_t time, const Machine& machine) {
    if (Full()) return;
    bool any = false;
    for (std::size_t i = 0; i < last_.size(); ++i) {
        const Value value = machine.Level(i);
        if (started_ && value == last_[i]) continue;
        if (!any) ((text_ += '#') += std::to_string(time)) += started_ ? "\r\n" : "\r\n$dumpvars\r\n";
        any = true;
        last_[i] = value;
        (text_ += VcdValue(value)) += names_[i];
    }
    if (any && !started_) text_ += "$end\r\n";
    started_ = started_ || any;
    if (text_.size() > pieceBytes) Flush();
}

void VcdWriter::Finish(std::uint64_t end) {
    text_ += "#" + std::to_string(end) + "\r\n";
    Flush();
}

}  // namespace sim
