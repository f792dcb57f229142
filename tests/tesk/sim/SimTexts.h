#pragma once

#include <string>
#include <vector>

#include "base/Text.h"
#include "sim/Simulation.h"

namespace test {

inline sim::SimulationTexts Texts(const std::string& records, const std::string& order,
                                  const std::string& vectors) {
    return {"TESK-ABS 1\nHEADER Name T\nDEVICE G16V8 20\n" + records + "END\n",
            "Name T;\nORDER: " + order + ";\nVECTORS:\n" + vectors, ""};
}

// The vectors of an .SO text, without numbers and blanks.
inline std::vector<std::string> FoundBy(const sim::SimulationResult& result) {
    std::vector<std::string> rows;
    for (const auto& line : base::Lines(result.So)) {
        const bool vector = line.size() > 6 && line[0] >= '0' && line[0] <= '9' && line.substr(4, 2) == ": ";
        if (vector) rows.push_back(base::ReplaceAll(line.substr(6), " ", ""));
    }
    return rows;
}

}  // namespace test
