#include "sim/Run.h"

#include "sim/Logic3.h"

namespace sim {
namespace {

constexpr std::size_t mostNoteBytes = 8u << 20;

class Runner {
  public:
    Runner(const AbsDesign& design, const SiFile& file, const Observer& observer, std::uint64_t mostWork)
        : design_(design), file_(file), observer_(observer), machine_(design) {
        machine_.SetMostWork(mostWork);
    }

    RunResult Run() {
        if (machine_.UsesDefaultClock()) result_.Messages.Add("0305vs", 0);
        if (file_.Vectors == 0) result_.Messages.Add("0307vs", 0);
        for (const auto& step : file_.Steps) {
            if (!TakeStep(step)) break;
        }
        result_.LastNotes = std::move(notes_);
        return std::move(result_);
    }

  private:
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
        notes_.push_back(line);
    }

    void TakeVector(const Step& step) {
        VectorRecord record{step.Line, on_, step.Text, step.Text, {}};
        if (on_) {
            Execute(step);
            Compare(step, record);
        } else {
            for (char& value : record.Found) {
                if (value == '*') value = 'X';
            }
        }
        record.Notes = std::exchange(notes_, {});
        result_.Vectors.push_back(std::move(record));
        time_ += 100;
    }

    void Execute(const Step& step) {
        const auto& values = step.Text;
        const bool preload = values.find('P') != values.npos;
        const bool pulse = values.find('C') != values.npos;
        const bool inverse = values.find('K') != values.npos;
        if (preload) machine_.Preload(StatesToLoad(values));
        machine_.SetDefaultClock(Value::Zero);
        Apply(Drives(values, preload), step, 0);
        if (!pulse && !inverse) return;
        machine_.SetDefaultClock(pulse ? Value::One : Value::Zero);
        Apply(Pulsed(values, Value::One, Value::Zero), step, 25);
        machine_.SetDefaultClock(pulse ? Value::Zero : Value::One);
        Apply(Pulsed(values, Value::Zero, Value::One), step, 75);
    }

    std::vector<Machine::Drive> StatesToLoad(const std::string& values) const {
        std::vector<Machine::Drive> states;
        for (std::size_t i = 0; i < values.size(); ++i) {
            const auto& net = design_.Nets[file_.Columns[i]];
            if (values[i] != '0' && values[i] != '1') continue;
            const bool inverted = net.ActiveLow && net.Kind != NetKind::Node;
            states.emplace_back(file_.Columns[i], (values[i] == '1') != inverted ? Value::One : Value::Zero);
        }
        return states;
    }

    std::vector<Machine::Drive> Drives(const std::string& values, bool preload) const {
        std::vector<Machine::Drive> drives;
        for (std::size_t i = 0; i < values.size(); ++i) {
            const auto& net = design_.Nets[file_.Columns[i]];
            const char value = values[i];
            if (net.Kind == NetKind::Node) continue;
            const bool loaded = preload && net.Register != RegisterKind::None;
            Value level = Value::HighZ;
            if (value == '0' || value == 'C') level = Value::Zero;
            if (value == '1' || value == 'K') level = Value::One;
            if (net.Kind == NetKind::Input) {
                if (value == 'P' || value == '*') continue;
                if (value == 'X') level = Value::Unknown;
            }
            drives.emplace_back(file_.Columns[i], loaded ? Value::HighZ : level);
        }
        return drives;
    }

    std::vector<Machine::Drive> Pulsed(const std::string& values, Value c, Value k) const {
        std::vector<Machine::Drive> drives;
        for (std::size_t i = 0; i < values.size(); ++i) {
            if (values[i] == 'C') drives.emplace_back(file_.Columns[i], c);
            if (values[i] == 'K') drives.emplace_back(file_.Columns[i], k);
        }
        return drives;
    }

    void Apply(const std::vector<Machine::Drive>& drives, const Step& step, std::uint64_t offset) {
        const auto trouble = machine_.Apply(drives);
        if (!trouble.NoFixedPoint.empty())
            result_.Messages.Add(trouble.ClockFault ? "0303vs" : "0302vs", step.Line,
                                 Names(trouble.NoFixedPoint));
        if (!trouble.Contention.empty()) result_.Messages.Add("0304vs", step.Line, Names(trouble.Contention));
        if (observer_) observer_(time_ + offset, machine_);
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

    void Compare(const Step& step, VectorRecord& record) {
        for (std::size_t i = 0; i < record.Found.size(); ++i) {
            char& value = record.Found[i];
            if (value != 'L' && value != 'H' && value != 'Z' && value != '*') continue;
            const auto net = file_.Columns[i];
            const bool input = design_.Nets[net].Kind == NetKind::Input;
            value = (input ? "01XZ" : "LHXZ")[static_cast<std::size_t>(machine_.Level(net))];
        }
        for (const auto column : MismatchesOf(record)) {
            ++result_.Mismatches;
            result_.Messages.Add("0301vs", step.Line,
                                 "vector " + std::to_string(result_.Vectors.size() + 1) + ", " +
                                     design_.Nets[file_.Columns[column]].Name + " expected " +
                                     record.Given[column] + ", found " + record.Found[column]);
        }
    }

    const AbsDesign& design_;
    const SiFile& file_;
    const Observer& observer_;
    Machine machine_;
    bool on_ = true;
    std::uint64_t time_ = 0;
    std::vector<std::string> notes_;
    std::size_t noteBytes_ = 0;
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

RunResult RunVectors(const AbsDesign& design, const SiFile& file, const Observer& observer,
                     std::uint64_t mostWork) {
    return Runner(design, file, observer, mostWork).Run();
}

}  // namespace sim
