#include "sim/Message.h"

namespace sim {
namespace {

const MessageEntry& Entry(std::string_view code) {
    static constexpr MessageEntry unknown{"9999vs", Severity::Error, "Unknown message", "", ""};
    for (const auto& entry : MessageTable()) {
        if (entry.Code == code) return entry;
    }
    return unknown;
}

}  // namespace

std::string_view LevelName(Severity level) {
    switch (level) {
        case Severity::Information:
            return "Information";
        case Severity::Warning:
            return "Warning";
        case Severity::Error:
            break;
    }
    return "Error";
}

std::string MessageData() {
    std::string text;
    for (const auto& entry : MessageTable()) {
        text += std::string(entry.Code) + " " + std::string(entry.Message) + "\r\n";
        text += std::string(LevelName(entry.Level)) + ". " + std::string(entry.Description) + "\r\n";
        text += std::string(entry.Information) + "\r\n";
    }
    return text;
}

std::string ListLine(const Message& message, std::string_view fileName) {
    std::string line = "[" + message.Code + "] ";
    if (message.Level != Severity::Information) line += std::string(LevelName(message.Level)) + ": ";
    line += message.Text;
    if (message.Line > 0)
        line += " (" + std::string(fileName) + " line " + std::to_string(message.Line) + ")";
    return line;
}

std::string_view FileExtension(const Message& message) {
    const auto family = message.Code.substr(0, 2);
    return family == "01" ? ".ABS" : family == "04" ? ".JED" : ".SI";
}

void MessageLog::Add(std::string_view code, int line, std::string_view detail) {
    const auto& entry = Entry(code);
    if (entry.Level == Severity::Error) ++errors_;
    if (entry.Level == Severity::Warning) ++warnings_;
    if (items_.size() > MaxMessages) return;
    if (items_.size() == MaxMessages) {
        const auto& more = Entry("0001vs");
        items_.push_back({std::string(more.Code), more.Level, 0, std::string(more.Message)});
        return;
    }
    std::string text(entry.Message);
    if (!detail.empty()) text += ": " + std::string(detail);
    items_.push_back({std::string(entry.Code), entry.Level, line, text});
}

}  // namespace sim
