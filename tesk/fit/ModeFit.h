#pragma once

#include <optional>
#include <string>
#include <vector>

#include "fit/Needs.h"

namespace fit {

// A macrocell's use for a signal.
struct Choice {
    const CellUse* Use = nullptr;
    const Sum* Rows = nullptr;
    const Sum* XorRows = nullptr;  // the second sum of an exclusive or; null: none is needed
    bool Low = false;              // the pin is low while the signal is asserted
    bool Complemented = false;
    Exclusive Kind = Exclusive::None;
    bool LeftComplemented = false;

    std::size_t Size() const { return Rows->size() + (XorRows == nullptr ? 0 : XorRows->size()); }
    bool Fits() const {
        return Rows->size() <= Use->Terms && (XorRows == nullptr || XorRows->size() <= Use->XorTerms);
    }
};

// One attempt to fit a design into one mode of a device: places and choices, or messages.
class ModeFit {
  public:
    ModeFit(const Device& device, const Mode& mode, const Needs& needs, const Options& options);

    void Run();

    std::vector<Message> Messages;
    // How far the design is from fitting: 0 if it fits.
    int Distance() const;

    std::vector<int> Pins;                       // of each signal, 0: none
    std::vector<std::optional<Choice>> Choices;  // of each driven signal that has a place
    std::optional<std::size_t> SignalAt(int pin) const;
    // The terms that the outputs share, each once.
    Sum SharedTerms() const;
    const Options& How() const { return options_; }

    // The functions that all registers share: those of this signal and input, if any.
    struct Shared {
        std::optional<std::size_t> Signal;
        Input From = Input::Ar;
    };
    Shared Reset;
    Shared Preset;

    // The literal that is true while the signal at a pin has the level.
    static Literal LevelLiteral(std::size_t signal, bool low, bool level) {
        return {signal, level == low, false};
    }
    bool LowAt(std::size_t signal) const;  // the pin is low while the signal is asserted

  private:
    struct Refusal {
        MessageCode Code = "7200tc";
        std::string Detail;
    };

    void Add(std::size_t signal, const Refusal& refusal);
    void CheckFeatures(std::size_t signal);
    void FindClock();
    void FindEnable();
    void CheckOwnRows(std::size_t signal);
    void FindShared(Shared& shared, Input positive, Input negative, int row);
    void ShareTerms();
    void TakeFewestTerms();
    void PlaceNumbered();
    void PlaceOne(std::size_t signal, int pin);
    void PlaceOthers();
    bool Augment(std::size_t signal, std::vector<bool>& seen);
    std::vector<int> Candidates(std::size_t signal) const;
    void ExplainNoPin(std::size_t signal);

    std::optional<Refusal> Refuse(std::size_t signal, int pin) const;
    std::optional<Refusal> RefuseInput(std::size_t signal, int pin) const;
    std::optional<Choice> Choose(std::size_t signal, int pin, Refusal& why) const;
    std::optional<Choice> ChooseUse(std::size_t signal, const Cell& cell, const CellUse& use,
                                    Refusal& why) const;
    std::optional<Refusal> CheckEnable(std::size_t signal, const CellUse& use) const;
    std::optional<Refusal> CheckEnableRow(std::size_t signal, const CellUse& use) const;
    std::optional<Refusal> CheckRows(std::size_t signal, const Cell& cell, const CellUse& use) const;
    std::optional<Refusal> CheckFeedback(std::size_t signal, const Cell& cell, const CellUse& use) const;
    bool ChooseSum(std::size_t signal, const Cell& cell, Choice& choice, Refusal& why) const;
    std::vector<Choice> Senses(std::size_t signal, const Cell& cell, const Choice& base) const;
    void AddXorChoices(std::size_t signal, const Choice& sense, std::vector<Choice>& choices) const;
    std::vector<Choice> SumChoices(std::size_t signal, const Cell& cell, const Choice& base) const;
    std::optional<std::size_t> SharedWith(std::size_t signal, const Cell& cell, const CellUse& use) const;
    bool TakeShared(const Choice& shared, Choice& choice) const;
    Refusal TooManyTerms(std::size_t signal, int pin, const std::vector<Choice>& choices) const;
    std::optional<bool> RequiredSense(std::size_t signal) const;
    bool ReadsArray(std::size_t signal, bool pin) const;
    bool IsEnableOnly(std::size_t signal) const;
    std::string Place(int pin) const;

    const Device& device_;
    const Mode& mode_;
    const Needs& needs_;
    const Options& options_;
    int places_;  // pins, and the numbers of buried macrocells
    std::optional<std::size_t> clock_;
    std::optional<std::size_t> enable_;
    Needs::Common common_;
    std::vector<std::size_t> owners_;  // of each pin: signal + 1, 0: free
};

}  // namespace fit
