#include "aids/TableGeometry.h"

#include <algorithm>

#include "base/Number.h"
#include "base/Text.h"

namespace aids {
namespace {

constexpr float bitsOfADigit = 8;  // kept: the field grows by one digit for eight bits
constexpr float spareDigits = 5;
constexpr float hexMargin = 40;
constexpr int spareRows = 3;
constexpr int spareColumns = 10;

float HexWidth(const TextSizes& sizes, std::int32_t bits) {
    return (static_cast<float>(bits) / bitsOfADigit + spareDigits) * sizes.F + hexMargin;
}

std::int32_t Max(std::int32_t cells, float viewSize, float cellSize, int spare) {
    const float hidden = static_cast<float>(cells) - viewSize / cellSize + static_cast<float>(spare);
    return std::max(base::RoundToInt32(hidden), 0);
}

// Kept: whole numbers divide, and the quotient is cut towards zero.
std::int32_t Cells(float length, float cellSize) {
    return base::RoundToInt32(length) / base::RoundToInt32(cellSize);
}

}  // namespace

TableGeometry::TableGeometry(const TextSizes& sizes, std::int32_t inputWidth, std::int32_t outputWidth)
    : CellWidth(sizes.Zero * 3),
      CellHeight(sizes.Height),
      InputHexWidth(HexWidth(sizes, inputWidth)),
      OutputHexWidth(HexWidth(sizes, outputWidth)),
      OutputLeft(InputHexWidth + CellWidth * static_cast<float>(inputWidth)),
      TotalWidth(OutputLeft + OutputHexWidth + CellWidth * static_cast<float>(outputWidth)) {}

float TableGeometry::BitLeft(Half half, std::int32_t column) const {
    const float first = half == Half::Input ? InputHexWidth : OutputLeft + OutputHexWidth;
    return first + static_cast<float>(column) * CellWidth;
}

std::optional<TableCell> CellAt(const TableValues& values, const TableGeometry& geometry, float x, float y) {
    if (values.IsEmpty() || x < 0 || y < 0 || x > geometry.TotalWidth) return std::nullopt;
    const std::int32_t row = Cells(y, geometry.CellHeight);
    if (row >= values.RowCount) return std::nullopt;
    if (x < geometry.InputHexWidth) return TableCell{Half::Input, row};
    const float outputBits = geometry.BitLeft(Half::Output, 0);
    if (x > geometry.OutputLeft && x < outputBits) return TableCell{Half::Output, row};
    const Half half = x >= geometry.OutputLeft ? Half::Output : Half::Input;
    const float place = x - geometry.BitLeft(half, 0);  // below 0 on the line at OutputLeft: no column
    const std::int32_t column = Cells(place, geometry.CellWidth);
    if (place < 0 || column >= values.Width(half)) return std::nullopt;
    return TableCell{half, row, column};
}

ScrollRange RowScroll(const TableValues& values, const TableGeometry& geometry, float viewSize,
                      float position) {
    const float foot = static_cast<float>(values.RowCount) * geometry.CellHeight;
    if (viewSize - position >= foot && position >= 0) return {};
    return {true, Max(values.RowCount, viewSize, geometry.CellHeight, spareRows)};
}

ScrollRange ColumnScroll(const TableValues& values, const TableGeometry& geometry, float viewSize,
                         float position) {
    const float right = geometry.BitLeft(Half::Output, values.OutputWidth - 1) + geometry.CellWidth;
    if (viewSize - position >= right && position >= 0) return {};
    const std::int32_t columns = values.InputWidth + values.OutputWidth;
    return {true, Max(columns, viewSize, geometry.CellWidth, spareColumns)};
}

std::string FitTitle(std::string_view text, std::string_view longText, float room,
                     const std::function<float(std::string_view)>& widthOf) {
    if (widthOf(text) < room) return std::string(text);
    const float dots = widthOf("...");
    for (std::size_t length = std::max<std::size_t>(longText.size(), 2) - 2; length > 0; --length) {
        const std::string_view head = longText.substr(0, length);
        if (base::IsValidUtf8(head) && widthOf(head) + dots < room) return std::string(head) + "...";
    }
    return "";
}

}  // namespace aids
