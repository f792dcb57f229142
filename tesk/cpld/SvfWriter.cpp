#include <algorithm>
#include <map>

#include "base/RunTimeError.h"
#include "base/Text.h"
#include "cpld/FuseMap.h"
#include "cpld/Svf.h"
#include "cpld/SvfCodes.h"

namespace cpld {
namespace {

constexpr std::string_view lineEnd = "\r\n";

using Bits = std::vector<bool>;  // the first one is shifted first

Bits NumberBits(std::size_t value, std::size_t count) {
    Bits bits(count);
    for (std::size_t i = 0; i < count; ++i) bits[i] = (value >> i & 1) != 0;
    return bits;
}

std::string Hex(const Bits& bits) {
    std::string digits;
    for (std::size_t at = 0; at < bits.size(); at += 4) {
        unsigned digit = 0;
        for (std::size_t i = at; i < std::min(at + 4, bits.size()); ++i)
            digit |= static_cast<unsigned>(bits[i]) << (i - at);
        digits += "0123456789ABCDEF"[digit];
    }
    std::reverse(digits.begin(), digits.end());
    return digits;
}

struct Word {
    Bits Value;  // bits that hold no fuse are 1
    Bits Known;  // those that hold one
};

class Writer {
  public:
    Writer(const Device& device, const std::vector<bool>& fuses) {
        const auto places = device.ProgramPlaces();
        for (std::size_t fuse = 0; fuse < places.size(); ++fuse) {
            const auto [address, bit] = places[fuse];
            if (address == WordPlace::Nowhere) continue;
            Word& word = words_[address];
            word.Value.resize(device.WordWidth(address), true);
            word.Known.resize(device.WordWidth(address), false);
            word.Value[bit] = fuses[fuse];
            word.Known[bit] = true;
        }
        for (const auto& [address, word] : words_)
            if (address != armingAddress && address != protectionAddress) order_.push_back(address);
        for (const std::size_t last : {armingAddress, protectionAddress})
            if (words_.contains(last)) order_.push_back(last);
    }

    std::string Write(const Device& device, const std::string& title, bool isProtected) {
        for (const auto line : base::LineViews(title)) Line("! " + std::string(line));
        for (const char* line : {"TRST OFF", "ENDIR IDLE", "ENDDR IDLE", "HIR 0", "TIR 0", "HDR 0", "TDR 0",
                                 "STATE RESET", "STATE IDLE"})
            Line(std::string(line) + ";");
        Comment("identification");
        Instruct(instIdCode);
        Line("SDR 32 TDI (00000000) TDO (" + Hex(NumberBits(device.IdCode, identificationBits)) +
             ") MASK (FFFFFFFF);");
        Configure(configEnable);
        Comment("erase");
        Instruct(instLatchErase);
        Instruct(instProgramErase);
        Line("RUNTEST IDLE 210E-3 SEC;");
        ProgramAndVerify(isProtected);
        Comment("restart");
        Configure(configDisable);
        Line("STATE RESET;");
        return std::move(text_);
    }

  private:
    void Line(const std::string& line) { (text_ += line) += lineEnd; }
    void Comment(const std::string& text) { Line("! " + text); }
    void Instruct(unsigned code) { Line("SIR 10 TDI (" + Hex(NumberBits(code, instructionBits)) + ");"); }
    void Shift(const Bits& bits) { Line("SDR " + std::to_string(bits.size()) + " TDI (" + Hex(bits) + ");"); }
    void Configure(unsigned code) {
        Instruct(instConfig);
        Shift(NumberBits(code, configBits));
    }
    void Address(std::size_t address) {
        Instruct(instAddress);
        Shift(NumberBits(address, addressBits));
    }
    static unsigned DataCode(std::size_t address) { return instData + static_cast<unsigned>(address >> 8); }

    // A device that is protected may not be read any more: its last word comes behind the verification.
    void ProgramAndVerify(bool isProtected) {
        const auto last =
            isProtected ? std::find(order_.begin(), order_.end(), protectionAddress) : order_.end();
        Comment("program");
        std::for_each(order_.begin(), last, [&](std::size_t address) { Program(address); });
        Comment("verify");
        std::for_each(order_.begin(), last, [&](std::size_t address) { Verify(address); });
        if (last == order_.end()) return;
        Comment("protect");
        Program(*last);
    }

    void Program(std::size_t address) {
        Address(address);
        Instruct(DataCode(address));
        Shift(words_.at(address).Value);
        Instruct(instProgramErase);
        Line("RUNTEST IDLE 30E-3 SEC;");
    }

    void Verify(std::size_t address) {
        const Word& word = words_.at(address);
        Address(address);
        Instruct(instRead);
        Line("RUNTEST IDLE 20E-3 SEC;");
        Instruct(DataCode(address));
        const std::size_t width = word.Value.size();
        Line("SDR " + std::to_string(width) + " TDI (" + Hex(Bits(width, true)) + ") TDO (" +
             Hex(word.Value) + ") MASK (" + Hex(word.Known) + ");");
    }

    std::map<std::size_t, Word> words_;  // by address
    std::vector<std::size_t> order_;
    std::string text_;
};

}  // namespace

std::string WriteSvf(const Device& device, const std::vector<bool>& fuses, const SvfOptions& options) {
    const Settings settings = ReadSettings(device, fuses);
    if (settings.Jtag == JtagPins::User && !options.WithoutJtag)
        throw base::RunTimeError(base::errInvalidCall,
                                 "the map turns the JTAG pins into ordinary ones: the device could not be "
                                 "programmed in its circuit again");
    return Writer(device, fuses).Write(device, options.Title, settings.ReadProtection == Switched::On);
}

}  // namespace cpld
