#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <utility>

#include "base/RunTimeError.h"
#include "base/Text.h"
#include "convert/Converters.h"
#include "convert/PldFile.h"
#include "front/Limits.h"
#include "front/Names.h"
#include "logic/Pla.h"

// Berkeley tables, and the form of them that logic compilers pass on (.tt2): comments "#$ PINS" and the like
// name what the table is of, names carry the inputs of registers.
namespace convert {
namespace {

// How much may be spent on finding what a table of type fr leaves open.
constexpr std::size_t Pairs = 2'000'000'000;  // of on and off rows, to be compared
constexpr std::size_t OpenCubes = 20000;
constexpr std::uint64_t OpenSteps = 5'000'000;

constexpr std::array<std::pair<std::string_view, std::string_view>, 21> Extensions{
    {{"D", "D"},   {"REG", "D"}, {"T", "T"},   {"J", "J"},    {"K", "K"},   {"S", "S"},   {"R", "R"},
     {"L", "L"},   {"CK", "CK"}, {"C", "CK"},  {"CLK", "CK"}, {"CE", "CE"}, {"LE", "LE"}, {"AR", "AR"},
     {"AP", "AP"}, {"SR", "SR"}, {"SP", "SP"}, {"OE", "OE"},  {"Q", "Q"},   {"FB", "Q"},  {"PIN", "IO"}}};

struct Column {
    std::string Name;       // as the design has it
    std::string Extension;  // "D", "IO"; empty for the name alone
    bool Complement = false;

    std::string Text() const {
        return (Complement ? "!" : "") + Name + (Extension.empty() ? "" : "." + Extension);
    }
};

// What stands in the lines that the reader of plain tables does not know.
struct Remarks {
    std::string Plain;  // the table without them
    std::string Title, Device;
    std::vector<std::pair<std::string, int>> Pins;
    std::vector<std::string> Nodes;
    std::string Phase;
    int PhaseLine = 0;
    int InputLine = 0;
};

int NumberOf(std::string_view digits) {
    int number = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return number;
}

void TakeRemark(const std::vector<std::string_view>& words, Remarks& remarks) {
    const std::string what = words.size() > 1 ? base::Upper(words[1]) : "";
    for (std::size_t i = 3; i < words.size() && what == "PINS"; ++i) {
        const std::size_t colon = words[i].find(':');
        const int number = colon == words[i].npos ? 0 : NumberOf(words[i].substr(colon + 1));
        remarks.Pins.emplace_back(words[i].substr(0, colon), number);
    }
    for (std::size_t i = 3; i < words.size() && what == "NODES"; ++i)
        remarks.Nodes.emplace_back(words[i].substr(0, words[i].find(':')));
    if (what == "DEVICE" && words.size() > 2) remarks.Device = words[2];
    if ((what == "TITLE" || what == "MODULE") && words.size() > 2 && remarks.Title.empty())
        remarks.Title = base::ReplaceAll(words[2], "'", "");
}

Remarks ReadRemarks(std::string_view text) {
    Remarks remarks;
    remarks.Plain.reserve(text.size());
    for (int line = 1; !text.empty(); ++line) {
        const std::string_view whole = base::TakeLine(text);
        const std::string_view trimmed = base::TrimView(whole.substr(0, 1024));
        const bool isPhase = base::StartsWith(trimmed, ".phase");
        if (isPhase) {
            const auto words = base::Words(base::TrimView(whole.substr(0, whole.find('#', 1))));
            for (std::size_t i = 1; i < words.size(); ++i) remarks.Phase += words[i];
            remarks.PhaseLine = line;
        } else if (base::StartsWith(trimmed, "#$")) {
            TakeRemark(base::Words(base::TrimView(whole)), remarks);
        } else if (base::StartsWith(trimmed, ".i ")) {
            remarks.InputLine = line;
        }
        if (!isPhase) remarks.Plain += whole.substr(0, whole.find_first_of("\r\n"));
        remarks.Plain += '\n';
    }
    return remarks;
}

logic::Pla ReadTable(const Remarks& remarks) {
    try {
        return logic::ReadPla(remarks.Plain);
    } catch (const base::RunTimeError& error) {
        std::string_view what = error.Description();
        if (!base::StartsWith(what, "line ")) Fail(0, std::string(what));
        Fail(NumberOf(what.substr(5)), std::string(what.substr(what.find(": ") + 2)));
    }
}

// Type fr leaves open what is neither on nor off. Where that is too much to tell, a choice is made for it.
std::vector<std::string> Complete(logic::Pla& pla) {
    if (pla.Type != "fr" && pla.Type != "fdr") return {};
    if (pla.Off.Size() > 0 && pla.On.Size() > Pairs / pla.Off.Size())
        Fail(0, "a table of type " + pla.Type + " with so many rows is not taken");
    try {
        logic::DemandApart(pla.On, pla.Off);
        if (pla.Type == "fdr") return {};
        logic::Cover told = pla.On;
        told.AddAll(pla.Off);
        std::uint64_t steps = OpenSteps;
        if (auto open = logic::Complement(told, OpenCubes, steps)) {
            pla.DontCare = std::move(*open);
            return {};
        }
        pla.On = logic::MinimizeOnOff(pla.On, pla.Off, logic::Level::m3).Terms;
        return {"the table leaves too much open to write it down: a choice was made"};
    } catch (const base::RunTimeError& error) {
        Fail(0, error.Description());
    }
}

class Writer {
  public:
    Writer(logic::Pla pla, Remarks remarks, const std::string& name)
        : pla_(std::move(pla)), remarks_(std::move(remarks)) {
        file_.Name = name;
        file_.Origin = "Made from the table " + (remarks_.Title.empty() ? name : remarks_.Title);
        file_.Device = DeviceOf(remarks_.Device);
    }

    std::string Write() {
        if (pla_.On.Inputs() == 0) Fail(0, "there are no rows");
        if (static_cast<std::size_t>(pla_.On.Inputs()) > front::Limits::ListMembers)
            Fail(remarks_.InputLine, "more than 256 inputs are not taken");
        for (int i = 0; i < pla_.On.Inputs(); ++i) inputs_.push_back(ColumnOf(pla_.InputNames, i, "I"));
        for (int i = 0; i < pla_.On.Outputs(); ++i) outputs_.push_back(ColumnOf(pla_.OutputNames, i, "O"));
        Check();
        TakePhase();
        Declare();
        WriteTables();
        return file_.Text();
    }

  private:
    Column ColumnOf(const std::vector<std::string>& names, int i, const char* stem) {
        const auto at = static_cast<std::size_t>(i);
        const std::string foreign = names.empty() ? stem + std::to_string(i) : names[at];
        const std::size_t dot = foreign.rfind('.');
        if (dot != foreign.npos && dot > 0) {
            for (const auto& [theirs, ours] : Extensions)
                if (base::EqualNoCase(foreign.substr(dot + 1), theirs))
                    return {names_.Of(foreign.substr(0, dot)), ours == "Q" ? "" : std::string(ours)};
            if (base::EqualNoCase(foreign.substr(dot + 1), "IO") ||
                base::EqualNoCase(foreign.substr(dot + 1), "DQ"))
                return {names_.Of(foreign.substr(0, dot)), base::Upper(foreign.substr(dot + 1))};
        }
        return {names_.Of(foreign), ""};
    }

    void Check() const {
        for (const std::vector<Column>* columns : {&inputs_, &outputs_}) {
            std::set<std::string> seen;
            for (const Column& column : *columns)
                if (!seen.insert(column.Text()).second)
                    Fail(0, "two columns are named " + Shown(column.Text()));
        }
    }

    void TakePhase() {
        if (remarks_.PhaseLine == 0) return;
        if (remarks_.Phase.size() != outputs_.size() ||
            remarks_.Phase.find_first_not_of("01") != std::string::npos)
            Fail(remarks_.PhaseLine, ".phase needs a 0 or 1 for each output");
        for (std::size_t i = 0; i < outputs_.size(); ++i) outputs_[i].Complement = remarks_.Phase[i] == '0';
    }

    void Declare() {
        std::set<std::string> nodes, seen;
        std::map<std::string, int> numbers;
        std::set<int> used;
        for (const std::string& node : remarks_.Nodes) nodes.insert(names_.Of(node));
        for (const auto& [pin, number] : remarks_.Pins)
            if (number > 0 && number <= MaxPin && used.insert(number).second)
                numbers[names_.Of(pin)] = number;
        for (const std::vector<Column>* columns : {&inputs_, &outputs_}) {
            for (const Column& column : *columns) {
                if (!seen.insert(column.Name).second) continue;
                if (nodes.contains(column.Name))
                    file_.Nodes.push_back(column.Name);
                else
                    file_.Pins.push_back({column.Name, numbers[column.Name]});
            }
        }
    }

    // A table for each kind of output: members of one list need names that differ.
    void WriteTables() {
        std::map<std::string, std::vector<int>> kinds;
        for (int i = 0; i < pla_.On.Outputs(); ++i)
            kinds[outputs_[static_cast<std::size_t>(i)].Extension].push_back(i);
        for (const auto& [extension, all] : kinds)
            for (std::size_t first = 0; first < all.size(); first += front::Limits::ListMembers)
                WriteTable({all.begin() + static_cast<std::ptrdiff_t>(first),
                            all.begin() + static_cast<std::ptrdiff_t>(
                                              std::min(first + front::Limits::ListMembers, all.size()))});
    }

    struct List {
        std::string Text;
        std::vector<std::size_t> Digits;  // where each member stands in a constant
        std::size_t Width = 0;
    };

    // Members that are indexed names of one stem weigh by their index, not by their place.
    static List ListOf(const std::vector<Column>& columns) {
        List list;
        std::vector<std::string> names;
        for (const Column& column : columns) {
            names.push_back(column.Name);
            list.Text += (list.Text.empty() ? "[" : ", ") + column.Text();
        }
        list.Text += "]";
        const std::vector<int> weights = front::WeightsOf(names);
        list.Width = static_cast<std::size_t>(*std::max_element(weights.begin(), weights.end())) + 1;
        for (const int weight : weights)
            list.Digits.push_back(list.Width - 1 - static_cast<std::size_t>(weight));
        return list;
    }

    void WriteTable(const std::vector<int>& chosen) {
        std::vector<Column> outputs;
        for (const int i : chosen) outputs.push_back(outputs_[static_cast<std::size_t>(i)]);
        const List in = ListOf(inputs_);
        const List out = ListOf(outputs);
        file_.Body += "TABLE " + in.Text + "\r\n   => " + out.Text + " {\r\n";
        for (const auto& [cover, digit] : {std::pair(&pla_.On, '1'), std::pair(&pla_.DontCare, 'X')})
            for (std::size_t row = 0; row < cover->Size(); ++row)
                WriteRow(cover->Form(), (*cover)[row], digit, chosen, in, out);
        file_.Body += "}\r\n\r\n";
    }

    void WriteRow(const logic::Layout& form, const logic::Word* cube, char digit,
                  const std::vector<int>& chosen, const List& in, const List& out) {
        std::string left(in.Width, '0'), right(out.Width, '0');
        for (std::size_t i = 0; i < in.Digits.size(); ++i) {
            const logic::Literal literal = form.Input(cube, static_cast<int>(i));
            left[in.Digits[i]] = literal == logic::Literal::Free  ? 'X'
                                 : literal == logic::Literal::One ? '1'
                                                                  : '0';
        }
        bool any = false;
        for (std::size_t i = 0; i < chosen.size(); ++i) {
            if (!form.Output(cube, chosen[i])) continue;
            // Where a row says 1 it holds; behind a complement an open row beside it would undo that.
            if (digit == 'X' && outputs_[static_cast<std::size_t>(chosen[i])].Complement) continue;
            right[out.Digits[i]] = digit;
            any = true;
        }
        if (any) file_.Body += "'b'" + left + " => 'b'" + right + " ;\r\n";
    }

    logic::Pla pla_;
    Remarks remarks_;
    NameMaker names_;
    PldFile file_;
    std::vector<Column> inputs_, outputs_;
};

}  // namespace

Conversion ConvertPla(std::string_view text, const std::string& name) {
    Remarks remarks = ReadRemarks(text);
    logic::Pla pla = ReadTable(remarks);
    Conversion result;
    result.Notes = Complete(pla);
    result.Text = Writer(std::move(pla), std::move(remarks), name).Write();
    return result;
}

}  // namespace convert
