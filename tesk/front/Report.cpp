#include "front/Report.h"

namespace front {

namespace {

constexpr std::size_t kDetailBytes = 200;  // a longer one would be no line to read

std::string OneLine(std::string_view text) {
    std::string result(text.substr(0, kDetailBytes));
    for (char& c : result)
        if (static_cast<unsigned char>(c) < 32 || c == 127) c = '?';
    if (text.size() > kDetailBytes) result += "...";
    return result;
}

}  // namespace

void Report::Count(Level level) {
    if (level == Level::Error) {
        ++errors_;
        listener_.Error();
    } else if (level == Level::Warning) {
        ++warnings_;
        listener_.Warning();
    }
}

void Report::Add(Code code, Place at, std::string_view detail) {
    const MessageEntry& entry = Entry(code);
    if (Full()) return;
    Message message{code, entry.Severity, at, std::string(entry.Message)};
    if (!detail.empty()) message.Text += ": " + OneLine(detail);
    if (!messages_.empty() && messages_.back().At == at && messages_.back().Text == message.Text) return;
    messages_.push_back(message);
    listener_.Line(ListLine(message));
    Count(entry.Severity);
    if (Full() && code != Code::TooManyErrors) {
        messages_.push_back(
            {Code::TooManyErrors, Level::Information, {}, std::string(Entry(Code::TooManyErrors).Message)});
        listener_.Line(ListLine(messages_.back()));
    }
}

void Report::AddForeign(Level level, std::string_view line) {
    listener_.Line(line);
    Count(level);
}

std::string Report::ListLine(const Message& message) const {
    std::string line = "[" + std::string(Entry(message.Id).Number) + "] ";
    if (message.Severity != Level::Information) line += std::string(LevelName(message.Severity)) + ": ";
    line += message.Text;
    if (message.At.File < 0 || static_cast<std::size_t>(message.At.File) >= FileNames.size()) return line;
    line += " (" + FileNames[static_cast<std::size_t>(message.At.File)];
    if (message.At.Line > 0) line += " line " + std::to_string(message.At.Line);
    if (message.At.Column > 0) line += " column " + std::to_string(message.At.Column);
    return line + ")";
}

}  // namespace front
