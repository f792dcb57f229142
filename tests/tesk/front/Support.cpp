#include "Support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <stdexcept>

#include "base/PosixFile.h"

std::optional<std::string> MemoryFiles::Read(std::string_view path, std::size_t maxBytes) {
    const auto text = Texts.find(std::string(path));
    if (text == Texts.end() || text->second.size() > maxBytes) return std::nullopt;
    return text->second;
}

std::string MemoryFiles::Write(std::string_view path, std::string_view bytes) {
    Texts[std::string(path)] = bytes;
    return {};
}

namespace {

// Header's warnings, and what a run without errors tells at its end.
bool LeftOut(const front::Message& message) {
    return message.Number == "1101ta" || message.Number == "3003tm" || message.Number == "4000tc" ||
           message.Number == "7500tc";
}

}  // namespace

std::vector<std::string> Compiled::Lines() const {
    std::vector<std::string> lines;
    for (const front::Message& message : Run->Said.Messages())
        if (!LeftOut(message)) lines.push_back(Run->Said.ListLine(message));
    return lines;
}

std::vector<std::string> Compiled::Codes() const {
    std::vector<std::string> codes;
    for (const front::Message& message : Run->Said.Messages())
        if (!LeftOut(message)) codes.push_back(message.Number + ":" + std::to_string(message.At.Line));
    return codes;
}

std::string DataText(const std::string& name) { return base::ReadWhole(DATA_DIR "/" + name, 1u << 24); }

std::unique_ptr<Compiled> CompileWhole(const std::string& text, const std::string& options,
                                       const std::map<std::string, std::string>& others) {
    auto result = std::make_unique<Compiled>();
    result->Files.Texts = others;
    result->Files.Texts["T.PLD"] = text;
    result->Run = std::make_unique<front::Run>(result->Files, result->Silent);
    result->Run->Base = "T";
    result->Run->Device = "&";
    result->Run->Library = "tesk.dl";
    result->Run->Options = front::Options::Parse(options);
    front::Run& run = *result->Run;
    (void)(ExpandStage(run) && AnalyseStage(run) && BuildStage(run) && MinimiseStage(run) && WriteStage(run));
    WriteList(run);
    return result;
}

std::unique_ptr<Compiled> Compile(const std::string& body, const std::string& options,
                                  const std::map<std::string, std::string>& others) {
    return CompileWhole(
        "Name T; Partno 1; Date 1; Revision 1; Designer A; Company B; Assembly C; Location D; "
        "Device virtual;\n" +
            body,
        options, others);
}

std::unique_ptr<Compiled> CompileFor(const std::string& device, const std::string& body,
                                     const std::string& options) {
    return CompileWhole(
        "Name T; Partno 1; Date 1; Rev 1; Designer 1; Company 1; Assy 1; Loc 1; Device " + device + ";\n" +
            body,
        options, {{"tesk.dl", DataText("devices/Fullset.dl")}, {"Cplds.dl", DataText("devices/Cplds.dl")}});
}

Table::Table(const std::string& text) {
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        std::string first;
        words >> first;
        auto* names = first == ".ilb" ? &Inputs : first == ".ob" ? &Outputs : nullptr;
        for (std::string name; names != nullptr && words >> name;) names->push_back(name);
        if (first.empty() || first[0] == '.' || first[0] == '#') continue;
        std::string outputs;
        if (Inputs.empty())
            std::swap(first, outputs);
        else
            words >> outputs;
        Rows.emplace_back(first, outputs);
    }
}

std::size_t Table::Column(const std::string& output) const {
    const auto at = std::find(Outputs.begin(), Outputs.end(), output);
    if (at == Outputs.end()) throw std::runtime_error("no output " + output);
    return static_cast<std::size_t>(at - Outputs.begin());
}

char Table::At(const std::string& output, const std::map<std::string, bool>& point) const {
    const std::size_t column = Column(output);
    char result = '0';
    for (const auto& [inputs, outputs] : Rows) {
        bool holds = outputs[column] != '0';
        for (std::size_t i = 0; i < inputs.size() && holds; ++i) {
            const auto value = point.find(Inputs[i]);
            const bool one = value != point.end() && value->second;
            holds = inputs[i] == '-' || (inputs[i] == '1') == one;
        }
        if (holds && result != '1') result = outputs[column];
    }
    return result;
}

std::size_t Table::Terms(const std::string& output) const {
    const std::size_t column = Column(output);
    return static_cast<std::size_t>(
        std::count_if(Rows.begin(), Rows.end(), [&](const auto& row) { return row.second[column] == '1'; }));
}

std::string Column(const Table& table, const std::string& output, const std::vector<std::string>& inputs) {
    std::string result;
    for (std::size_t value = 0; value < (std::size_t{1} << inputs.size()); ++value) {
        std::map<std::string, bool> point;
        for (std::size_t i = 0; i < inputs.size(); ++i)
            point[inputs[i]] = (value >> (inputs.size() - 1 - i) & 1) != 0;
        result += table.At(output, point);
    }
    return result;
}

void ExpectWays(const Compiled& done, const std::vector<Way>& ways) {
    ASSERT_TRUE(done.Run->Ok()) << done.Lines().front();
    const Table table(done.Text(".PLA"));
    for (const auto& [output, inputs, values] : ways) {
        if (values.empty())
            EXPECT_EQ(std::count(table.Outputs.begin(), table.Outputs.end(), output), 0) << output;
        else
            EXPECT_EQ(Column(table, output, inputs).substr(0, values.size()), values) << output << "\n"
                                                                                      << done.Text(".PLA");
    }
}
