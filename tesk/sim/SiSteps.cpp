#include "sim/SiSteps.h"

#include <algorithm>
#include <cstring>
#include <type_traits>

namespace sim {
namespace {

struct StepHead {
    StepKind Kind;
    int Line;
    int Number;
    std::size_t TextBytes;
};
static_assert(std::is_trivially_copyable_v<StepHead>);

}  // namespace

void PutStep(const Step& step, Sink& to) {
    const StepHead head{step.Kind, step.Line, step.Number, step.Text.size()};
    to.Put({reinterpret_cast<const char*>(&head), sizeof head});
    to.Put(step.Text);
}

bool StepReader::Next(Step& step) {
    StepHead head{};
    if (!Take(&head, sizeof head)) return false;
    step.Kind = head.Kind;
    step.Line = head.Line;
    step.Number = head.Number;
    step.Text.resize(head.TextBytes);
    return Take(step.Text.data(), step.Text.size());
}

bool StepReader::Take(void* to, std::size_t count) {
    for (auto* at = static_cast<char*>(to); count > 0;) {
        if (piece_.empty()) piece_ = from_.Next();
        if (piece_.empty()) return false;
        const std::size_t part = std::min(count, piece_.size());
        std::memcpy(at, piece_.data(), part);
        at += part;
        count -= part;
        piece_.remove_prefix(part);
    }
    return true;
}

}  // namespace sim
