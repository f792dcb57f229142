#include "model/Message.h"

#include <algorithm>

namespace model {

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

std::string MessageData(std::span<const MessageEntry> table) {
    std::string text;
    for (const MessageEntry& entry : table) {
        ((text += entry.Number) += ' ').append(entry.Message) += "\r\n";
        ((text += LevelName(entry.Level)) += ". ").append(entry.Description) += "\r\n";
        text.append(entry.Information) += "\r\n";
    }
    return text;
}

Message MakeMessage(const MessageEntry& entry, Place at, std::string_view detail, std::string_view subject) {
    std::string text(entry.Message);
    if (!detail.empty()) (text += ": ") += detail;
    return {std::string(entry.Number), entry.Level, at, std::move(text), std::string(subject)};
}

bool HasErrors(std::span<const Message> messages) {
    return std::any_of(messages.begin(), messages.end(),
                       [](const Message& message) { return message.Level == Severity::Error; });
}

std::string Headline(const Message& message) {
    std::string line = "[" + message.Number + "] ";
    if (message.Level != Severity::Information) (line += LevelName(message.Level)) += ": ";
    return line + message.Text;
}

std::string ListLine(const Message& message, std::string_view file) {
    std::string line = Headline(message);
    if (message.At.Line <= 0) return line;
    (line += " (").append(file) += " line " + std::to_string(message.At.Line);
    if (message.At.Column > 0) line += " column " + std::to_string(message.At.Column);
    return line + ")";
}

}  // namespace model
