#include "dis/Choose.h"

#include <algorithm>
#include <set>

#include "base/Text.h"
#include "base/modLib.h"
#include "convert/PldFile.h"

namespace dis {
namespace {

using Devices = std::vector<const fit::Device*>;

bool SameUse(const fit::CellUse& a, const fit::CellUse& b) {
    return a.Kind == b.Kind && a.FirstRow == b.FirstRow && a.Terms == b.Terms && a.Enable == b.Enable &&
           a.Feedback == b.Feedback && a.XorTerms == b.XorTerms && a.OrFuse == b.OrFuse;
}

bool SameCell(const fit::Cell& a, const fit::Cell& b) {
    return a.Pin == b.Pin && a.Column == b.Column && a.Polarity == b.Polarity &&
           std::equal(a.Uses.begin(), a.Uses.end(), b.Uses.begin(), b.Uses.end(), SameUse);
}

bool SameMode(const fit::Mode& a, const fit::Mode& b) {
    return a.Name == b.Name && a.Columns == b.Columns && a.Inputs == b.Inputs && a.ClockPin == b.ClockPin &&
           a.EnablePin == b.EnablePin &&
           std::equal(a.Cells.begin(), a.Cells.end(), b.Cells.begin(), b.Cells.end(), SameCell);
}

// Whether all modes of `b` are modes of `a`: another name of it, or one that forces a mode.
bool IsPartOf(const fit::Device& b, const fit::Device& a) {
    return a.Fuses == b.Fuses && a.Pins == b.Pins &&
           std::all_of(b.Modes.begin(), b.Modes.end(), [&](const fit::Mode& mode) {
               return std::any_of(a.Modes.begin(), a.Modes.end(),
                                  [&](const fit::Mode& other) { return SameMode(mode, other); });
           });
}

std::size_t CountOf(const proof::JedecFile& file) {
    return file.FuseCount != 0 ? file.FuseCount : file.Fuses.size();
}

bool HasAsMany(const fit::Device& device, const proof::JedecFile& file) {
    const bool pins = file.Pins == 0 || static_cast<int>(file.Pins) == device.Pins;
    return !device.IsVirtual() && pins && device.Fuses == CountOf(file);
}

// The same for a map without signature, and for one that ends with its last 1.
bool TakesShorter(const fit::Device& device, const proof::JedecFile& file) {
    const bool pins = file.Pins == 0 || static_cast<int>(file.Pins) == device.Pins;
    const bool isUnsigned = device.Signature.Count > 0 && CountOf(file) == device.Signature.First;
    return !device.IsVirtual() && pins &&
           (isUnsigned || (file.FuseCount == 0 && CountOf(file) <= device.Fuses));
}

template <typename Test>
Devices Those(const fit::Library& library, Test test) {
    Devices found;
    for (const auto& device : library.Devices)
        if (test(device)) found.push_back(&device);
    return found;
}

std::string NamesOf(const Devices& devices) {
    std::string text;
    for (const auto* device : devices) (text += text.empty() ? "" : ", ") += device->Mnemonic;
    return text;
}

// The candidates that words of the text name, be it as the makers do.
Devices Named(const Devices& candidates, std::string_view text) {
    std::string plain(text);
    std::replace_if(
        plain.begin(), plain.end(), [](char c) { return c != '_' && c != '-' && !base::IsWordChar(c); }, ' ');
    std::set<std::string> words;
    for (const auto word : base::Words(plain)) {
        words.insert(base::Upper(word));
        words.insert(convert::DeviceOf(word));
    }
    Devices named;
    for (const auto* device : candidates)
        if (words.contains(base::Upper(device->Mnemonic))) named.push_back(device);
    return named;
}

// What the file says of its device, the surest first.
std::vector<std::string> WordsOnDevice(const proof::JedecFile& file) {
    std::string fitted, header, all = file.Specification;
    for (const auto& note : file.Notes) all += "\n" + note;
    for (const auto line : base::LineViews(all)) {
        const auto words = base::Words(line);
        if (words.empty()) continue;
        if (base::EqualNoCase(words[0], "Fitted")) (fitted += line.substr(0, line.find(','))) += "\n";
        if (base::Upper(words[0]).starts_with("DEVICE")) (header += line) += "\n";
    }
    return {fitted, header, all};
}

Devices WithoutAliases(const Devices& devices) {
    Devices kept;
    for (const auto* device : devices) {
        const auto isKnown = [&](const fit::Device* other) { return IsPartOf(*device, *other); };
        if (std::none_of(kept.begin(), kept.end(), isKnown)) kept.push_back(device);
    }
    return kept;
}

void Tell(std::vector<Message>& messages, MessageCode code, const std::string& detail) {
    messages.push_back(model::MakeMessage(code.Entry(), {}, detail));
}

const fit::Device* Asked(const proof::JedecFile& file, const fit::Library& library,
                         const std::string& mnemonic, const Devices& candidates,
                         std::vector<Message>& messages) {
    const auto* device = library.Find(mnemonic);
    if (device != nullptr && (HasAsMany(*device, file) || TakesShorter(*device, file))) return device;
    if (device == nullptr || device->IsVirtual()) {
        Tell(messages, "7600tc", base::DisplayUtf8(mnemonic.substr(0, 40)));
        return nullptr;
    }
    const auto pins = file.Pins == 0 ? "" : " and " + std::to_string(file.Pins) + " pins";
    const auto others = candidates.empty() ? "" : ", as " + NamesOf(WithoutAliases(candidates));
    Tell(messages, "7601tc",
         device->Mnemonic + " has " + std::to_string(device->Fuses) + " fuses and " +
             std::to_string(device->Pins) + " pins, the file " + std::to_string(CountOf(file)) + pins +
             others);
    return nullptr;
}

}  // namespace

const fit::Device* ChooseDevice(const proof::JedecFile& file, const fit::Library& library,
                                const std::string& mnemonic, std::vector<Message>& messages) {
    auto candidates = Those(library, [&](const fit::Device& d) { return HasAsMany(d, file); });
    if (candidates.empty())
        candidates = Those(library, [&](const fit::Device& d) { return TakesShorter(d, file); });
    if (!mnemonic.empty()) return Asked(file, library, mnemonic, candidates, messages);
    for (const auto& words : WordsOnDevice(file)) {
        const auto named = Named(candidates, words);
        if (named.size() == 1) return named.front();
        if (!named.empty()) candidates = named;
    }
    const auto count = std::to_string(CountOf(file));
    const auto different = WithoutAliases(candidates);
    if (different.size() == 1) return different.front();
    if (different.empty()) {
        Tell(messages, "7601tc", count);
    } else {
        Tell(messages, "7602tc", count + ": " + NamesOf(different));
    }
    return nullptr;
}

const fit::Device* ForcedMode(const fit::Library& library, const fit::Device& device, const fit::Mode& mode) {
    for (const auto& other : library.Devices) {
        const bool same = other.Fuses == device.Fuses && other.Pins == device.Pins;
        if (same && other.Modes.size() == 1 && SameMode(other.Modes.front(), mode)) return &other;
    }
    return nullptr;
}

}  // namespace dis
