#include "cpld/Levels.h"

#include <algorithm>

namespace cpld {
namespace {

class Finder {
  public:
    explicit Finder(const ChipOfParts& chip) : chip_(chip), nodes_(chip.Parts.size()) {}

    WorstPath Find(const std::vector<std::size_t>& used) {
        std::size_t last = chip_.Parts.size();
        for (const std::size_t cell : used)
            if (last == chip_.Parts.size() || LevelsOf(cell) > LevelsOf(last)) last = cell;
        if (last == chip_.Parts.size()) return {};
        for (std::size_t cell = last;; cell = nodes_[cell].From.At) {
            path_.Cells.insert(path_.Cells.begin(), cell);
            path_.From = nodes_[cell].From;
            if (path_.From.From != proof::Signal::Kind::Cell || IsRegister(path_.From.At) ||
                nodes_[cell].Levels <= 1)
                break;
        }
        return std::move(path_);
    }

  private:
    struct Node {
        enum { New, Open, Done } State = New;
        std::size_t Levels = 0;
        proof::Signal From;
    };

    bool IsRegister(std::size_t cell) const { return chip_.Parts[cell].Of == Part::Register; }

    // Levels up to what the cell gives, or what its register takes.
    std::size_t LevelsOf(std::size_t cell) {
        Node& node = nodes_[cell];
        if (node.State == Node::Open) path_.HasLoop = true;
        if (node.State != Node::New) return node.Levels;
        node.State = Node::Open;
        const auto& from = chip_.Chip.Cells[cell];
        std::size_t before = 0;
        const auto visit = [&](const proof::Sum& sum) {
            for (const auto& term : sum)
                for (const auto& literal : term) {
                    const bool isLogic =
                        literal.Of.From == proof::Signal::Kind::Cell && !IsRegister(literal.Of.At);
                    const std::size_t levels = isLogic ? LevelsOf(literal.Of.At) : 0;
                    if (levels > before || node.From.At == none) node.From = literal.Of;
                    before = std::max(before, levels);
                }
        };
        node.From.At = none;
        for (const auto* sum :
             {&from.Rows, from.Rows2 ? &*from.Rows2 : &from.Rows, &from.Enable.When, &from.Clock.When,
              &from.ClockEnable.When, &from.Reset.When, &from.Preset.When})
            visit(*sum);
        node.Levels = before + 1;
        node.State = Node::Done;
        return node.Levels;
    }

    static constexpr std::size_t none = static_cast<std::size_t>(-1);
    const ChipOfParts& chip_;
    std::vector<Node> nodes_;
    WorstPath path_;
};

}  // namespace

WorstPath FindWorstPath(const ChipOfParts& chip, const std::vector<std::size_t>& used) {
    return Finder(chip).Find(used);
}

}  // namespace cpld
