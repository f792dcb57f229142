#include <algorithm>
#include <charconv>
#include <unordered_map>

#include "base/Text.h"
#include "base/modLib.h"
#include "wavrik/WaveReaders.h"

namespace wavrik {
namespace {

constexpr std::size_t mostBits = 4096;  // of a signal

class DumpReader {
  public:
    explicit DumpReader(std::string_view text) : text_(text) {}

    Waves Read() {
        while (TakeDeclaration()) continue;
        if (ids_.empty()) FailAt(line_, "no signals are declared");
        for (auto word = Next(); !word.empty(); word = Next()) TakeChange(word);
        for (const auto& [signal, of] : aliases_) builder_.AddCopy(signal, of, line_);
        Waves waves = builder_.Finish(now_);
        waves.UnitCount = unitCount_;
        waves.Unit = unit_;
        return waves;
    }

  private:
    // What stands between blanks; empty at the end.
    std::string_view Next() {
        for (; at_ < text_.size() && IsBlank(text_[at_]); ++at_) line_ += text_[at_] == '\n' ? 1 : 0;
        const std::size_t from = at_;
        while (at_ < text_.size() && !IsBlank(text_[at_])) ++at_;
        return text_.substr(from, at_ - from);
    }
    static bool IsBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

    std::string_view Need(const char* what) {
        const auto word = Next();
        if (word.empty()) FailAt(line_, std::string("the file ends before ") + what);
        return word;
    }

    // The words up to $end; more than a few are not kept.
    std::vector<std::string_view> ToEnd() {
        std::vector<std::string_view> words;
        for (auto word = Need("$end"); word != "$end"; word = Need("$end"))
            if (words.size() < 8) words.push_back(word);
        return words;
    }

    // False behind the last one.
    bool TakeDeclaration() {
        const auto word = Need("$enddefinitions");
        if (word[0] != '$') FailAt(line_, Shown(word) + " is no declaration of a value change dump");
        const std::size_t line = line_;
        const auto words = ToEnd();
        if (word == "$var") TakeSignal(words, line);
        if (word == "$timescale") TakeTimescale(words, line);
        if (word == "$scope") scopes_.emplace_back(words.size() > 1 ? words[1] : "");
        if (word == "$upscope" && !scopes_.empty()) scopes_.pop_back();
        if (scopes_.size() > 256) FailAt(line, "more than 256 scopes in each other");
        return word != "$enddefinitions";
    }

    void TakeTimescale(const std::vector<std::string_view>& words, std::size_t line) {
        std::string text;
        for (const auto word : words) text += word;
        const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), unitCount_);
        unit_ = text.substr(static_cast<std::size_t>(end - text.data()));
        const bool isUnit = unit_ == "s" || (unit_.size() == 2 && unit_[1] == 's' &&
                                             base::Contains("munpf", unit_.substr(0, 1)));
        const bool isCount = unitCount_ == 1 || unitCount_ == 10 || unitCount_ == 100;
        if (fault != std::errc() || !isUnit || !isCount) FailAt(line, Shown(text) + " is no time scale");
    }

    // `wire 8 ! data [7:0]`. The outermost scope is the design itself.
    void TakeSignal(const std::vector<std::string_view>& words, std::size_t line) {
        if (words.size() < 4) FailAt(line, "the signal has no name");
        std::string name;
        for (std::size_t i = 1; i < scopes_.size(); ++i) name += scopes_[i] + ".";
        name += words[3];
        for (std::size_t i = 4; i < words.size(); ++i) name += words[i];
        const std::size_t signal = builder_.AddSignal(base::DisplayUtf8(name), line);
        std::size_t width = 0;
        const auto [end, fault] = std::from_chars(words[1].data(), words[1].data() + words[1].size(), width);
        if (fault != std::errc() || end != words[1].data() + words[1].size() || width > mostBits)
            FailAt(line, Shown(words[1]) + " is no number of bits");
        widths_.push_back(width);
        const auto [at, isNew] = ids_.emplace(words[2], signal);
        if (!isNew) aliases_.emplace_back(signal, at->second);
    }

    void TakeChange(std::string_view word) {
        switch (word[0]) {
            case '#':
                return TakeTime(word.substr(1));
            case '$':
                if (word == "$comment") ToEnd();
                return;  // $dumpvars, $dumpoff …, $end: what is between them are changes
            case 'b':
            case 'B':
                return TakeBits(word.substr(1));
            case 'r':
            case 'R':
            case 's':
            case 'S':
                return TakeWord(word.substr(1));
            default:
                return TakeBit(word);
        }
    }

    void TakeTime(std::string_view digits) {
        Time time = 0;
        const auto [end, fault] = std::from_chars(digits.data(), digits.data() + digits.size(), time);
        if (fault != std::errc() || end != digits.data() + digits.size() || time > MostTime || time < now_)
            FailAt(line_, Shown(digits) + " is no time, or one before the last");
        now_ = time;
    }

    void TakeBit(std::string_view word) {
        const char value = base::UpperChar(word[0]);
        if (value != '0' && value != '1' && value != 'X' && value != 'Z')
            FailAt(line_, Shown(word) + " is no change of a value");
        builder_.Add(SignalOf(word.substr(1)), now_, static_cast<Value>(value), line_);
    }

    // Leading digits may be left out: zeros, or as many of the letter that stands first.
    void TakeBits(std::string_view text) {
        const std::size_t line = line_;
        std::string bits = base::Upper(text);
        if (bits.empty() || bits.find_first_not_of("01XZ") != bits.npos || bits.size() > mostBits)
            FailAt(line, Shown(text) + " is no change of a value");
        const std::size_t signal = SignalOf(Need("a signal's name"));
        bits = base::PadLeft(std::move(bits), widths_[signal], bits[0] == '1' ? '0' : bits[0]);
        const bool isBit = bits.size() == 1;
        builder_.Add(signal, now_, isBit ? static_cast<Value>(bits[0]) : builder_.WordOf(HexOf(bits)), line);
    }

    void TakeWord(std::string_view text) {
        const std::size_t line = line_;
        const std::size_t signal = SignalOf(Need("a signal's name"));
        builder_.Add(signal, now_, builder_.WordOf(Shown(text)), line);
    }

    std::size_t SignalOf(std::string_view id) const {
        const auto found = ids_.find(id);
        if (found == ids_.end()) FailAt(line_, "no signal " + Shown(id) + " is declared");
        return found->second;
    }

    std::string_view text_;
    std::size_t at_ = 0;
    std::size_t line_ = 1;
    Time now_ = 0;
    std::int64_t unitCount_ = 1;
    std::string unit_ = "ns";
    std::vector<std::string> scopes_;
    std::vector<std::size_t> widths_;  // of each signal, in bits
    std::unordered_map<std::string_view, std::size_t> ids_;
    std::vector<std::pair<std::size_t, std::size_t>> aliases_;  // of one identifier
    WavesBuilder builder_;
};

}  // namespace

Waves ReadDump(std::string_view text) { return DumpReader(text).Read(); }

}  // namespace wavrik
