#include <algorithm>
#include <charconv>
#include <map>
#include <set>

#include "base/Text.h"
#include "base/modLib.h"
#include "sim/SiFile.h"
#include "sim/SiOrder.h"
#include "sim/SiScanner.h"
#include "sim/SiVector.h"

namespace sim {
namespace {

// Header texts are compared with runs of blanks made one.
std::string Folded(std::string_view text) {
    std::string folded;
    for (const char c : text) {
        const bool blank = c == ' ' || c == '\t' || c == '\r' || c == '\n';
        if (!blank) folded += c;
        if (blank && !folded.empty() && folded.back() != ' ') folded += ' ';
    }
    return base::Trim(folded);
}

class Reader {
  public:
    explicit Reader(const AbsDesign& design) : design_(design) {}

    SiResult Read(std::string_view text) {
        if (text.size() > SiLimits::FileBytes) {
            Add("0210va", 0, "file of " + std::to_string(text.size()) + " bytes");
            return result_;
        }
        const auto parts = ScanSi(text, result_.Messages);
        for (const auto& statement : parts.Statements) TakeStatement(statement);
        CompareHeader();
        if (result_.File.Columns.empty()) {
            Add("0202va", 0, "ORDER:");
            return result_;
        }
        WarnOfInputsLeftOut();
        const VectorReader vectors(design_, result_.File, base_);
        for (const auto& row : parts.Rows) {
            if (full_) break;
            if (row.Text[0] == '$') {
                TakeCommand(row);
            } else {
                TakeVector(row, vectors);
            }
        }
        if (repeat_ != 0) Add("0209va", repeatLine_, "$REPEAT without a vector");
        return result_;
    }

  private:
    void Add(std::string_view code, int line, std::string_view detail) {
        result_.Messages.Add(code, line, base::DisplayUtf8(detail.substr(0, 120)));
    }

    void TakeStatement(const SiText::Statement& statement) {
        const std::string_view text = statement.Text;
        const auto end = std::find_if_not(text.begin(), text.end(), base::IsWordChar);
        const auto word = base::Upper({text.begin(), end});
        auto tail = base::Trim({end, text.end()});
        const bool section = !tail.empty() && tail[0] == ':';
        if (section) tail = base::Trim(std::string_view(tail).substr(1));
        if (word == "ORDER" && section) {
            TakeOrder(tail, statement.Line);
        } else if (word == "BASE" && section) {
            TakeBase(tail, statement.Line);
        } else if (!TakeHeader(word, tail)) {
            Add("0203va", statement.Line, word.empty() ? text : word);
        }
    }

    bool TakeHeader(const std::string& word, const std::string& text) {
        for (const auto& keyword : HeaderKeywords()) {
            if (base::Upper(keyword.Name) != word &&
                (keyword.Short.empty() || base::Upper(keyword.Short) != word))
                continue;
            header_[std::string(keyword.Name)] = text;
            return true;
        }
        return false;
    }

    void CompareHeader() {
        for (const auto& keyword : HeaderKeywords()) {
            const std::string name(keyword.Name);
            const auto designs = design_.Header.find(name);
            const auto own = header_.find(name);
            const auto expected = designs == design_.Header.end() ? std::string() : Folded(designs->second);
            const auto found = own == header_.end() ? std::string() : Folded(own->second);
            const bool anyCase = name == "Device" || name == "Format";
            const bool same = anyCase ? base::EqualNoCase(expected, found) : expected == found;
            if (!same) Add("0204va", 0, name + " is \"" + found + "\", the design's is \"" + expected + "\"");
        }
    }

    void TakeOrder(const std::string& text, int line) {
        if (!result_.File.Order.empty()) return Add("0203va", line, "second ORDER");
        result_.File.Order = ReadOrder(text, line, design_, result_.Messages);
        for (const auto& item : result_.File.Order) {
            result_.File.Columns.insert(result_.File.Columns.end(), item.Nets.begin(), item.Nets.end());
        }
    }

    void TakeBase(const std::string& text, int line) {
        static const std::map<std::string, unsigned> bases{{"OCTAL", 8}, {"DECIMAL", 10}, {"HEX", 16}};
        const auto found = bases.find(base::Upper(text));
        if (found == bases.end()) return Add("0203va", line, "BASE " + text);
        base_ = found->second;
    }

    void WarnOfInputsLeftOut() {
        const std::set<std::size_t> listed(result_.File.Columns.begin(), result_.File.Columns.end());
        for (std::size_t i = 0; i < design_.Nets.size(); ++i) {
            const auto& net = design_.Nets[i];
            if (net.Kind == NetKind::Input && !listed.contains(i)) Add("0205va", 0, net.Name);
        }
    }

    void TakeCommand(const SiText::Row& row) {
        const auto end = std::find_if_not(row.Text.begin() + 1, row.Text.end(), base::IsWordChar);
        const auto word = base::Upper({row.Text.begin(), end});
        auto tail = base::Trim({end, row.Text.end()});
        if (!tail.empty() && tail.back() == ';')
            tail = base::Trim(std::string_view(tail).substr(0, tail.size() - 1));
        auto& steps = result_.File.Steps;
        if (word == "$MSG" && tail.size() > 1 && tail.front() == '"' && tail.back() == '"') {
            steps.push_back({StepKind::Message, row.Line, tail.substr(1, tail.size() - 2), 0});
        } else if (word == "$TRACE" && tail.size() == 1 && tail[0] >= '0' && tail[0] <= '4') {
            steps.push_back({StepKind::Trace, row.Line, "", tail[0] - '0'});
        } else if (word == "$SIMON" && tail.empty()) {
            steps.push_back({StepKind::SimulationOn, row.Line, "", 0});
        } else if (word == "$SIMOFF" && tail.empty()) {
            steps.push_back({StepKind::SimulationOff, row.Line, "", 0});
        } else if (word == "$REPEAT") {
            TakeRepeat(tail, row.Line);
        } else {
            Add("0209va", row.Line, row.Text);
        }
    }

    void TakeRepeat(const std::string& text, int line) {
        int count = 0;
        const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), count);
        const bool whole = fault == std::errc() && end == text.data() + text.size();
        if (!whole || count < 1 || count > SiLimits::Repeat || repeat_ != 0)
            return Add("0209va", line, "$REPEAT " + text);
        repeat_ = count;
        repeatLine_ = line;
    }

    void TakeVector(const SiText::Row& row, const VectorReader& vectors) {
        const int times = repeat_ == 0 ? 1 : repeat_;
        repeat_ = 0;
        auto values = vectors.Read(row.Text, row.Line, result_.Messages);
        auto& file = result_.File;
        file.Vectors += static_cast<std::size_t>(times);
        if (file.Vectors > SiLimits::Vectors || file.Vectors * file.Columns.size() > SiLimits::Values) {
            Add("0210va", row.Line, "more than 65535 vectors or 20000000 test values");
            full_ = true;
            return;
        }
        file.Steps.push_back({StepKind::Vector, row.Line, std::move(values), times});
    }

    const AbsDesign& design_;
    SiResult result_;
    std::map<std::string, std::string> header_;
    unsigned base_ = 16;
    int repeat_ = 0;
    int repeatLine_ = 0;
    bool full_ = false;
};

}  // namespace

SiResult ReadSi(std::string_view text, const AbsDesign& design) { return Reader(design).Read(text); }

}  // namespace sim
