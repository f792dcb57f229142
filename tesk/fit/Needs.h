#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "fit/Fitter.h"
#include "fit/Sums.h"

namespace fit {

// The design seen from its signals: their functions, and who reads whom.
class Needs {
  public:
    explicit Needs(const Design& design);

    const Design& Of() const { return design_; }
    const Signal& At(std::size_t signal) const { return design_.Signals[signal]; }
    std::size_t Count() const { return design_.Signals.size(); }

    bool Has(std::size_t signal, Input input) const { return functions_[signal][Index(input)] != nullptr; }
    // The sum of a function or of its complement; null if there is no such function, or if it can't be made.
    // A missing function is not made up.
    const Sum* SumOf(std::size_t signal, Input input, bool complement) const;

    // The function as an exclusive or; null if it has none.
    const Sides* SidesOf(std::size_t signal, Input input) const;
    // Whether two sums are the same function; false, too, if that can't be told in short time.
    bool AreEqual(const Sum& a, const Sum& b) const { return IsSameFunction(a, b, budget_); }

    bool Driven(std::size_t signal) const;
    bool Registered(std::size_t signal) const { return At(signal).Register != RegisterKind::None; }
    bool AnyRegister() const;
    // Out, or D of a register.
    Input DataInput(std::size_t signal) const { return Registered(signal) ? Input::D : Input::Out; }

    // Whether the sum as written is that of the complement.
    bool WrittenInverted(std::size_t signal, Input input) const;

    // "Q0.OE"; the bare name for Out.
    std::string Name(std::size_t signal, Input input) const;

    // The signal and the sense of a function that is one literal; nothing if it is more.
    std::optional<Literal> SingleLiteral(std::size_t signal, Input input) const;

    // What does not go through the array, since a pin of the device does it.
    struct Common {
        bool Clock = false;
        bool RegisterEnable = false;
        bool OutputEnable = false;
    };
    // Whether a function that is not `common` reads the signal as .IO (`pin`) or otherwise.
    bool Read(std::size_t signal, bool pin, const Common& common) const;
    bool ReadAtAll(std::size_t signal) const;

  private:
    void AddReaders(const Function& function, const Sum& sum);
    static std::size_t Index(Input input) { return static_cast<std::size_t>(input); }

    struct Sums {
        std::optional<Sum> Made[2];  // of the function, of its complement
        bool Tried = false;
    };
    // Who reads a signal.
    struct Readers {
        bool Array = false;
        bool Clock = false;
        bool RegisterEnable = false;
        bool OutputEnable = false;
    };

    const Design& design_;
    std::vector<std::array<const Function*, InputCount>> functions_;
    mutable std::vector<std::array<Sums, InputCount>> made_;
    mutable std::size_t budget_ = 20'000'000;      // for all complements of the design: a second or so
    std::vector<std::array<Readers, 2>> readers_;  // [signal][.IO]
};

}  // namespace fit
