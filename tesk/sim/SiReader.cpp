#include "sim/SiReader.h"

#include <algorithm>
#include <utility>

#include "base/Text.h"
#include "base/modLib.h"
#include "model/Number.h"
#include "sim/SiHead.h"
#include "sim/SiSteps.h"

namespace sim {

SiReader::SiReader(Source& source, const AbsDesign& design, MessageLog& log)
    : log_(log),
      lines_(source, log),
      open_(ReadHead(lines_, design, log, head_, rest_)),
      vectorReader_(design, head_) {}

void SiReader::Add(MessageCode code, int line, std::string_view detail) {
    log_.Add(code, line, base::DisplayUtf8(detail.substr(0, 120)));
}

// One that is not empty; false at the end.
bool SiReader::NextRow(std::string_view& row) {
    for (bool first = std::exchange(first_, false);; first = false) {
        row = rest_;
        if (!first && !lines_.Next(row)) return false;
        row = base::TrimView(row);
        if (!row.empty() && row != "\x1a") return true;
    }
}

bool SiReader::Next(Step& step) {
    std::string_view row;
    while (open_ && NextRow(row)) {
        step.Line = lines_.Number();
        if (row[0] == '$' ? TakeCommand(row, step) : TakeVector(row, step)) return true;
    }
    if (!std::exchange(open_, false)) return false;
    if (repeat_ != 0) Add("0209va", repeatLine_, "$REPEAT without a vector");
    if (lines_.OpenComment() != 0) log_.Add("0201va", lines_.OpenComment());
    return false;
}

// True if the command is a step of its own.
bool SiReader::TakeCommand(std::string_view row, Step& step) {
    const auto end = std::find_if_not(row.begin() + 1, row.end(), base::IsWordChar);
    const auto word = base::Upper({row.begin(), end});
    auto tail = base::TrimView({end, row.end()});
    if (!tail.empty() && tail.back() == ';') tail = base::TrimView(tail.substr(0, tail.size() - 1));
    step.Number = 0;
    if (word == "$MSG" && tail.size() > 1 && tail.front() == '"' && tail.back() == '"') {
        step.Kind = StepKind::Message;
        step.Text = tail.substr(1, tail.size() - 2);
    } else if (word == "$TRACE" && tail.size() == 1 && tail[0] >= '0' && tail[0] <= '4') {
        step.Kind = StepKind::Trace;
        step.Number = tail[0] - '0';
    } else if (word == "$SIMON" && tail.empty()) {
        step.Kind = StepKind::SimulationOn;
    } else if (word == "$SIMOFF" && tail.empty()) {
        step.Kind = StepKind::SimulationOff;
    } else {
        if (word != "$REPEAT" || !TakeRepeat(tail)) Add("0209va", step.Line, row);
        return false;
    }
    return true;
}

bool SiReader::TakeRepeat(std::string_view text) {
    const int count = model::WholeNumber<int>(text).value_or(0);
    if (count < 1 || count > SiLimits::Repeat || repeat_ != 0) return false;
    repeat_ = count;
    repeatLine_ = lines_.Number();
    return true;
}

bool SiReader::TakeVector(std::string_view row, Step& step) {
    step.Kind = StepKind::Vector;
    step.Number = std::max(std::exchange(repeat_, 0), 1);
    vectorReader_.Read(row, step.Line, log_, step.Text);
    vectors_ += static_cast<std::size_t>(step.Number);
    if (vectors_ <= SiLimits::Vectors && vectors_ * head_.Columns.size() <= SiLimits::Values) return true;
    Add("0210va", step.Line, "more than 10000000 vectors or 1000000000 test values");
    open_ = false;
    return false;
}

SiResult CheckSi(Source& source, const AbsDesign& design, Sink& steps) {
    SiResult result;
    SiReader reader(source, design, result.Messages);
    Step step;
    while (reader.Next(step))
        if (result.Ok()) PutStep(step, steps);
    result.Head = reader.Head();
    result.Vectors = reader.Vectors();
    return result;
}

}  // namespace sim
