#include "launcher/TreeRecord.h"

#include <charconv>
#include <vector>

#include "base/Text.h"

namespace launcher {
namespace {

constexpr std::string_view head = "korvane-tree";

std::vector<std::string_view> Fields(std::string_view line, char between) {
    std::vector<std::string_view> fields;
    for (;;) {
        const std::size_t end = line.find(between);
        fields.push_back(line.substr(0, end));
        if (end == line.npos) return fields;
        line.remove_prefix(end + 1);
    }
}

template <typename Number>
bool Read(std::string_view text, Number& value) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size();
}

// The path comes last: it may hold anything but a line end.
bool ReadLine(std::string_view line, TreeRecord& record) {
    Brought file;
    const auto fields = Fields(line, '\t');
    if (fields.size() < 5 || (fields[0] != "link" && fields[0] != "copy")) return false;
    file.IsLink = fields[0] == "link";
    if (!Read(fields[1], file.Size) || !Read(fields[2], file.Time) || !Read(fields[3], file.Digest))
        return false;
    record.Files[std::string(line.substr(static_cast<std::size_t>(fields[4].data() - line.data())))] = file;
    return true;
}

}  // namespace

// FNV-1a: it tells an edited file from one that is as it was brought, it guards nothing.
std::uint64_t DigestOf(std::string_view bytes) {
    std::uint64_t digest = 14695981039346656037U;
    for (const char c : bytes) digest = (digest ^ static_cast<unsigned char>(c)) * 1099511628211U;
    return digest;
}

std::string WriteRecord(const TreeRecord& record) {
    std::string text = std::string(head) + '\t' + record.Version + '\t' + record.Installation + '\n';
    for (const auto& [path, file] : record.Files)
        text += std::string(file.IsLink ? "link" : "copy") + '\t' + std::to_string(file.Size) + '\t' +
                std::to_string(file.Time) + '\t' + std::to_string(file.Digest) + '\t' + path + '\n';
    return text;
}

TreeRecord ReadRecord(std::string_view text) {
    TreeRecord record;
    for (const std::string_view line : base::LineViews(text)) {
        if (record.Version.empty()) {
            const auto fields = Fields(line, '\t');
            if (fields.size() != 3 || fields[0] != head) return {};
            record.Version = fields[1];
            record.Installation = fields[2];
        } else if (!line.empty() && !ReadLine(line, record)) {
            return {};
        }
    }
    return record;
}

bool IsNewer(std::string_view version, std::string_view than) {
    const auto left = Fields(version, '.');
    const auto right = Fields(than, '.');
    for (std::size_t i = 0; i < left.size() && i < right.size(); ++i) {
        unsigned a = 0;
        unsigned b = 0;
        if (Read(left[i], a) && Read(right[i], b) && a != b) return a > b;
    }
    return left.size() > right.size();
}

}  // namespace launcher
