#include <algorithm>
#include <array>
#include <map>
#include <optional>

#include "base/RunTimeError.h"
#include "cpld/Svf.h"
#include "cpld/SvfCodes.h"
#include "cpld/SvfStatements.h"

namespace cpld {
namespace {

constexpr std::size_t mostBytes = 32u << 20;

std::size_t NumberOf(const std::vector<bool>& bits) {
    std::size_t value = 0;
    for (std::size_t i = 0; i < bits.size(); ++i) value |= static_cast<std::size_t>(bits[i]) << i;
    return value;
}

// What the device's port would do, as far as its fuses are concerned.
class Port {
  public:
    explicit Port(const std::vector<Device>& devices) : devices_(devices) {}

    void Take(const SvfStatement& statement) {
        line_ = statement.Line;
        const std::string& word = statement.Words[0];
        if (word == "SIR") return Instruct(ShiftOf(statement, instruction_));
        if (word == "SDR") return Shift(ShiftOf(statement, data_));
        if (word == "HIR" || word == "HDR" || word == "TIR" || word == "TDR") {
            if (!ShiftOf(statement, {}).Tdi.empty()) Refuse("it is for a chain of several devices");
            return;
        }
        if (word == "STATE" && statement.Words.back() == "RESET") enabled_ = false;
        constexpr std::array quiet{"STATE", "ENDIR", "ENDDR", "RUNTEST", "FREQUENCY", "TRST"};
        if (std::find(quiet.begin(), quiet.end(), word) == quiet.end())
            Refuse("\"" + word + "\" is not known");
    }

    SvfMap Finish() const {
        if (device_ == nullptr)
            throw base::RunTimeError(base::errTypeMismatch, "it programs no device that is known");
        if (enabled_)
            throw base::RunTimeError(base::errTypeMismatch,
                                     "it does not end the programming; the file is cut");
        SvfMap map{device_, std::vector<bool>(device_->Fuses)};
        for (std::size_t i = 0; i < device_->Reserved.size(); ++i)
            map.Fuses[device_->Reserved[i]] = device_->ReservedStates[i];
        const auto places = device_->ProgramPlaces();
        for (std::size_t fuse = 0; fuse < places.size(); ++fuse) {
            if (places[fuse].Address == WordPlace::Nowhere) continue;
            const auto word = words_.find(places[fuse].Address);
            if (word == words_.end())
                throw base::RunTimeError(base::errTypeMismatch, "the word at address " +
                                                                    std::to_string(places[fuse].Address) +
                                                                    " is not programmed; the file is cut");
            map.Fuses[fuse] = word->second[places[fuse].Bit];
        }
        return map;
    }

  private:
    [[noreturn]] void Refuse(const std::string& why) const { SvfFault(line_, why); }

    void Instruct(SvfShift shift) {
        if (shift.Tdi.size() != instructionBits) Refuse("an instruction of the device has 10 bits");
        code_ = static_cast<unsigned>(NumberOf(shift.Tdi));
        instruction_ = std::move(shift);
        if (code_ == instProgramErase) return Execute();
        latched_.reset();
        erases_ = code_ == instLatchErase;
        const bool isData = code_ >= instData && code_ < instData + 8;
        constexpr std::array others{instIdCode, instConfig, instRead, instAddress, instLatchErase};
        if (!isData && std::find(others.begin(), others.end(), code_) == others.end())
            Refuse("an instruction that the device does not have");
    }

    void Execute() {
        if (!enabled_ || (!erases_ && !latched_))
            Refuse("it programs without a word, or before it enables that");
        if (erases_)
            words_.clear();
        else
            words_[address_] = *latched_;
        erases_ = false;
        latched_.reset();
    }

    void Shift(SvfShift shift) {
        data_ = shift;
        if (code_ == instIdCode) return Identify(shift);
        if (code_ == instConfig) {
            enabled_ = Sized(shift, configBits) == configEnable;
        } else if (code_ == instAddress) {
            address_ = Sized(shift, addressBits);
        } else if (code_ >= instData && code_ < instData + 8) {
            if (device_ == nullptr) Refuse("it programs before it checks the device's identification");
            const bool fits =
                code_ - instData == address_ >> 8 && shift.Tdi.size() == device_->WordWidth(address_);
            if (!fits) Refuse("a word that the device does not have");
            latched_ = std::move(shift.Tdi);
        }
    }

    std::size_t Sized(const SvfShift& shift, std::size_t bits) const {
        if (shift.Tdi.size() != bits)
            Refuse("a shift of " + std::to_string(bits) + " bits has another length");
        return NumberOf(shift.Tdi);
    }

    void Identify(const SvfShift& shift) {
        Sized(shift, identificationBits);
        if (!shift.HasTdo) return;
        const std::size_t code = NumberOf(shift.Tdo), mask = NumberOf(shift.Mask);
        const Device* found = nullptr;
        for (const Device& device : devices_) {
            if (((device.IdCode ^ code) & mask) != 0) continue;
            if (found != nullptr) Refuse("the identification could be that of several devices");
            found = &device;
        }
        if (found == nullptr) Refuse("the identification is that of another device");
        if (device_ != nullptr && device_ != found) Refuse("it programs two devices");
        device_ = found;
    }

    const std::vector<Device>& devices_;
    const Device* device_ = nullptr;
    std::size_t line_ = 0;
    SvfShift instruction_, data_;
    unsigned code_ = 0;
    bool enabled_ = false, erases_ = false;
    std::size_t address_ = 0;
    std::optional<std::vector<bool>> latched_;
    std::map<std::size_t, std::vector<bool>> words_;
};

}  // namespace

SvfMap ReadSvf(std::string_view text, const std::vector<Device>& devices) {
    if (text.size() > mostBytes) throw base::RunTimeError(base::errTypeMismatch, "the file is too large");
    SvfStatements statements(text);
    Port port(devices);
    while (const auto statement = statements.Next()) port.Take(*statement);
    return port.Finish();
}

}  // namespace cpld
