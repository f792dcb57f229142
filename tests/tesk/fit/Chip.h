#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

// A programmed device, read from a JEDEC text and evaluated by its data sheet: the tests' own knowledge of
// the devices, which shares nothing with the fitter or the device library.
namespace test {

struct Jedec {
    bool Good = false;  // frame, fields and both checksums are right
    int Pins = 0;
    bool Secure = false;
    std::vector<bool> Fuses;
};
Jedec ReadJedec(const std::string& text);

class Chip {
  public:
    // `kind`: the device family, "16V8" "20V8" "22V10" "20RA10" "16L8" "16R4" … "20R8" "20X4" … "20X10".
    Chip(const std::string& kind, std::vector<bool> fuses);

    struct Output {
        int Pin = 0;
        bool Registered = false;
        bool Drives = false;  // it is an output at all
    };
    std::vector<Output> Outputs() const;

    // What an output's logic gives for pin levels (a registered output: its present level): the level at the
    // pin, for a register the one after the next clock.
    bool Next(int pin, const std::vector<bool>& levels) const;
    // Whether the output is enabled; of registers of the 16V8, 20V8 and the R types by the enable pin.
    bool Enabled(int pin, const std::vector<bool>& levels) const;
    // The reset and preset terms of the 22V10, and the level that they give to a registered pin.
    bool Reset(const std::vector<bool>& levels) const { return Row(0, levels); }
    bool Preset(const std::vector<bool>& levels) const { return Row(131, levels); }
    // Of a 20RA10: the clock of a pin's register, and whether its rows force the pin to a level.
    bool Clock(int pin, const std::vector<bool>& levels) const { return Row(BlockOf(pin) + 1, levels); }
    bool Forces(int pin, bool level, const std::vector<bool>& levels) const {
        return Row(BlockOf(pin) + (level ? 2 : 3), levels);
    }
    bool ResetLevel(int pin) const { return fuses_[5808 + 2 * (23 - pin)]; }

    std::string Mode;  // of the 16V8 and 20V8: "simple", "complex", "registered"

  private:
    struct Macrocell {
        int Pin = 0;
        std::size_t FirstRow = 0;
        std::size_t Rows = 0;
        int EnableRow = -1;  // -1: always, -2: by the enable pin, -3: never
        bool Inverts = false;
        bool Registered = false;
        std::size_t XorRows = 0;  // behind the others: a second sum
    };

    void DecodeGal8();
    void Decode22V10();
    void Decode20Ra10();
    void DecodePal();
    static std::size_t BlockOf(int pin) { return 8 * static_cast<std::size_t>(23 - pin); }
    bool IsBlank(std::size_t row, bool value) const;  // all its fuses have the value
    void DecodeXor();
    bool SumOf(std::size_t first, std::size_t rows, const std::vector<bool>& levels) const;
    bool Row(std::size_t row, const std::vector<bool>& levels) const;
    bool ColumnLevel(std::size_t pair, const std::vector<bool>& levels) const;
    const Macrocell& At(int pin) const;

    std::string kind_;
    std::vector<bool> fuses_;
    std::vector<int> columns_;  // the pin of each pair of columns
    std::vector<Macrocell> cells_;
};

}  // namespace test
