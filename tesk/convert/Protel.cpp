#include "base/Text.h"
#include "convert/Failure.h"
#include "convert/Netlist.h"

namespace convert {
namespace {

// "[" designator, footprint, type, … "]" for a part, "(" name, pins … ")" for a net; each on its own line.
class Reader {
  public:
    explicit Reader(std::string_view text) : text_(text) {}

    Netlist Read() {
        while (NextLine()) {
            if (line_ == "[")
                ReadPart();
            else if (line_ == "(")
                ReadNet();
            else if (!line_.empty())
                Fail(number_, "a part or net is expected, not " + Shown(line_));
        }
        if (netlist_.Parts.empty()) Fail(0, "there are no parts");
        return std::move(netlist_);
    }

  private:
    bool NextLine() {
        if (text_.empty()) return false;
        line_ = base::TrimView(base::TakeLine(text_));
        ++number_;
        return true;
    }

    void NeedLine(const char* what) {
        if (!NextLine()) Fail(number_, std::string(what) + " is never closed");
    }

    void ReadPart() {
        Part part;
        part.Line = number_;
        int place = 0;
        for (NeedLine("a part"); line_ != "]"; NeedLine("a part"), ++place) {
            if (line_ == "[" || line_ == "(") Fail(number_, "a part is never closed");
            if (place == 0) part.Reference = base::Upper(line_);
            if (place == 2) part.Type = line_;
        }
        if (part.Reference.empty()) Fail(part.Line, "a part without a designator");
        if (!parts_.emplace(part.Reference, netlist_.Parts.size()).second)
            Fail(part.Line, "a second part " + Shown(part.Reference));
        netlist_.Parts.push_back(std::move(part));
    }

    void ReadNet() {
        NeedLine("a net");
        const std::string net(line_);
        for (NeedLine("a net"); line_ != ")"; NeedLine("a net")) {
            if (line_.empty()) continue;
            const std::string_view pin = line_.substr(0, line_.find_first_of(" \t,"));
            const std::size_t dash = pin.rfind('-');
            if (dash == pin.npos || dash == 0)
                Fail(number_, "a pin such as U1-2 is expected, not " + Shown(line_));
            const auto part = parts_.find(base::Upper(pin.substr(0, dash)));
            if (part == parts_.end()) Fail(number_, "the part of " + Shown(pin) + " is not listed");
            if (!netlist_.Parts[part->second].Nets.emplace(base::Upper(pin.substr(dash + 1)), net).second)
                Fail(number_, Shown(pin) + " is in two nets");
        }
    }

    std::string_view text_, line_;
    int number_ = 0;
    Netlist netlist_;
    std::map<std::string, std::size_t> parts_;
};

}  // namespace

Netlist ReadProtel(std::string_view text) { return Reader(text).Read(); }

}  // namespace convert
