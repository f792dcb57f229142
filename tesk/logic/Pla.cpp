#include "logic/Pla.h"

#include <charconv>

#include "base/RunTimeError.h"
#include "base/Text.h"

namespace logic {

namespace {

class Reader {
  public:
    explicit Reader(std::string_view text) : text_(text) {}

    Pla Read() {
        while (!text_.empty() && !ended_) {
            ++line_;
            const std::string_view line = base::TakeLine(text_);
            TakeLine(line.substr(0, line.find('#')));
        }
        if (!HaveSize()) Fail(".i and .o are missing");
        if (!symbols_.empty()) Fail("the last row is too short");
        return std::move(pla_);
    }

  private:
    using Words = std::vector<std::string_view>;

    [[noreturn]] void Fail(const std::string& what) const {
        throw base::RunTimeError(base::errTypeMismatch, "line " + std::to_string(line_) + ": " + what);
    }

    bool HaveSize() const { return inputs_ >= 0 && outputs_ >= 0; }

    void TakeLine(std::string_view line) {
        const std::size_t start = line.find_first_not_of(" \t");
        if (start == std::string_view::npos) return;
        if (line[start] == '.') {
            if (!symbols_.empty()) Fail("the row before this line is too short");
            TakeDirective(base::Words(line));
        } else if (HaveSize()) {
            TakeRow(line);
        } else if (line.find_first_not_of("01-24~| \t") == std::string_view::npos) {
            Fail("a row before .i and .o");
        }
    }

    void TakeDirective(Words words) {
        const std::string name(words[0]);
        words.erase(words.begin());
        if (name == ".i")
            inputs_ = TakeSize(words, inputs_, Pla::maxInputs);
        else if (name == ".o")
            outputs_ = TakeSize(words, outputs_, Pla::maxOutputs);
        else if (name == ".p")
            Number(words);  // only a hint, and often wrong: the rows count
        else if (name == ".ilb")
            pla_.InputNames = TakeNames(words, inputs_, ".i");
        else if (name == ".ob")
            pla_.OutputNames = TakeNames(words, outputs_, ".o");
        else if (name == ".type")
            TakeType(words);
        else if (name == ".e" || name == ".end")
            ended_ = true;
        else if (name == ".phase" || name == ".mv")
            Fail(name + " is not supported");
        else
            Fail("unknown directive " + name.substr(0, 40));
    }

    long Number(const Words& words) const {
        long value = -1;
        if (words.empty()) Fail("a number is missing");
        const char* end = words[0].data() + words[0].size();
        const auto parsed = std::from_chars(words[0].data(), end, value);
        if (parsed.ec != std::errc() || parsed.ptr != end || value < 0)
            Fail("not a number: " + std::string(words[0].substr(0, 40)));
        return value;
    }

    int TakeSize(const Words& words, int before, int limit) {
        const long value = Number(words);
        if (before >= 0) Fail("given twice");
        if (value < 1 || value > limit) Fail("must be 1 to " + std::to_string(limit));
        const int size = static_cast<int>(value);
        return size;
    }

    std::vector<std::string> TakeNames(const Words& words, int count, const std::string& size) const {
        if (count < 0) Fail(size + " must come before the names");
        // Public files exist whose list is short: they mean their rows, the names are only for show.
        if (words.size() != static_cast<std::size_t>(count)) return {};
        return {words.begin(), words.end()};
    }

    void TakeType(const Words& words) {
        const std::string type(words.empty() ? "" : words[0]);
        if (type != "f" && type != "fd" && type != "fr" && type != "fdr")
            Fail("the type must be f, fd, fr or fdr");
        if (begun_) Fail(".type must come before the rows");
        pla_.Type = type;
    }

    void Begin() {
        begun_ = true;
        pla_.On = pla_.DontCare = pla_.Off = Cover(inputs_, outputs_);
        dontCare_ = base::Contains(pla_.Type, "d");
        off_ = base::Contains(pla_.Type, "r");
    }

    void TakeRow(std::string_view line) {
        if (!begun_) Begin();
        const bool continued = !symbols_.empty();
        const std::size_t need = static_cast<std::size_t>(inputs_) + static_cast<std::size_t>(outputs_);
        int rows = 0;
        for (const char c : line) {
            if (c == ' ' || c == '\t' || c == '|') continue;
            if (continued && rows > 0) Fail("the row is too long, or one before it too short");
            symbols_ += c;
            if (symbols_.size() < need) continue;
            AddRow();
            symbols_.clear();
            ++rows;
        }
    }

    void AddRow() {
        const auto words = static_cast<std::size_t>(pla_.On.Form().Words());
        if ((pla_.On.Size() + pla_.DontCare.Size() + pla_.Off.Size() + 3) * words > Pla::maxWords)
            Fail("too many rows");
        Cover row(inputs_, outputs_);
        Word* cube = row.Append();
        for (int v = 0; v < inputs_; ++v)
            row.Form().SetInput(cube, v, InputSymbol(symbols_[static_cast<std::size_t>(v)]));
        for (Cover* cover : {&pla_.On, &pla_.DontCare, &pla_.Off}) {
            const char set = cover == &pla_.On ? '1' : cover == &pla_.DontCare ? '-' : '0';
            if ((set == '-' && !dontCare_) || (set == '0' && !off_)) continue;
            for (int o = 0; o < outputs_; ++o)
                row.Form().SetOutput(cube, o,
                                     OutputSymbol(symbols_[static_cast<std::size_t>(inputs_ + o)]) == set);
            if (!row.Form().IsEmpty(cube)) cover->Add(cube);
        }
    }

    Literal InputSymbol(char c) const {
        switch (c) {
            case '0':
                return Literal::Zero;
            case '1':
                return Literal::One;
            case '-':
            case '2':
                return Literal::Free;
            case '~':
                return Literal::None;
            default:
                Fail(std::string("'") + c + "' is no input of a row");
        }
    }

    char OutputSymbol(char c) const {
        switch (c) {
            case '1':
            case '4':
                return '1';
            case '-':
            case '2':
                return '-';
            case '0':
            case '~':
                return c;
            default:
                Fail(std::string("'") + c + "' is no output of a row");
        }
    }

    std::string_view text_;
    int line_ = 0;
    int inputs_ = -1;
    int outputs_ = -1;
    bool begun_ = false;
    bool ended_ = false;
    bool dontCare_ = false;
    bool off_ = false;
    std::string symbols_;
    Pla pla_;
};

void AddNames(std::string& text, const char* directive, const std::vector<std::string>& names) {
    if (names.empty()) return;
    text += directive;
    for (const std::string& name : names) text += " " + name;
    text += "\n";
}

}  // namespace

Pla ReadPla(std::string_view text) { return Reader(text).Read(); }

std::string WritePla(const Cover& cover, const std::vector<std::string>& inputNames,
                     const std::vector<std::string>& outputNames) {
    std::string text =
        ".i " + std::to_string(cover.Inputs()) + "\n.o " + std::to_string(cover.Outputs()) + "\n";
    AddNames(text, ".ilb", inputNames);
    AddNames(text, ".ob", outputNames);
    text += ".type f\n.p " + std::to_string(cover.Size()) + "\n";
    for (std::size_t i = 0; i < cover.Size(); ++i)
        text += InputText(cover.Form(), cover[i]) + " " + OutputText(cover.Form(), cover[i]) + "\n";
    return text + ".e\n";
}

MinimizeResult Minimize(const Pla& pla, Level level, const Options& options) {
    if (pla.Type == "fr") return MinimizeOnOff(pla.On, pla.Off, level, options);
    if (pla.Type == "fdr") DemandApart(pla.On, pla.Off);
    return Minimize(pla.On, pla.DontCare, level, options);
}

}  // namespace logic
