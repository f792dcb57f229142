#include <cstdio>
#include <map>
#include <stdexcept>

#include "base/AtomicFile.h"
#include "base/Number.h"
#include "base/Text.h"
#include "zrx/Database.h"

// zrxdb FIGURES LIBRARY TARGET: makes zrxlib.db of the table of figures and the compiler's device library.

namespace {

std::string_view Word(const std::vector<std::string_view>& words, std::size_t i) {
    return i < words.size() ? words[i] : std::string_view();
}

// The records of the library from DEVICE to the next one. A device LIKE another gets its own lines.
std::map<std::string, std::string> Records(const std::string& library) {
    std::map<std::string, std::string> records;
    std::string* current = nullptr;
    for (const std::string_view line : base::LineViews(library)) {
        const auto words = base::Words(line);
        if (words.empty() || words[0].starts_with(';') || words[0] == "END") continue;
        if (words[0] == "DEVICE") {
            const bool isLike = Word(words, 2) == "LIKE";
            // A choice of modes has no record of its own.
            current = isLike ? nullptr : &records[std::string(Word(words, 1))];
            if (isLike && words.size() == 4) {
                const std::string& other = records.at(std::string(words[3]));
                records[std::string(words[1])] =
                    "DEVICE " + std::string(words[1]) + other.substr(other.find(' ', other.find(' ') + 1));
            }
        }
        if (current != nullptr) current->append(line).append("\n");
    }
    return records;
}

std::vector<zrx::DeviceRecord> Read(const std::string& figures,
                                    const std::map<std::string, std::string>& limits) {
    std::vector<zrx::DeviceRecord> records;
    for (const std::string_view line : base::LineViews(figures)) {
        const auto words = base::Words(line.substr(0, line.find('#')));
        if (words.empty()) continue;
        if (words.size() != 4)
            throw std::runtime_error("not name, pins, cost and power: " + std::string(line));
        const auto text = limits.find(std::string(words[0]));
        records.push_back({std::string(words[0]), base::TextToInt16(words[1]), base::TextToInt16(words[2]),
                           base::TextToInt16(words[3]), text == limits.end() ? "" : text->second});
        if (!records.back().Text.empty() && !zrx::LimitsOf(records.back()))
            throw std::runtime_error("limits that cannot be read: " + records.back().Name);
    }
    return records;
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 4) return std::fputs("zrxdb FIGURES LIBRARY TARGET\n", stderr), 2;
    try {
        const auto read = [](const char* path) {
            return base::ReadWhole(path, zrx::DatabaseLimits::FileBytes);
        };
        base::AtomicFile target(arguments[3]);
        target.Write(zrx::WriteDatabase(Read(read(arguments[1]), Records(read(arguments[2])))));
        target.Commit(base::AtomicFile::Durability::Quick);
    } catch (const std::exception& error) {
        return std::fprintf(stderr, "zrxdb: %s\n", error.what()), 1;
    }
    return 0;
}
