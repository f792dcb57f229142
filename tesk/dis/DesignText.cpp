#include "dis/DesignText.h"

#include <algorithm>

#include "base/Text.h"
#include "front/Limits.h"
#include "logic/Minimize.h"
#include "logic/Variables.h"

namespace dis {
namespace {

using convert::Formula;
using convert::Operator;
using proof::Control;
using proof::Literal;
using proof::RegisterKind;
using proof::Signal;
using proof::Sum;

constexpr std::size_t kNamesInList = 12;

// The shortest sum for the same function.
Sum Minimized(const Sum& sum) {
    logic::Variables<Literal> variables;
    variables.Add(sum);
    return variables.SumOf(logic::Minimized(variables.CoverOf(sum), logic::Level::m2));
}

class Writer {
  public:
    Writer(convert::PldFile& file, const Programmed& chip, const Naming& naming, const TextOptions& options)
        : file_(file), chip_(chip), naming_(naming), options_(options) {
        for (std::size_t i = 0; i < chip.Live.size(); ++i)
            if (chip.Live[i]) cells_.push_back(i);
        std::sort(cells_.begin(), cells_.end(),
                  [&](std::size_t a, std::size_t b) { return chip.At(a).Node < chip.At(b).Node; });
    }

    void Write() {
        for (const auto& [number, pin] : naming_.Pins())
            file_.Pins.push_back({pin.Name, number, pin.ActiveLow});
        for (const auto cell : cells_)
            if (chip_.At(cell).Pin == 0)
                Add("PINNODE " + std::to_string(chip_.At(cell).Node) + " = " + naming_.OfCell(cell));
        if (!options_.Minimize && !cells_.empty()) AddLevels();
        for (const auto cell : cells_) AddData(cell);
        AddControls();
        AddFuses();
    }

  private:
    void Add(const std::string& statement) { file_.Body += statement + " ;\r\n"; }

    static std::string Listed(const std::vector<std::string>& names) {
        if (names.size() == 1) return names.front();
        std::string text = "[";
        for (const auto& name : names) (text += text.size() > 1 ? ", " : "") += name;
        return text + "]";
    }

    void AddLevels() {
        std::vector<std::string> names;
        for (const auto cell : cells_) names.push_back(naming_.OfCell(cell));
        for (std::size_t at = 0; at < names.size(); at += kNamesInList) {
            const auto first = names.begin() + static_cast<std::ptrdiff_t>(at);
            const auto count = static_cast<std::ptrdiff_t>(std::min(kNamesInList, names.size() - at));
            Add("MIN " + Listed({first, first + count}) + " = 0");
        }
        file_.Body += "\r\n";
    }

    // A name is asserted where the sum of the rows is true, of a register where it holds what that gave it.
    Formula Of(const Literal& literal) const {
        bool negated = literal.Negated;
        std::string name;
        if (literal.Of.From == Signal::Kind::Cell) {
            negated = negated != chip_.At(literal.Of.At).Inverted;
            name = naming_.OfCell(literal.Of.At);
        } else {
            const auto& pin = naming_.At(static_cast<int>(literal.Of.At));
            const auto cell = chip_.LiveAt(literal.Of.At);
            negated = negated != pin.ActiveLow;
            name = pin.Name;
            if (cell && chip_.At(*cell).Register != RegisterKind::None) name += ".IO";
        }
        return negated ? Formula::Not(Formula::Name(name)) : Formula::Name(name);
    }

    Formula Of(const Sum& sum) const {
        return convert::SumOfProducts(options_.Minimize ? Minimized(sum) : sum,
                                      [&](const Literal& literal) { return Of(literal); });
    }

    void AddData(std::size_t index) {
        const auto& cell = chip_.At(index);
        auto value = Of(InPlace(chip_, index, false));
        if (cell.Rows2)
            value = Formula::Combine(Operator::Xor, std::move(value), Of(InPlace(chip_, index, true)));
        std::string extension;
        if (cell.Register == RegisterKind::D) extension = ".D";
        if (cell.Register == RegisterKind::T) extension = ".T";
        if (cell.Register == RegisterKind::Latch) extension = ".L";
        const bool isToggled = cell.Register == RegisterKind::T && cell.Inverted;
        file_.AddEquation(naming_.OfCell(index) + extension,
                          isToggled ? Formula::Not(std::move(value)) : value);
    }

    struct Group {
        std::string Extension;
        Formula Value;
        std::vector<std::string> Names;
    };

    // What one equation says of several macrocells stands once; a constant would be spread over their bits.
    void AddTo(std::vector<Group>& groups, std::size_t cell, const char* extension, const Sum& sum) const {
        const auto value = Of(sum);
        auto same = std::find_if(groups.begin(), groups.end(), [&](const Group& group) {
            return !value.Value() && group.Extension == extension && group.Value.Text() == value.Text() &&
                   group.Names.size() < kNamesInList;
        });
        if (same == groups.end()) same = groups.insert(same, {extension, value, {}});
        same->Names.push_back(naming_.OfCell(cell));
    }

    void AddControlsOf(std::size_t index, std::vector<Group>& groups) const {
        const auto& cell = chip_.At(index);
        const auto unless = [&](const Sum& usual, const char* extension, const Control& control) {
            if (control.When != usual) AddTo(groups, index, extension, control.When);
        };
        if (cell.Pin != 0) unless(proof::Always(), ".OE", cell.Enable);
        if (cell.Register == RegisterKind::None) return;
        const bool isOwn = cell.Clock.From == proof::Source::Own;
        if (isOwn || !cell.Clock.When.empty())
            AddTo(groups, index, cell.Register == RegisterKind::Latch ? ".LE" : ".CK", cell.Clock.When);
        unless(proof::Always(), ".CE", cell.ClockEnable);
        unless({}, cell.Inverted ? ".AP" : ".AR", cell.Reset);
        unless({}, cell.Inverted ? ".AR" : ".AP", cell.Preset);
        unless({}, cell.Inverted ? ".SP" : ".SR", cell.SyncReset);
        unless({}, cell.Inverted ? ".SR" : ".SP", cell.SyncPreset);
    }

    void AddControls() {
        std::vector<Group> groups;
        for (const auto index : cells_) AddControlsOf(index, groups);
        std::stable_sort(groups.begin(), groups.end(),
                         [](const Group& a, const Group& b) { return a.Extension < b.Extension; });
        if (!groups.empty()) file_.Body += "\r\n";
        for (const auto& group : groups)
            file_.AddEquation(Listed(group.Names) + group.Extension, group.Value);
    }

    // Runs of one value are repeated.
    void AddFuses() {
        constexpr std::size_t shortest = 8;
        const auto& fuses = options_.Fuses;
        if (!fuses.empty()) file_.Body += "\r\n/* Fuses that no equation sets. */\r\n";
        for (std::size_t at = 0; at < fuses.size();) {
            std::size_t end = at + 1;
            while (end < fuses.size() && end - at < front::Limits::RepeatCount &&
                   fuses[end].first == fuses[end - 1].first + 1 && fuses[end].second == fuses[at].second)
                ++end;
            const std::string value = fuses[at].second ? "1" : "0";
            if (end - at < shortest) {
                for (; at < end; ++at) Add("FUSE(" + std::to_string(fuses[at].first) + ", " + value + ")");
                continue;
            }
            file_.Body += "$REPEAT i = [" + std::to_string(fuses[at].first) + ".." +
                          std::to_string(fuses[end - 1].first) + "]\r\n";
            Add("FUSE({i}, " + value + ")");
            file_.Body += "$REPEND\r\n";
            at = end;
        }
    }

    convert::PldFile& file_;
    const Programmed& chip_;
    const Naming& naming_;
    const TextOptions& options_;
    std::vector<std::size_t> cells_;  // live ones, by number
};

}  // namespace

std::string DesignText(convert::PldFile file, const Programmed& chip, const Naming& naming,
                       const TextOptions& options) {
    Writer(file, chip, naming, options).Write();
    return file.Text();
}

}  // namespace dis
