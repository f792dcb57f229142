#include "sim/MessageLog.h"

namespace sim {

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
