#include "devref/DeviceSource.h"

#include <algorithm>
#include <map>
#include <sstream>
#include <stdexcept>

#include "base/Number.h"
#include "base/RunTimeError.h"
#include "base/Text.h"

namespace devref {
namespace {

using Words = std::vector<std::string>;

Words Split(const std::string& text, char at) {
    Words parts;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, at);) parts.push_back(base::Trim(part));
    return parts;
}

Words SplitWords(const std::string& text) {
    std::istringstream stream(text);
    Words words;
    for (std::string word; stream >> word;) words.push_back(word);
    return words;
}

// The first word and what stands behind it.
std::pair<std::string, std::string> Head(const std::string& text) {
    const auto blank = std::min(text.find(' '), text.size());
    return {text.substr(0, blank), base::Trim(text.substr(blank))};
}

int ToNumber(const std::string& text) {
    try {
        return base::TextToInt16(text);
    } catch (const base::RunTimeError&) {
        throw std::runtime_error(text + " is no number");
    }
}

class Reader {
  public:
    Catalogue Read(std::string_view text) {
        int number = 0;
        for (const std::string& line : base::Lines(text)) {
            ++number;
            try {
                TakeLine(base::Trim(line));
            } catch (const std::runtime_error& error) {
                throw std::runtime_error("line " + std::to_string(number) + ": " + error.what());
            }
        }
        CheckMnemonic();
        CheckWhole();
        return std::move(catalogue_);
    }

  private:
    using Keys = std::map<std::string, int>;

    void TakeLine(const std::string& line) {
        if (line.empty() || line.front() == '#') return;
        const auto [keyword, rest] = Head(line);
        const auto found = keywords_.find(keyword);
        if (found == keywords_.end()) throw std::runtime_error("what is " + keyword + "?");
        if (rest.empty()) throw std::runtime_error(keyword + " lacks its text");
        (this->*found->second)(rest);
    }

    void TakePackage(const std::string& text) { AddNamed(packages_, catalogue_.Packages, text, text); }
    void TakeManufacturer(const std::string& text) {
        const auto [word, name] = Head(text);
        AddNamed(manufacturers_, catalogue_.Manufacturers, word, name);
    }
    void TakeLibrary(const std::string& text) {
        const auto [word, name] = Head(text);
        AddNamed(libraries_, catalogue_.Libraries, word, name);
    }

    static void AddNamed(Keys& keys, Words& names, const std::string& word, const std::string& name) {
        if (name.empty()) throw std::runtime_error(word + " lacks its name");
        names.push_back(name);
        AddKey(keys, word, names.size());
    }
    static void AddKey(Keys& keys, const std::string& word, std::size_t key) {
        if (!keys.emplace(word, static_cast<int>(key)).second) throw std::runtime_error(word + " again");
    }

    static int Key(const Keys& keys, const std::string& word) {
        const auto found = keys.find(word);
        if (found == keys.end()) throw std::runtime_error(word + " is not declared");
        return found->second;
    }

    void TakeMnemonic(const std::string& text) {
        CheckMnemonic();
        const Words words = SplitWords(text);
        if (words.size() < 3) throw std::runtime_error("a mnemonic has a name, pins and libraries");
        Mnemonic mnemonic;
        mnemonic.Name = words[0];
        if (words[1] != "-") mnemonic.Pins = ToNumber(words[1]);
        for (std::size_t i = 2; i < words.size(); ++i) {
            mnemonic.Libraries.push_back(Key(libraries_, words[i]));
        }
        catalogue_.Mnemonics.push_back(std::move(mnemonic));
        AddKey(mnemonics_, words[0], catalogue_.Mnemonics.size());
    }

    Mnemonic& Current() {
        if (catalogue_.Mnemonics.empty()) throw std::runtime_error("no mnemonic before it");
        return catalogue_.Mnemonics.back();
    }

    void TakeOptions(const std::string& text) { Current().SpecialOptions = text; }
    void TakeRelated(const std::string& text) { Current().Related = SplitWords(text); }
    void TakeNote(const std::string& text) {
        std::string& notes = Current().Notes;
        notes += (notes.empty() ? "" : "\r\n") + text;
    }

    void TakePins(const std::string& text) {
        for (const std::string& part : Split(text, ',')) {
            const auto [numbers, function] = Head(part);
            if (function.empty()) throw std::runtime_error(part + ": a pin has a number and a function");
            const Words bounds = Split(numbers, '-');
            const int last = ToNumber(bounds.back());
            for (int pin = ToNumber(bounds.front()); pin <= last; ++pin) {
                Current().PinList.push_back({pin, function});
            }
        }
    }

    void TakeDevice(const std::string& text) {
        const Words parts = Split(text, '|');
        if (parts.size() < 3 || parts.size() > 4 || parts[2].empty()) {
            throw std::runtime_error("a device has a manufacturer, packages and a name");
        }
        Current();
        const int manufacturer = Key(manufacturers_, parts[0]);
        const Words alternates = parts.size() == 4 ? SplitWords(parts[3]) : Words();
        for (const std::string& package : SplitWords(parts[1])) {
            catalogue_.Devices.push_back({parts[2], manufacturer, Key(packages_, package),
                                          static_cast<int>(catalogue_.Mnemonics.size()), alternates});
        }
    }

    // Every pin once and in order, or none at all.
    void CheckMnemonic() const {
        if (catalogue_.Mnemonics.empty() || catalogue_.Mnemonics.back().PinList.empty()) return;
        const Mnemonic& mnemonic = catalogue_.Mnemonics.back();
        int next = 1;
        for (const Pin& pin : mnemonic.PinList) {
            if (pin.Number != next++) {
                throw std::runtime_error("pin " + std::to_string(pin.Number) + " of " + mnemonic.Name +
                                         " is out of order");
            }
        }
        if (next - 1 != mnemonic.Pins)
            throw std::runtime_error(mnemonic.Name + " lacks pins or has too many");
    }

    void CheckWhole() const {
        for (const Mnemonic& mnemonic : catalogue_.Mnemonics) {
            for (const std::string& related : mnemonic.Related) Key(mnemonics_, related);
        }
        // The query of a manufacturer's devices joins the mnemonics on the manufacturer's key.
        if (catalogue_.Manufacturers.size() > catalogue_.Mnemonics.size()) {
            throw std::runtime_error("there are more manufacturers than mnemonics");
        }
    }

    const std::map<std::string, void (Reader::*)(const std::string&)> keywords_ = {
        {"PACKAGE", &Reader::TakePackage}, {"MANUFACTURER", &Reader::TakeManufacturer},
        {"LIBRARY", &Reader::TakeLibrary}, {"MNEMONIC", &Reader::TakeMnemonic},
        {"OPTIONS", &Reader::TakeOptions}, {"RELATED", &Reader::TakeRelated},
        {"PINS", &Reader::TakePins},       {"NOTE", &Reader::TakeNote},
        {"DEVICE", &Reader::TakeDevice},
    };
    Catalogue catalogue_;
    Keys packages_;
    Keys manufacturers_;
    Keys libraries_;
    Keys mnemonics_;
};

}  // namespace

Catalogue ReadCatalogue(std::string_view text) { return Reader().Read(text); }

}  // namespace devref
