#include "sim/MessageLog.h"

namespace sim {

std::string ListLine(const Message& message, std::string_view fileName) {
    const std::string line = model::Headline(message);
    if (message.At.Line <= 0) return line;
    return line + " (" + std::string(fileName) + " line " + std::to_string(message.At.Line) + ")";
}

std::string_view FileExtension(const Message& message) {
    const auto family = message.Number.substr(0, 2);
    return family == "01" ? ".ABS" : family == "04" ? ".JED" : ".SI";
}

void MessageLog::Add(MessageCode code, int line, std::string_view detail) {
    if (code.Entry().Level == Severity::Error) ++errors_;
    if (code.Entry().Level == Severity::Warning) ++warnings_;
    if (items_.size() > MaxMessages) return;
    items_.push_back(items_.size() == MaxMessages ? model::MakeMessage(MessageCode("0001vs").Entry(), {})
                                                  : model::MakeMessage(code.Entry(), {-1, line, 0}, detail));
}

}  // namespace sim
