#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "aids/TableValues.h"

// Where the parts of a drawn table lie. Lengths and places are twips on the drawing surfaces, whatever is
// scrolled.
namespace aids {

inline constexpr float surfaceSize = 40000;  // nothing is drawn beyond
inline constexpr float textInset = 20;       // of a title, a hexadecimal value, and a row's text from its top
inline constexpr float rulerMargin = 40;     // of the ruler beside its two lines
inline constexpr float rulerGap = 24;        // between ruler and grid

// Of the font of the surfaces.
struct TextSizes {
    float Zero = 0;    // width of "0"
    float F = 0;       // width of "F"
    float Height = 0;  // of "0"
};

// From left to right: input hexadecimal, input bits, output hexadecimal, output bits.
struct TableGeometry {
    TableGeometry() = default;
    TableGeometry(const TextSizes& sizes, std::int32_t inputWidth, std::int32_t outputWidth);

    float CellWidth = 0;
    float CellHeight = 0;
    float InputHexWidth = 0;
    float OutputHexWidth = 0;
    float OutputLeft = 0;
    float TotalWidth = 0;

    float HexLeft(Half half) const { return half == Half::Input ? 0 : OutputLeft; }
    float BitLeft(Half half,
                  std::int32_t column) const;  // of column 0: the right end of the hexadecimal field
};

constexpr std::int32_t hexColumn = -1;

struct TableCell {
    aids::Half Half = Half::Input;
    std::int32_t Row = 0;
    std::int32_t Column = hexColumn;  // of a bit, from 0
    bool operator==(const TableCell&) const = default;
};

// The cell at a place. None outside the table and on its outermost lines, where no cell lies.
std::optional<TableCell> CellAt(const TableValues& values, const TableGeometry& geometry, float x, float y);

struct ScrollRange {
    bool IsEnabled = false;
    std::int32_t Max = 0;  // only if it is enabled
};
// `viewSize` is what is seen of the surface, which begins at `position` of it (0 or less).
ScrollRange RowScroll(const TableValues& values, const TableGeometry& geometry, float viewSize,
                      float position);
ScrollRange ColumnScroll(const TableValues& values, const TableGeometry& geometry, float viewSize,
                         float position);

// The text if it is narrower than `room`; or else the longest beginning of `longText` that is with "...", or
// nothing. `widthOf` measures.
std::string FitTitle(std::string_view text, std::string_view longText, float room,
                     const std::function<float(std::string_view)>& widthOf);

}  // namespace aids
