#include <algorithm>
#include <map>
#include <optional>

#include "base/Text.h"
#include "fit/Device.h"
#include "model/Number.h"

namespace fit {
namespace {

using Words = std::vector<std::string_view>;

std::optional<std::size_t> Number(std::string_view word, std::size_t below) {
    const auto value = model::WholeNumber<std::size_t>(word);
    return value && *value < below ? value : std::nullopt;
}

class Reader {
  public:
    explicit Reader(std::string_view text) : text_(text) {}

    Library Read() {
        if (text_.size() > LibraryLimits::FileBytes) {
            Fault("7103tc", "file of " + std::to_string(text_.size()) + " bytes");
            return std::move(library_);
        }
        for (auto rest = text_; !rest.empty();) {
            ++line_;
            const auto line = base::TakeLine(rest);
            if (!TakeLine(base::Words(line.substr(0, line.find(';'))))) return std::move(library_);
            if (library_.Messages.size() >= LibraryLimits::Messages) return std::move(library_);
        }
        Fault("7104tc", "");
        return std::move(library_);
    }

  private:
    using Record = bool (Reader::*)(const Words&);

    // False where reading ends.
    bool TakeLine(const Words& words) {
        static const std::map<std::string_view, Record> records{{"DEVICE", &Reader::TakeDevice},
                                                                {"POWER", &Reader::TakePower},
                                                                {"SIGNATURE", &Reader::TakeSignature},
                                                                {"MODE", &Reader::TakeMode},
                                                                {"TERMS", &Reader::TakeTerms},
                                                                {"SET", &Reader::TakeSet},
                                                                {"ROWS", &Reader::TakeRows},
                                                                {"INPUT", &Reader::TakeInput},
                                                                {"CLOCK", &Reader::TakeClock},
                                                                {"ENABLE", &Reader::TakeEnable},
                                                                {"RESET", &Reader::TakeReset},
                                                                {"PRESET", &Reader::TakePreset},
                                                                {"PRELOAD", &Reader::TakePreload},
                                                                {"CELL", &Reader::TakeCell},
                                                                {"USE", &Reader::TakeUse}};
        if (line_ == 1) {
            if (words == Words{"TESK-DL", "1"}) return true;
            Fault("7101tc", "");
            return false;
        }
        if (words.empty()) return true;
        if (words[0] == "END") return false;
        const auto record = records.find(words[0]);
        const bool good = record != records.end() && (this->*record->second)(words);
        if (!good) Fault("7102tc", base::DisplayUtf8(words[0].substr(0, 32)));
        return true;
    }

    void Fault(MessageCode code, const std::string& detail) {
        library_.Messages.push_back(model::MakeMessage(code.Entry(), {-1, line_, 0}, detail));
    }

    // Null before the first DEVICE and inside a record that is a LIKE.
    Device* CurrentDevice() { return open_ ? &library_.Devices.back() : nullptr; }
    Mode* CurrentMode() {
        auto* device = CurrentDevice();
        return device == nullptr || device->Modes.empty() ? nullptr : &device->Modes.back();
    }
    Cell* CurrentCell() {
        auto* mode = CurrentMode();
        return mode == nullptr || mode->Cells.empty() ? nullptr : &mode->Cells.back();
    }

    bool TakeDevice(const Words& words) {
        open_ = false;
        if (words.size() < 4 || words[1].size() > 31 || library_.Find(words[1]) != nullptr) return false;
        if (library_.Devices.size() >= LibraryLimits::Devices) return false;
        if (words[2] == "LIKE") return TakeLike(words);
        const auto pins = Number(words[2], LibraryLimits::Pins + 1);
        const auto fuses = Number(words[3], LibraryLimits::Fuses + 1);
        if (words.size() != 4 || !pins || !fuses) return false;
        Device device;
        device.Mnemonic = words[1];
        device.Pins = static_cast<int>(*pins);
        device.Fuses = *fuses;
        library_.Devices.push_back(std::move(device));
        open_ = true;
        return true;
    }

    bool TakeLike(const Words& words) {
        const auto* model = library_.Find(words[3]);
        if (model == nullptr) return false;
        auto device = *model;
        device.Mnemonic = words[1];
        device.Modes.clear();
        for (const auto& mode : model->Modes) {
            const bool named = std::find(words.begin() + 4, words.end(), mode.Name) != words.end();
            if (words.size() == 4 || named) device.Modes.push_back(mode);
        }
        const bool allFound = words.size() == 4 || device.Modes.size() == words.size() - 4;
        if (allFound) library_.Devices.push_back(std::move(device));
        return allFound;
    }

    std::optional<int> Pin(std::string_view word) {
        const auto* device = CurrentDevice();
        const auto pin =
            device == nullptr ? std::nullopt : Number(word, static_cast<std::size_t>(device->Pins) + 1);
        return pin && *pin > 0 ? std::optional(static_cast<int>(*pin)) : std::nullopt;
    }

    bool TakePower(const Words& words) {
        if (words.size() != 3 || !Pin(words[1]) || !Pin(words[2])) return false;
        CurrentDevice()->GroundPin = *Pin(words[1]);
        CurrentDevice()->SupplyPin = *Pin(words[2]);
        return true;
    }

    std::optional<FuseRun> Run(std::string_view first, std::string_view value, std::string_view count) {
        const auto* device = CurrentDevice();
        if (device == nullptr) return std::nullopt;
        const auto from = Number(first, device->Fuses);
        const auto bit = Number(value, 2);
        const auto number = Number(count, device->Fuses + 1);
        if (!from || !bit || !number || *number > device->Fuses - *from) return std::nullopt;
        return FuseRun{*from, *bit != 0, *number};
    }

    bool TakeSignature(const Words& words) {
        const auto run = words.size() == 3 ? Run(words[1], "0", words[2]) : std::nullopt;
        if (run) CurrentDevice()->Signature = *run;
        return run.has_value();
    }

    bool TakeMode(const Words& words) {
        auto* device = CurrentDevice();
        if (device == nullptr || words.size() != 3 || device->Modes.size() >= LibraryLimits::Modes)
            return false;
        const auto columns = Number(words[2], device->Fuses + 1);
        if (!columns || *columns == 0) return false;
        Mode mode;
        mode.Name = words[1];
        mode.Columns = *columns;
        device->Modes.push_back(std::move(mode));
        return true;
    }

    // Ahead of what numbers rows.
    bool TakeTerms(const Words& words) {
        auto* mode = CurrentMode();
        if (mode == nullptr || words.size() != 3) return false;
        if (!mode->Cells.empty() || mode->ResetRow >= 0 || mode->PresetRow >= 0) return false;
        const auto all = CurrentDevice()->Fuses;
        const auto terms = Number(words[1], all + 1);
        const auto fuses = Number(words[2], all + 1);
        if (!terms || !fuses || *terms == 0 || *fuses < mode->Columns || *terms * *fuses > all) return false;
        mode->SharedTerms = *terms;
        mode->TermFuses = *fuses;
        return true;
    }

    bool TakeSet(const Words& words) {
        if (CurrentMode() == nullptr || words.size() < 3 || words.size() > 4) return false;
        const auto run = Run(words[1], words[2], words.size() == 4 ? words[3] : "1");
        if (run) CurrentMode()->Fuses.push_back(*run);
        return run.has_value();
    }

    bool TakeRows(const Words& words) {
        if (CurrentMode() == nullptr || words.size() != 2) return false;
        return (CurrentMode()->RowSwitch = Number(words[1], CurrentDevice()->Fuses)).has_value();
    }

    std::optional<int> Column(std::string_view word) {
        const auto column = Number(word, CurrentMode()->Columns);
        return column && *column + 1 < CurrentMode()->Columns ? std::optional(static_cast<int>(*column))
                                                              : std::nullopt;
    }

    bool TakeInput(const Words& words) {
        auto* mode = CurrentMode();
        if (mode == nullptr || words.size() != 3 || !Pin(words[1]) || !Column(words[2])) return false;
        if (mode->InputColumn(*Pin(words[1])) >= 0 || mode->CellAt(*Pin(words[1])) != nullptr) return false;
        mode->Inputs.emplace_back(*Pin(words[1]), *Column(words[2]));
        return true;
    }

    bool TakeSpecialPin(const Words& words, int Mode::*pin) {
        if (CurrentMode() == nullptr || words.size() != 2 || !Pin(words[1])) return false;
        CurrentMode()->*pin = *Pin(words[1]);
        return true;
    }
    bool TakeClock(const Words& words) { return TakeSpecialPin(words, &Mode::ClockPin); }
    bool TakeEnable(const Words& words) { return TakeSpecialPin(words, &Mode::EnablePin); }
    bool TakePreload(const Words& words) { return TakeSpecialPin(words, &Mode::PreloadPin); }

    std::optional<std::size_t> Row(std::string_view word) { return Number(word, RowCount()); }
    std::size_t RowCount() { return CurrentMode()->RowCount(CurrentDevice()->Fuses); }
    bool TakeRow(const Words& words, int Mode::*row) {
        if (CurrentMode() == nullptr || words.size() != 2 || !Row(words[1])) return false;
        CurrentMode()->*row = static_cast<int>(*Row(words[1]));
        return true;
    }
    bool TakeReset(const Words& words) { return TakeRow(words, &Mode::ResetRow); }
    bool TakePreset(const Words& words) { return TakeRow(words, &Mode::PresetRow); }

    bool TakeCell(const Words& words) {
        auto* mode = CurrentMode();
        if (mode == nullptr || words.size() != 4 || mode->Cells.size() >= LibraryLimits::Cells) return false;
        const auto number = Number(words[1], LibraryLimits::Pins + 1);  // above the pins: buried
        if (!number || *number == 0) return false;
        const auto pin = static_cast<int>(*number);
        if (mode->CellAt(pin) != nullptr || mode->InputColumn(pin) >= 0) return false;
        if (words[2] != "-" && !Column(words[2])) return false;
        Cell cell;
        cell.Pin = pin;
        cell.Column = words[2] == "-" ? -1 : *Column(words[2]);
        if (words[3] == "low" || words[3] == "high") {
            cell.Polarity = words[3] == "low" ? PolarityKind::Low : PolarityKind::High;
        } else {
            cell.HighFuse = !words[3].starts_with('!');
            const auto fuse = Number(words[3].substr(cell.HighFuse ? 0 : 1), CurrentDevice()->Fuses);
            if (!fuse) return false;
            cell.PolarityFuse = *fuse;
        }
        mode->Cells.push_back(std::move(cell));
        return true;
    }

    bool TakeUse(const Words& words) {
        auto* cell = CurrentCell();
        if (cell == nullptr || words.size() < 2 || cell->Uses.size() >= LibraryLimits::Uses) return false;
        CellUse use;
        std::size_t fuses = 2;
        if (words[1] != "input") {
            if (words.size() < 6 || !TakeOutput(words, use)) return false;
            if (use.Feedback != FeedbackKind::None && cell->Column < 0) return false;
            fuses = 6;
        } else {
            if (IsBuried(*cell)) return false;
            use.Feedback = cell->Column < 0 ? FeedbackKind::None : FeedbackKind::Pin;
        }
        for (auto i = fuses; i < words.size(); ++i) {
            if (!TakeProperty(words[i], use)) return false;
        }
        const bool rowsTogether =
            (use.ClockRow < 0) == (use.ResetRow < 0) && (use.ResetRow < 0) == (use.PresetRow < 0);
        if (!rowsTogether || (use.HasOwnRows() && use.Kind != UseKind::Register)) return false;
        const auto shared = CurrentMode()->SharedTerms;
        const bool takesShared = use.Kind != UseKind::Input &&
                                 (use.FirstRow < shared || (use.XorTerms > 0 && use.XorRow < shared));
        if (takesShared && (use.OrFuse < 0 || use.XorTerms > 0)) return false;
        if (use.Kind != UseKind::Input && !FitsOthers(*cell, use)) return false;
        cell->Uses.push_back(std::move(use));
        return true;
    }

    // "behind" is the polarity's place, "clock=1" a row, "xor=14*2" rows, "2121=1" a fuse, "80=1*40" a run.
    bool TakeProperty(std::string_view word, CellUse& use) {
        static const std::map<std::string_view, int CellUse::*> rows{
            {"clock", &CellUse::ClockRow}, {"reset", &CellUse::ResetRow}, {"preset", &CellUse::PresetRow}};
        if (word == "behind" && use.Kind == UseKind::Register) return use.StoresSum = true;
        const auto equals = word.find('=');
        if (equals == word.npos) return false;
        const auto name = word.substr(0, equals);
        const auto value = word.substr(equals + 1);
        if (name == "or") return TakeOr(value, use);
        if (name == "xor") return TakeXor(value, use);
        if (const auto row = rows.find(name); row != rows.end()) {
            if (!Row(value)) return false;
            use.*row->second = static_cast<int>(*Row(value));
            return true;
        }
        const auto times = value.find('*');
        const auto run =
            Run(name, value.substr(0, times), times == value.npos ? "1" : value.substr(times + 1));
        if (run) use.Fuses.push_back(*run);
        return run.has_value();
    }

    bool TakeOr(std::string_view value, CellUse& use) {
        const auto fuse = Number(value, CurrentMode()->TermFuses);
        const bool shared =
            use.Kind != UseKind::Input && use.FirstRow == 0 && use.Terms == CurrentMode()->SharedTerms;
        if (!fuse || *fuse < CurrentMode()->Columns || !shared) return false;
        use.OrFuse = static_cast<int>(*fuse);
        return true;
    }

    // "14*2": first row and terms.
    bool TakeXor(std::string_view value, CellUse& use) {
        const auto times = value.find('*');
        const auto row = Row(value.substr(0, times));
        const auto terms =
            times == value.npos ? std::nullopt : Number(value.substr(times + 1), RowCount() + 1);
        if (!row || !terms || *terms == 0 || *row + *terms > RowCount() || use.Kind == UseKind::Input)
            return false;
        use.XorRow = *row;
        use.XorTerms = *terms;
        return *row >= use.FirstRow + use.Terms || *row + *terms <= use.FirstRow;
    }

    bool IsBuried(const Cell& cell) { return cell.Pin > CurrentDevice()->Pins; }

    // Nothing leads out of a buried macrocell but its feedback, and rows belong to one sum.
    bool FitsOthers(const Cell& cell, const CellUse& use) {
        const bool ledBack = use.Feedback == FeedbackKind::Level || use.Feedback == FeedbackKind::NotSum;
        if (IsBuried(cell) && (!ledBack || use.Enable != EnableKind::Always)) return false;
        const auto& cells = CurrentMode()->Cells;
        return std::all_of(cells.begin(), cells.end(), [&](const Cell& other) {
            return &other == &cell || std::none_of(other.Uses.begin(), other.Uses.end(),
                                                   [&](const CellUse& u) { return u.Collides(use); });
        });
    }

    bool TakeOutput(const Words& words, CellUse& use) {
        static const std::map<std::string_view, FeedbackKind> feedbacks{{"none", FeedbackKind::None},
                                                                        {"pin", FeedbackKind::Pin},
                                                                        {"level", FeedbackKind::Level},
                                                                        {"notsum", FeedbackKind::NotSum},
                                                                        {"sum", FeedbackKind::Sum}};
        const auto row = Row(words[2]);
        const auto terms = Number(words[3], RowCount() + 1);
        const auto feedback = feedbacks.find(words[5]);
        if (!row || !terms || *terms == 0 || feedback == feedbacks.end()) return false;
        if (*row + *terms > RowCount()) return false;
        if (words[1] != "output" && words[1] != "register") return false;
        use.Kind = words[1] == "output" ? UseKind::Output : UseKind::Register;
        use.FirstRow = *row;
        use.Terms = *terms;
        use.Feedback = feedback->second;
        use.StoresSum = use.Feedback == FeedbackKind::NotSum || use.Feedback == FeedbackKind::Sum;
        return TakeUseEnable(words[4], use);
    }

    bool TakeUseEnable(std::string_view word, CellUse& use) {
        if (word == "always" || word == "pin") {
            use.Enable = word == "pin" ? EnableKind::Pin : EnableKind::Always;
            return true;
        }
        constexpr std::string_view andPin = "&pin";
        use.EnableAndPin = word.ends_with(andPin);
        if (use.EnableAndPin) word.remove_suffix(andPin.size());
        if (!Row(word) || (use.EnableAndPin && CurrentMode()->EnablePin == 0)) return false;
        use.Enable = EnableKind::Row;
        use.EnableRow = *Row(word);
        return true;
    }

    std::string_view text_;
    int line_ = 0;
    bool open_ = false;
    Library library_;
};

}  // namespace

Library ReadLibrary(std::string_view text) { return Reader(text).Read(); }

}  // namespace fit
