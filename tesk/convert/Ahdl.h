#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "convert/Equations.h"

namespace convert {

const Language& AhdlLanguage();

// Text designs of one SUBDESIGN: Boolean equations on names and groups, nodes, TABLE, D, T and JK flip-flops.
class AhdlReader : public EquationReader {
  public:
    AhdlReader(std::span<const Token> tokens, PldFile& file) : EquationReader(tokens, AhdlLanguage(), file) {}

    void Read();

  private:
    static constexpr int MaxIndex = 255;
    static constexpr std::size_t MaxNames = 4096;
    static constexpr std::size_t MaxDigits = 256;

    struct Register {
        std::string Data, Other;
        bool HasEnable = false;
    };
    struct Target {
        std::string Name;
        std::string Extension;  // of the design language, or CLRN, PRN
    };

    std::string NeedSymbol();
    std::vector<int> Range();
    std::vector<std::string> NewNames();
    std::vector<std::string> KnownNames();
    void ReadPorts();
    void ReadVariables();

    void ReadStatement();
    std::vector<Target> Targets();
    std::string PortOf(const std::string& name, const std::string& port) const;
    void AssignTo(const Target& target, const Formula& value, int line);

    struct Table {
        std::vector<Formula> Inputs, Sums;  // a sum for each output
        std::vector<Target> Outputs;
        std::vector<std::size_t> InputWidths, OutputWidths;
        std::size_t Size = 0;  // of the texts so far
    };
    void ReadTable();
    Table TableHead();
    void ReadRow(Table& table);
    std::string Row(const std::vector<std::size_t>& widths);

    Group Operand() override;
    std::optional<Group> NumberAhead();
    Group Number(std::string_view digits, int bitsEach);

    std::map<std::string, std::vector<std::string>> groups_;  // members of each stem, by upper case
    std::set<std::string> buses_;                             // outputs that may be driven from outside
    std::set<std::string> outputs_;                           // what may be assigned to
    std::map<std::string, Register> registers_;
};

}  // namespace convert
