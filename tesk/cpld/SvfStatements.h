#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cpld {

struct SvfStatement {
    std::size_t Line = 0;            // where it begins
    std::vector<std::string> Words;  // in upper case; what stands in parentheses is one word without blanks
                                     // and with its parentheses
};

// Takes a text apart statement by statement.
class SvfStatements {
  public:
    explicit SvfStatements(std::string_view text) : text_(text) {}

    // Nothing at the end. Throws base::RunTimeError for a statement without its ";" and for bytes that are no
    // text.
    std::optional<SvfStatement> Next();

  private:
    char Take();
    void SkipComment();

    std::string_view text_;
    std::size_t at_ = 0, line_ = 1;
};

// What SIR and SDR shift: bits, the first one shifted first.
struct SvfShift {
    std::vector<bool> Tdi, Tdo, Mask;
    bool HasTdo = false;
};

// The shift that a statement SIR or SDR asks for; what it leaves out is that of the one before, if it has the
// same length. Throws base::RunTimeError.
SvfShift ShiftOf(const SvfStatement& statement, const SvfShift& before);

[[noreturn]] void SvfFault(std::size_t line, const std::string& what);

}  // namespace cpld
