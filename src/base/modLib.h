#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// Pure tests on names and characters that every room uses. Paths have the form C:\WORK\COUNT8.PLD.
namespace base {

std::string StripExtension(std::string_view name);  // up to and without its last "."; unchanged without one
std::string FileExtension(std::string_view name);   // at most 3 characters behind the last ".", upper case;
                                                    // a name without "." yields the whole name, upper case
std::string BareName(std::string_view name);        // StripExtension, then what stands behind the last "\"
std::string DirectoryPart(std::string_view name);   // up to and including the last "\"; unchanged without one
std::string PrintableOnly(std::string_view text);   // the characters of codes 33 to 126

bool IsWordChar(char c);   // digit, ASCII letter, underscore
bool IsLineEnd(char c);    // codes 10 and 13
bool IsBlankChar(char c);  // codes below 33, and 127 and above
bool IsDigitChar(char c);  // codes 48 to 57

// Bits as texts of "0" and "1", bit 0 at the right end; a value is a pattern of 32 bits.
std::string ValueToBits(std::int32_t value, std::int32_t width);  // the low bits, at most 32
std::int32_t BitsToValue(std::string_view text);                  // characters other than "1" count as "0"
std::string WidenRight(std::string_view text, char fill, std::int32_t width);  // a longer one is unchanged

// Whether the trimmed text may be entered as a hexadecimal number. Kept: so wide that "g", "h" and marks from
// the double quote to the slash pass; a number ends before them.
bool IsHexText(std::string_view text);

}  // namespace base
