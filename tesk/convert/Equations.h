#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "base/Text.h"
#include "convert/PldFile.h"
#include "convert/Tokens.h"

namespace convert {

// An input of a register or a pin as the design language calls it, upper case.
bool IsExtension(std::string_view text);

// Collects the declarations and equations of languages whose names mean the same in any case.
class EquationReader : public TokenReader {
  public:
    EquationReader(std::span<const Token> tokens, const Language& language, PldFile& file)
        : TokenReader(tokens, language), file_(file) {}

  protected:
    void DeclarePin(std::string_view name, int number, bool activeLow);
    void DeclareNode(std::string_view name);
    // The name in the design; throws Failure if nothing declares it.
    std::string KnownName(std::string_view name) const;
    bool IsKnown(std::string_view name) const { return known_.contains(base::Upper(name)); }
    PldFile& File() { return file_; }
    const PldFile& File() const { return file_; }

    // Throws Failure for a second equation of the same.
    void Assign(const std::string& name, const std::string& extension, bool complement, const Formula& value,
                int line);
    bool IsAssigned(const std::string& name, const std::string& extension) const {
        return assigned_.contains({name, extension});
    }
    bool HasEquation(const std::string& name) const;
    bool IsRegister(const std::string& name) const;  // by what was assigned so far
    void Finish() const;                             // throws Failure if there are no equations

  private:
    std::string Declare(std::string_view name);

    PldFile& file_;
    NameMaker names_;
    std::map<std::string, std::string> known_;  // by upper case
    std::set<int> numbers_;
    std::set<std::pair<std::string, std::string>> assigned_;
};

}  // namespace convert
