#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

// What is shown: signals, when they change, and where a simulation found another value than expected.
namespace wavrik {

using Time = std::int64_t;  // in units of the file, 0 to MostTime
inline constexpr Time MostTime = Time{1} << 53;
// A test vector lasts 100 ns; its pulses go out after 25 and come back after 75.
inline constexpr Time VectorTime = 100;

// A character such as '0' or 'X' of a signal of one bit, or from FirstWord on the number of a word of Waves;
// 0 is no value.
using Value = std::uint32_t;
inline constexpr Value FirstWord = 256;

struct Change {
    Time At;
    Value To;
};

struct Mismatch {
    Time At;  // of its vector's start
    char Expected;
};

struct Signal {
    std::string Name;
    std::vector<Change> Changes;       // times ascend, each value differs from the one before
    std::vector<Mismatch> Mismatches;  // times ascend
    bool IsMember = false;             // of the bus above
};

struct Waves {
    std::vector<Signal> Signals;
    std::vector<std::string> Words;  // values of more than one bit
    Time End = 0;
    bool HasVectors = false;
    bool IsCompared = false;     // with what was expected
    std::int64_t UnitCount = 1;  // a unit of time is so many …
    std::string Unit = "ns";     // … of these

    std::string TextOf(Value value) const;
};

enum class Level { None, Low, High, Open, Unknown, Word };
Level LevelOf(Value value);

Value ValueAt(const Signal& signal, Time at);
// The mismatch of the vector at that time; null without one.
const Mismatch* MismatchAt(const Signal& signal, Time at);
std::size_t CountMismatches(const Waves& waves);

struct Spot {
    Time At = 0;
    std::size_t Row = 0;
    auto operator<=>(const Spot&) const = default;
};
// By time, in one vector from top to bottom; none if there is no more.
enum class Way { Forward, Back };
std::optional<Spot> FindMismatch(const Waves& waves, Spot from, Way way);

// Puts waves together. Throws base::RunTimeError "line n: …".
class WavesBuilder {
  public:
    static constexpr std::size_t MostChanges = std::size_t{1} << 24;
    static constexpr std::size_t MostSignals = std::size_t{1} << 16;

    std::size_t AddSignal(std::string name, std::size_t line);
    // Times of one signal must not descend; the last value of a time holds. The same value again is no
    // change.
    void Add(std::size_t signal, Time at, Value value, std::size_t line);
    // A test value (0 1 C K L H Z X N P *) in the vector `number`, from 0.
    void AddTest(std::size_t signal, std::size_t number, char value, std::size_t line);
    void AddMismatch(std::size_t signal, std::size_t number, char expected);
    void AddCopy(std::size_t signal, std::size_t of, std::size_t line);
    Value WordOf(std::string_view text);

    // Neighbours of one bit such as Q3, Q2, Q1, Q0 get a bus above them.
    Waves Finish(Time end);
    Waves FinishVectors(std::size_t vectors);

  private:
    void Count(std::size_t changes, std::size_t line);
    void AddBus(const std::vector<Signal>& members);

    Waves waves_;
    std::size_t changes_ = 0;
    std::unordered_map<std::string, Value> words_;
};

// A name that ends in a number: Q7 is index 7 of Q. The index is -1 without one and beyond 999.
struct IndexedName {
    std::string_view Stem;
    int Index = -1;
};
IndexedName SplitIndex(std::string_view name);

// Values of one bit, the most significant first, in hexadecimal; a digit that is no number as 'X', or as the
// letter that all its bits have.
std::string HexOf(std::string_view bits);

// "line n: what"
[[noreturn]] void FailAt(std::size_t line, const std::string& what);
// A piece of a file in a message: its head, what can't be shown replaced.
std::string Shown(std::string_view text);

}  // namespace wavrik
