#include "zrx/Options.h"

#include <algorithm>
#include <cctype>

#include "base/Text.h"
#include "model/Number.h"

namespace zrx {

namespace {

// The number of so many digits behind the first such letter that has one; `missing` if none has.
int Number(std::string_view letters, char letter, std::size_t digits, int missing) {
    for (std::size_t i = letters.find(letter); i != letters.npos; i = letters.find(letter, i + 1)) {
        const std::string_view text = letters.substr(i + 1, digits);
        const int value = model::WholeNumber<int>(text).value_or(-1);
        if (text.size() == digits && value >= 0) return value;
    }
    return missing;
}

// "t00:00:55"
int TimeOf(std::string_view letters, int missing) {
    for (std::size_t i = letters.find('t'); i != letters.npos; i = letters.find('t', i + 1)) {
        const std::string_view text = letters.substr(i + 1, 8);
        const bool isTime = text.size() == 8 && text[2] == ':' && text[5] == ':';
        if (!isTime) continue;
        int total = 0;
        for (const std::size_t part : {0u, 3u, 6u}) {
            const char pair[] = {'t', text[part], text[part + 1]};
            const int value = Number({pair, 3}, 't', 2, -1);
            if (value < 0) return missing;
            total = total * 60 + value;
        }
        return std::max(total, 1);
    }
    return missing;
}

}  // namespace

Options Options::Parse(std::string_view letters) {
    const auto has = [&](std::string_view what) { return base::Contains(letters, what); };
    Options options;
    options.FirstFit = !has("a1") && has("a2");
    options.History = !has("a1") && !has("a2") && has("h");
    options.Split = has("s");
    options.Report = has("r");
    options.List = has("d");
    options.Pld = has("o");
    const auto number = [&](char letter, std::size_t missing) {
        return std::max<std::size_t>(
            1, static_cast<std::size_t>(Number(letters, letter, 3, static_cast<int>(missing))));
    };
    options.MostChips = number('m', options.MostChips);
    options.MostSolutions = number('l', options.MostSolutions);
    options.Utilization = std::clamp(Number(letters, 'u', 3, options.Utilization), 1, 100);
    options.Seconds = TimeOf(letters, options.Seconds);
    const std::array<int, 3> rank{Number(letters, 'N', 1, 1), Number(letters, 'c', 1, 2),
                                  Number(letters, 'p', 1, 3)};
    std::stable_sort(options.Order.begin(), options.Order.end(), [&](Figure a, Figure b) {
        return rank[static_cast<std::size_t>(a)] < rank[static_cast<std::size_t>(b)];
    });
    return options;
}

}  // namespace zrx
