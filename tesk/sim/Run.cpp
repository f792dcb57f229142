#include "sim/Run.h"

#include <algorithm>

#include "sim/Logic3.h"

namespace sim {
namespace {

constexpr std::size_t mostNoteBytes = 8u << 20;

class Runner {
  public:
    Runner(const AbsDesign& design, const std::vector<std::size_t>& columns, const Steps& steps,
           const Observers& observers, std::uint64_t mostWork)
        : design_(design), steps_(steps), columns_(columns), observers_(observers), machine_(design) {
        machine_.SetMostWork(mostWork);
        for (const std::size_t net : columns_) {
            const Net& record = design.Nets[net];
            kinds_.push_back({net, record.Kind, record.Register != RegisterKind::None});
        }
    }

    RunResult Run() {
        if (machine_.UsesDefaultClock()) result_.Messages.Add("0305vs", 0);
        Step step;
        while (steps_(step) && TakeStep(step)) continue;
        if (result_.Vectors == 0) result_.Messages.Add("0307vs", 0);
        result_.LastNotes = std::move(record_.Notes);
        return std::move(result_);
    }

  private:
    struct Column {
        std::size_t Net;
        NetKind Kind;
        bool Registered;
    };

    bool TakeStep(const Step& step) {
        switch (step.Kind) {
            case StepKind::Message:
                Note(step.Text);
                return true;
            case StepKind::Trace:
                SetTrace(step.Number);
                return true;
            case StepKind::SimulationOn:
            case StepKind::SimulationOff:
                on_ = step.Kind == StepKind::SimulationOn;
                return true;
            case StepKind::Vector:
                break;
        }
        for (int i = 0; i < step.Number; ++i) {
            TakeVector(step);
            if (!machine_.Exhausted()) continue;
            result_.Messages.Add("0306vs", step.Line);
            return false;
        }
        return true;
    }

    void SetTrace(int level) {
        if (level == 0) {
            machine_.Trace = nullptr;
            return;
        }
        machine_.Trace = [this, level](int of, const std::string& line) {
            if (of <= level) Note(line);
        };
    }

    void Note(const std::string& line) {
        if (noteBytes_ > mostNoteBytes) return;
        noteBytes_ += line.size() + 2;
        if (noteBytes_ > mostNoteBytes) result_.Messages.Add("0308vs", 0);
        record_.Notes.append(line).append("\r\n");
    }

    void TakeVector(const Step& step) {
        record_.Number = ++result_.Vectors;
        record_.Simulated = on_;
        record_.Given = step.Text;
        record_.Found = step.Text;
        if (on_) {
            Execute(step);
            Compare(step);
        } else {
            std::replace(record_.Found.begin(), record_.Found.end(), '*', 'X');
        }
        if (observers_.Vector) observers_.Vector(record_);
        record_.Notes.clear();
        time_ += 100;
    }

    void Execute(const Step& step) {
        const auto& values = step.Text;
        const bool preload = values.find('P') != values.npos;
        const bool pulse = values.find('C') != values.npos;
        const bool inverse = values.find('K') != values.npos;
        if (preload) machine_.Preload(StatesToLoad(values));
        machine_.SetDefaultClock(Value::Zero);
        FindDrives(values, preload);
        Apply(step, 0);
        if (!pulse && !inverse) return;
        machine_.SetDefaultClock(pulse ? Value::One : Value::Zero);
        FindPulses(values, Value::One, Value::Zero);
        Apply(step, 25);
        machine_.SetDefaultClock(pulse ? Value::Zero : Value::One);
        FindPulses(values, Value::Zero, Value::One);
        Apply(step, 75);
    }

    std::vector<Machine::Drive> StatesToLoad(const std::string& values) const {
        std::vector<Machine::Drive> states;
        for (std::size_t i = 0; i < values.size(); ++i) {
            const auto& net = design_.Nets[columns_[i]];
            if (values[i] != '0' && values[i] != '1') continue;
            const bool inverted = net.ActiveLow && net.Kind != NetKind::Node;
            states.emplace_back(columns_[i], (values[i] == '1') != inverted ? Value::One : Value::Zero);
        }
        return states;
    }

    void FindDrives(const std::string& values, bool preload) {
        drives_.clear();
        for (std::size_t i = 0; i < values.size(); ++i) {
            const Column& column = kinds_[i];
            const char value = values[i];
            if (column.Kind == NetKind::Node) continue;
            const bool loaded = preload && column.Registered;
            Value level = Value::HighZ;
            if (value == '0' || value == 'C') level = Value::Zero;
            if (value == '1' || value == 'K') level = Value::One;
            if (column.Kind == NetKind::Input) {
                if (value == 'P' || value == '*') continue;
                if (value == 'X') level = Value::Unknown;
            }
            drives_.emplace_back(column.Net, loaded ? Value::HighZ : level);
        }
    }

    void FindPulses(const std::string& values, Value c, Value k) {
        drives_.clear();
        for (std::size_t i = 0; i < values.size(); ++i) {
            if (values[i] == 'C') drives_.emplace_back(columns_[i], c);
            if (values[i] == 'K') drives_.emplace_back(columns_[i], k);
        }
    }

    void Apply(const Step& step, std::uint64_t offset) {
        const auto trouble = machine_.Apply(drives_);
        if (!trouble.NoFixedPoint.empty())
            result_.Messages.Add(trouble.ClockFault ? MessageCode("0303vs") : MessageCode("0302vs"),
                                 step.Line, Names(trouble.NoFixedPoint));
        if (!trouble.Contention.empty()) result_.Messages.Add("0304vs", step.Line, Names(trouble.Contention));
        if (observers_.Waves) observers_.Waves(time_ + offset, machine_);
    }

    std::string Names(const std::vector<std::size_t>& nets) const {
        constexpr std::size_t most = 16;
        std::string names;
        for (std::size_t i = 0; i < nets.size(); ++i) {
            if (i == most) return names + " and " + std::to_string(nets.size() - most) + " more";
            names += (i == 0 ? "" : ", ") + design_.Nets[nets[i]].Name;
        }
        return names;
    }

    void Compare(const Step& step) {
        bool same = true;
        for (std::size_t i = 0; i < record_.Found.size(); ++i) {
            char& value = record_.Found[i];
            if (value != 'L' && value != 'H' && value != 'Z' && value != '*') continue;
            const bool input = kinds_[i].Kind == NetKind::Input;
            value = (input ? "01XZ" : "LHXZ")[static_cast<std::size_t>(machine_.Level(columns_[i]))];
            same = same && (record_.Given[i] == '*' || record_.Given[i] == value);
        }
        if (same) return;
        for (const auto column : MismatchesOf(record_)) {
            ++result_.Mismatches;
            result_.Messages.Add("0301vs", step.Line,
                                 "vector " + std::to_string(record_.Number) + ", " +
                                     design_.Nets[columns_[column]].Name + " expected " +
                                     record_.Given[column] + ", found " + record_.Found[column]);
        }
    }

    const AbsDesign& design_;
    const Steps& steps_;
    const std::vector<std::size_t>& columns_;
    std::vector<Column> kinds_;  // what drives a column depends on
    const Observers& observers_;
    Machine machine_;
    bool on_ = true;
    std::uint64_t time_ = 0;
    std::size_t noteBytes_ = 0;
    std::vector<Machine::Drive> drives_;
    VectorRecord record_;  // of the vector at hand
    RunResult result_;
};

}  // namespace

std::vector<std::size_t> MismatchesOf(const VectorRecord& record) {
    std::vector<std::size_t> columns;
    if (!record.Simulated) return columns;
    for (std::size_t i = 0; i < record.Given.size(); ++i) {
        if (record.Given[i] != '*' && record.Given[i] != record.Found[i]) columns.push_back(i);
    }
    return columns;
}

RunResult RunVectors(const AbsDesign& design, const std::vector<std::size_t>& columns, const Steps& steps,
                     const Observers& observers, std::uint64_t mostWork) {
    return Runner(design, columns, steps, observers, mostWork).Run();
}

}  // namespace sim
