#include "wavrik/Waves.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "base/RunTimeError.h"
#include "base/Text.h"
#include "base/modLib.h"

namespace wavrik {

void FailAt(std::size_t line, const std::string& what) {
    throw base::RunTimeError(base::errInvalidCall, "line " + std::to_string(line) + ": " + what);
}

std::string Shown(std::string_view text) {
    constexpr std::size_t most = 40;
    std::string head(text.substr(0, most));
    for (char& c : head)
        if (static_cast<unsigned char>(c) < 32 || c == 127) c = '?';
    return "\"" + base::DisplayUtf8(head) + (text.size() > most ? "...\"" : "\"");
}

std::string Waves::TextOf(Value value) const {
    if (value == 0) return {};
    return value < FirstWord ? std::string(1, static_cast<char>(value)) : Words.at(value - FirstWord);
}

Level LevelOf(Value value) {
    switch (value) {
        case 0:
            return Level::None;
        case '0':
        case 'L':
            return Level::Low;
        case '1':
        case 'H':
            return Level::High;
        case 'Z':
            return Level::Open;
        default:
            return value < FirstWord ? Level::Unknown : Level::Word;
    }
}

Value ValueAt(const Signal& signal, Time at) {
    const auto after = std::partition_point(signal.Changes.begin(), signal.Changes.end(),
                                            [at](const Change& change) { return change.At <= at; });
    return after == signal.Changes.begin() ? 0 : std::prev(after)->To;
}

const Mismatch* MismatchAt(const Signal& signal, Time at) {
    const auto after = std::partition_point(signal.Mismatches.begin(), signal.Mismatches.end(),
                                            [at](const Mismatch& mismatch) { return mismatch.At <= at; });
    if (after == signal.Mismatches.begin()) return nullptr;
    const Mismatch& last = *std::prev(after);
    return at < last.At + VectorTime ? &last : nullptr;
}

std::size_t CountMismatches(const Waves& waves) {
    std::size_t count = 0;
    for (const Signal& signal : waves.Signals) count += signal.Mismatches.size();
    return count;
}

std::optional<Spot> FindMismatch(const Waves& waves, Spot from, Way way) {
    const bool goesOn = way == Way::Forward;
    std::optional<Spot> best;
    for (std::size_t row = 0; row < waves.Signals.size(); ++row) {
        const auto& all = waves.Signals[row].Mismatches;
        const auto behind = std::partition_point(all.begin(), all.end(), [&](const Mismatch& mismatch) {
            const Spot spot{mismatch.At, row};
            return spot < from || (goesOn && spot == from);
        });
        if (behind == (goesOn ? all.end() : all.begin())) continue;
        const Spot spot{(goesOn ? behind : std::prev(behind))->At, row};
        if (!best || (goesOn ? spot < *best : *best < spot)) best = spot;
    }
    return best;
}

IndexedName SplitIndex(std::string_view name) {
    std::size_t stem = name.size();
    while (stem > 0 && base::IsDigitChar(name[stem - 1])) --stem;
    IndexedName split{name.substr(0, stem)};
    const auto digits = name.substr(stem);
    if (digits.size() < 4) std::from_chars(digits.data(), digits.data() + digits.size(), split.Index);
    return split;
}

std::string HexOf(std::string_view bits) {
    std::string text;
    for (std::size_t left = bits.size(); left > 0;) {
        const auto digit = bits.substr(bits.size() - left, (left - 1) % 4 + 1);
        unsigned number = 0;
        for (const char bit : digit) {
            const Level level = LevelOf(static_cast<Value>(bit));
            if (level != Level::Low && level != Level::High) number |= 16;
            number = number << 1 | (level == Level::High ? 1u : 0u);
        }
        const bool isLetter = digit.find_first_not_of(digit[0]) == digit.npos;
        text += number < 16 ? "0123456789ABCDEF"[number] : isLetter ? digit[0] : 'X';
        left -= digit.size();
    }
    return text;
}

void WavesBuilder::Count(std::size_t changes, std::size_t line) {
    changes_ += changes;
    if (changes_ > MostChanges)
        FailAt(line, "more than " + std::to_string(MostChanges) + " changes of values");
}

std::size_t WavesBuilder::AddSignal(std::string name, std::size_t line) {
    if (waves_.Signals.size() >= MostSignals)
        FailAt(line, "more than " + std::to_string(MostSignals) + " signals");
    waves_.Signals.push_back({std::move(name), {}, {}});
    return waves_.Signals.size() - 1;
}

void WavesBuilder::Add(std::size_t signal, Time at, Value value, std::size_t line) {
    auto& changes = waves_.Signals[signal].Changes;
    if (!changes.empty() && changes.back().At == at) {
        changes.pop_back();
        --changes_;
    }
    if (!changes.empty() && changes.back().To == value) return;
    Count(1, line);
    changes.push_back({at, value});
}

void WavesBuilder::AddTest(std::size_t signal, std::size_t number, char value, std::size_t line) {
    const Time start = static_cast<Time>(number) * VectorTime;
    if (value != 'C' && value != 'K') return Add(signal, start, static_cast<Value>(value), line);
    const Value rest = value == 'C' ? '0' : '1';
    const Value pulse = value == 'C' ? '1' : '0';
    Add(signal, start, rest, line);
    Add(signal, start + VectorTime / 4, pulse, line);
    Add(signal, start + VectorTime * 3 / 4, rest, line);
}

void WavesBuilder::AddMismatch(std::size_t signal, std::size_t number, char expected) {
    waves_.Signals[signal].Mismatches.push_back({static_cast<Time>(number) * VectorTime, expected});
}

void WavesBuilder::AddCopy(std::size_t signal, std::size_t of, std::size_t line) {
    Count(waves_.Signals[of].Changes.size(), line);
    waves_.Signals[signal].Changes = waves_.Signals[of].Changes;
}

Value WavesBuilder::WordOf(std::string_view text) {
    const auto [at, isNew] =
        words_.emplace(std::string(text), FirstWord + static_cast<Value>(waves_.Words.size()));
    if (isNew) waves_.Words.emplace_back(text);
    return at->second;
}

Waves WavesBuilder::FinishVectors(std::size_t vectors) {
    waves_.HasVectors = true;
    return Finish(static_cast<Time>(vectors) * VectorTime);
}

}  // namespace wavrik
