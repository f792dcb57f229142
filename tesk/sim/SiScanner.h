#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "sim/Message.h"

namespace sim {

// The .SI text without its comments, cut into what the reader takes.
struct SiText {
    struct Statement {
        int Line = 0;
        std::string Text;  // without the ";", blanks and line ends trimmed
    };
    struct Row {
        int Line = 0;
        std::string Text;  // not empty
    };
    std::vector<Statement> Statements;  // before VECTORS:
    std::vector<Row> Rows;              // behind VECTORS:
};

// Quotes protect comment marks in rows. Faults go to the log.
SiText ScanSi(std::string_view text, MessageLog& log);

}  // namespace sim
