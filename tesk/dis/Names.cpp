#include "dis/Names.h"

#include <algorithm>
#include <set>

#include "base/Text.h"
#include "base/modLib.h"
#include "convert/PldFile.h"
#include "dis/Trial.h"

namespace dis {
namespace {

bool IsNumber(std::string_view word) {
    return !word.empty() && word.size() < 5 && std::all_of(word.begin(), word.end(), base::IsDigitChar);
}

class PinLines {
  public:
    explicit PinLines(std::vector<Message>& messages) : messages_(messages) {}

    void Take(std::string_view line, int number) {
        std::string plain(line.substr(0, line.find_first_of(";#")));
        std::replace_if(
            plain.begin(), plain.end(), [](char c) { return c == '=' || c == ',' || base::IsLineEnd(c); },
            ' ');
        auto words = base::Words(plain);
        if (words.empty()) return;
        if (words.size() == 2 && !IsNumber(words[0])) std::swap(words[0], words[1]);
        PinName name;
        if (words.size() == 2) name = NameOf(words[1]);
        if (words.size() != 2 || !IsNumber(words[0]) || name.Name.empty()) return Fault(number, plain);
        const int pin = std::stoi(std::string(words[0]));
        if (pin == 0 || pin > convert::MaxPin) return Fault(number, plain);
        if (!names_.insert(name.Name).second || !Pins.emplace(pin, name).second)
            Fault(number, plain + " stands twice");
    }

    PinNames Pins;

  private:
    static PinName NameOf(std::string_view word) {
        const bool low = word[0] == '!' || word[0] == '/';
        return {std::string(word.substr(low ? 1 : 0)), low};
    }

    void Fault(int line, std::string_view what) {
        const std::string shown = base::DisplayUtf8(base::TrimView(what).substr(0, 60));
        messages_.push_back(model::MakeMessage(MessageCode("7603tc").Entry(), {0, line, 0}, shown));
    }

    std::vector<Message>& messages_;
    std::set<std::string> names_;
};

}  // namespace

PinNames ReadPinFile(std::string_view text, std::vector<Message>& messages) {
    PinLines lines(messages);
    int number = 0;
    for (const auto line : base::LineViews(text)) lines.Take(line, ++number);
    return lines.Pins;
}

PinNames ReadDesignNames(std::string_view text, std::string_view library, std::vector<Message>& messages) {
    Trial declared(text, library);
    Trial fitted(text, library);
    PinNames names;
    if (!declared.Analyse()) {
        messages.push_back(model::MakeMessage(MessageCode("7603tc").Entry(), {}, declared.FirstError()));
        return names;
    }
    auto& trial = fitted.Compile() != nullptr ? fitted : declared;
    for (const auto& variable : trial.Of().Variables)
        if (variable.Number > 0) names[variable.Number] = {variable.Name, variable.ActiveLow};
    return names;
}

}  // namespace dis
