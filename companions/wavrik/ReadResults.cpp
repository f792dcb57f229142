#include <algorithm>
#include <unordered_map>

#include "base/Text.h"
#include "wavrik/WaveReaders.h"

namespace wavrik {
namespace {

constexpr std::string_view mismatchMark = "   >> ";
constexpr std::string_view asideMark = "  (not simulated)";
constexpr std::size_t mostDigits = 20;  // of a vector's number
constexpr std::string_view listValues = "01CKLHZXNP";

class ResultReader {
  public:
    explicit ResultReader(std::string_view text) : rest_(text) {}

    Waves Read() {
        FindFirst();
        bool isEnd = false;
        do {
            isEnd = !TakeVector() && !TakeMismatch() && IsEnd();
        } while (Next());
        if (!isEnd) FailAt(number_, "the list ends before its last line");
        Waves waves = builder_.FinishVectors(vectors_);
        waves.IsCompared = true;
        return waves;
    }

  private:
    bool Next() {
        if (rest_.empty()) return false;
        line_ = base::TakeLine(rest_);
        while (!line_.empty() && (line_.back() == '\r' || line_.back() == '\n')) line_.remove_suffix(1);
        ++number_;
        return true;
    }

    // Goes to the first vector and finds the names above it. Between them are at most lines that the vectors
    // write themselves.
    void FindFirst() {
        std::vector<std::vector<std::string_view>> blocks;
        bool isOpen = false;
        while (Next()) {
            // A vector's number is filled with zeros, that of a line of the listing with blanks.
            const std::size_t digits = std::min(line_.find(": "), line_.size());
            const bool isFirst = digits >= 4 && digits <= mostDigits && digits < line_.size() &&
                                 line_.substr(0, digits) == base::PadLeft("1", digits, '0');
            if (isFirst && FindNames(blocks, digits + 2)) return;
            const bool isCaption = base::StartsWith(line_, "      ");
            if (isCaption && !isOpen) blocks.emplace_back();
            if (isCaption) blocks.back().push_back(line_);
            isOpen = isCaption;
        }
        FailAt(number_, "no vectors were simulated");
    }

    // The names are the block whose last letters stand above the values.
    bool FindNames(const std::vector<std::vector<std::string_view>>& blocks, std::size_t first) {
        digits_ = first - 2;
        places_ = FilledPlaces(line_.substr(0, line_.find(asideMark)), first);
        if (places_.empty() || !HasValues()) return false;
        for (const auto& block : blocks) {
            if (FilledPlaces(block.back(), 0) != places_) continue;
            for (const std::size_t place : places_) AddName(block, place);
            return true;
        }
        return false;
    }

    static std::vector<std::size_t> FilledPlaces(std::string_view line, std::size_t from) {
        std::vector<std::size_t> places;
        for (std::size_t at = from; at < line.size(); ++at)
            if (line[at] != ' ') places.push_back(at);
        return places;
    }

    bool HasValues() const {
        return line_.size() > places_.back() && std::all_of(places_.begin(), places_.end(), [&](auto at) {
                   return listValues.find(line_[at]) != listValues.npos;
               });
    }

    void AddName(const std::vector<std::string_view>& block, std::size_t place) {
        std::string name;
        for (const std::string_view row : block)
            if (place < row.size() && row[place] != ' ') name += row[place];
        signals_.emplace(name, builder_.AddSignal(name, number_));
    }

    bool TakeVector() {
        const std::string next = base::PadLeft(std::to_string(vectors_ + 1), digits_, '0') + ": ";
        if (!base::StartsWith(line_, next)) return false;
        const auto end = line_.substr(std::min(places_.back() + 1, line_.size()));
        if (!HasValues() || (!end.empty() && end != asideMark))
            FailAt(number_, Shown(line_) + " is no vector of " + std::to_string(places_.size()) + " values");
        for (std::size_t i = 0; i < places_.size(); ++i)
            builder_.AddTest(i, vectors_, line_[places_[i]], number_);
        values_ = line_;
        ++vectors_;
        return true;
    }

    // "   >> Q0: expected H, found L" of the last vector. A text of $MSG can look like one of a signal that
    // is not there.
    bool TakeMismatch() {
        if (!base::StartsWith(line_, mismatchMark)) return false;
        constexpr std::string_view expected = ": expected ";
        constexpr std::string_view found = ", found ";
        const std::size_t colon = line_.find(expected);
        if (colon == line_.npos) return false;
        const std::string name(line_.substr(mismatchMark.size(), colon - mismatchMark.size()));
        const auto tail = line_.substr(colon + expected.size());
        const auto signal = signals_.find(name);
        if (signal == signals_.end() || tail.size() != found.size() + 2) return false;
        if (tail.substr(1, found.size()) != found || tail.back() != values_[places_[signal->second]])
            return false;
        builder_.AddMismatch(signal->second, vectors_ - 1, tail[0]);
        ++mismatches_;
        return true;
    }

    bool IsEnd() const {
        return line_ == std::to_string(vectors_) + " vectors, " + std::to_string(mismatches_) + " mismatches";
    }

    std::string_view rest_;
    std::string_view line_;
    std::string_view values_;  // the line of the last vector
    std::size_t number_ = 0;
    std::size_t digits_ = 0;           // of a vector's number
    std::vector<std::size_t> places_;  // of the values in a line
    std::unordered_map<std::string, std::size_t> signals_;
    std::size_t vectors_ = 0;
    std::size_t mismatches_ = 0;
    WavesBuilder builder_;
};

}  // namespace

Waves ReadResults(std::string_view text) { return ResultReader(text).Read(); }

}  // namespace wavrik
