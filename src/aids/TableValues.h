#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace aids {

enum class Half { Input, Output };

// How the rows of the input are filled. The order is that of the frame "Set Input".
enum class Fill { Inc, Dec, Zero, Set, OneHotL, OneHotR, FillL, FillR };

// Why the text of a field was not taken; its value is 0 then.
struct Refusal {
    std::string Message;
    std::string Correction = {};  // what the field shows instead, if not empty
};

// A truth table: a row has bits of the input and of the output, the most significant one at the left.
class TableValues {
  public:
    // RowCount elements once a row count was taken, one before. All have the width of their half, but an
    // output row can be longer (see TakeWidth).
    std::vector<std::string> InputValues = std::vector<std::string>(1);
    std::vector<std::string> OutputValues = std::vector<std::string>(1);
    std::int32_t InputWidth = 0;
    std::int32_t OutputWidth = 0;
    std::int32_t RowCount = 0;
    bool InputFilled = false;  // FillInput has run to its end

    bool IsEmpty() const { return InputWidth == 0 || OutputWidth == 0 || RowCount == 0; }
    std::int32_t Width(Half half) const { return half == Half::Input ? InputWidth : OutputWidth; }
    const std::string& Row(Half half, std::int32_t row) const;

    // The fields. Bits keep their columns, not their values, when a width changes. Kept: output rows longer
    // than the new width are cut to InputWidth, and stay longer or are filled up again with "0".
    std::optional<Refusal> TakeWidth(Half half, std::string_view text);
    std::optional<Refusal> TakeRows(std::string_view text);

    // Writes rows of the input. Gives why it wrote nothing, or empty text.
    std::string FillInput(Fill mode, std::string_view from);

    void Toggle(Half half, std::int32_t row, std::int32_t column);
    // Takes a typed hexadecimal number; an empty one is none. Gives why it was refused, or empty text.
    std::string EnterHex(Half half, std::int32_t row, std::string_view typed);

    // The statement, with a CR LF at its end.
    std::string TableText(std::string_view input, std::string_view output) const;

  private:
    std::vector<std::string>& Values(Half half) { return half == Half::Input ? InputValues : OutputValues; }
};

std::string HexText(std::string_view bits);  // "0h", "1Fh"

}  // namespace aids
