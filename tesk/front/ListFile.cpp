#include <map>

#include "base/Text.h"
#include "front/Outputs.h"

namespace front {

namespace {

std::string Numbered(std::size_t number, std::string_view text) {
    return base::PadLeft(std::to_string(number), 5) + ": " + std::string(text) + "\r\n";
}

}  // namespace

std::string ListText(const Source& source, const Report& report) {
    std::map<int, std::vector<const Message*>> byLine;
    std::vector<const Message*> others;
    for (const Message& message : report.Messages()) {
        if (message.At.File == 0 && message.At.Line > 0)
            byLine[message.At.Line].push_back(&message);
        else
            others.push_back(&message);
    }
    std::string text;
    if (!report.FileNames.empty()) text += "Listing of " + report.FileNames.front() + "\r\n\r\n";
    const std::vector<std::string_view> lines =
        source.Files.empty() ? std::vector<std::string_view>{} : base::LineViews(source.Files.front().Bytes);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        text += Numbered(i + 1, lines[i]);
        const auto here = byLine.find(static_cast<int>(i) + 1);
        if (here == byLine.end()) continue;
        for (const Message* message : here->second) text += report.ListLine(*message) + "\r\n";
        byLine.erase(here);
    }
    for (const auto& [line, messages] : byLine) others.insert(others.end(), messages.begin(), messages.end());
    if (!others.empty()) text += "\r\n";
    for (const Message* message : others) text += report.ListLine(*message) + "\r\n";
    return text + "\r\nErrors: " + std::to_string(report.Errors()) +
           "  Warnings: " + std::to_string(report.Warnings()) + "\r\n";
}

std::string ExpandedText(const Source& source, const Report& report) {
    std::string text;
    Place expected{0, 1, 0};
    for (const ExpandedLine& line : source.Lines) {
        const auto file = static_cast<std::size_t>(line.At.File);
        if (line.At.File != expected.File || line.At.Line != expected.Line)
            text += "/*$LINE " + report.FileNames[file] + " " + std::to_string(line.At.Line) + "*/\r\n";
        text += line.Text + "\r\n";
        expected = line.At;
        ++expected.Line;
    }
    return text;
}

}  // namespace front
