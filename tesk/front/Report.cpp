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

void Report::Count(Severity level) {
    if (level == Severity::Error) {
        ++errors_;
        listener_.Error();
    } else if (level == Severity::Warning) {
        ++warnings_;
        listener_.Warning();
    }
}

void Report::Keep(const Message& message) {
    messages_.push_back(message);
    listener_.Line(ListLine(message));
    Count(message.Level);
}

void Report::Add(Code code, Place at, std::string_view detail) {
    AddForeign(model::MakeMessage(Entry(code), at, OneLine(detail)));
}

void Report::AddForeign(const Message& message) {
    if (Full()) return;
    if (!messages_.empty() && messages_.back().At == message.At && messages_.back().Text == message.Text)
        return;
    Keep(message);
    if (Full()) Keep(model::MakeMessage(Entry(Code::TooManyErrors), {}));
}

void Report::AddForeign(Severity level, std::string_view line) {
    listener_.Line(line);
    Count(level);
}

std::string Report::ListLine(const Message& message) const {
    std::string line = model::Headline(message);
    if (message.At.File < 0 || static_cast<std::size_t>(message.At.File) >= FileNames.size()) return line;
    line += " (" + FileNames[static_cast<std::size_t>(message.At.File)];
    if (message.At.Line > 0) line += " line " + std::to_string(message.At.Line);
    if (message.At.Column > 0) line += " column " + std::to_string(message.At.Column);
    return line + ")";
}

}  // namespace front
