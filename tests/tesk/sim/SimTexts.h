#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Text.h"
#include "sim/Simulation.h"

namespace test {

// A text in pieces of a size.
class TextSource : public sim::Source {
  public:
    explicit TextSource(std::string_view text, std::size_t piece = 1u << 16) : text_(text), piece_(piece) {}
    std::string_view Next() override {
        const auto next = text_.substr(at_, piece_);
        at_ += next.size();
        return next;
    }
    void Restart() override { at_ = 0; }

  private:
    std::string_view text_;
    std::size_t piece_;
    std::size_t at_ = 0;
};

class TextSpool : public sim::Spool {
  public:
    std::string Text;
    void Put(std::string_view piece) override { Text += piece; }
    sim::Source& Back() override { return back_.emplace(Text); }

  private:
    std::optional<TextSource> back_;
};

struct SimulationTexts {
    std::string Abs;
    std::string Si;
    std::string Jed;
};

struct Simulated : sim::SimulationResult {
    std::string So;
    std::string Vcd;
};

// The whole of a simulation on texts.
inline Simulated Simulate(const SimulationTexts& texts, const sim::SimulationOptions& options,
                          std::size_t piece = 1u << 16) {
    TextSource si(texts.Si, piece);
    TextSpool so, vcd, steps, aside;
    Simulated result;
    const sim::Checked checked = sim::Check(texts.Abs, si, steps);
    static_cast<sim::SimulationResult&>(result) =
        sim::Simulate(checked, steps.Back(), si, texts.Jed, options, {so, vcd, aside, nullptr});
    result.So = so.Text;
    result.Vcd = vcd.Text;
    return result;
}

inline SimulationTexts Texts(const std::string& records, const std::string& order,
                             const std::string& vectors) {
    return {"TESK-ABS 1\nHEADER Name T\nDEVICE G16V8 20\n" + records + "END\n",
            "Name T;\nORDER: " + order + ";\nVECTORS:\n" + vectors, ""};
}

// The vectors of an .SO text, without numbers and blanks.
inline std::vector<std::string> FoundBy(const Simulated& result) {
    std::vector<std::string> rows;
    for (const auto& line : base::Lines(result.So)) {
        const bool vector = line.size() > 6 && line[0] >= '0' && line[0] <= '9' && line.substr(4, 2) == ": ";
        if (vector) rows.push_back(base::ReplaceAll(line.substr(6), " ", ""));
    }
    return rows;
}

}  // namespace test
