#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace base {

// 16- and 32-bit signed arithmetic of this system. A result out of range raises error 6 (overflow).
std::int16_t ToInt16(std::int64_t value);
std::int32_t ToInt32(std::int64_t value);
std::int16_t Add16(std::int16_t a, std::int16_t b);
std::int16_t Multiply16(std::int16_t a, std::int16_t b);

// Rounds to the nearest integer, exact halves to the even neighbour; out of range is error 6.
std::int16_t RoundToInt16(double value);
std::int32_t RoundToInt32(double value);

// Text to number: blanks around the number are allowed, so are a sign, a fraction and an exponent (rounded as
// above). Empty text or anything else raises error 13 (type mismatch), a value out of range error 6.
std::int16_t TextToInt16(std::string_view text);
std::int32_t TextToInt32(std::string_view text);

// The general number test: the whole text is a number as TextTo… takes it, or one of at most 32 bits behind
// "&H" (hexadecimal) or "&O" (octal).
bool IsNumericText(std::string_view text);

// The number that a text begins with, behind blanks; 0 without one, infinity if it is too large for a double.
// Behind "&H" and "&O" stands a signed number of 16 bits if it fits, or else of 32, or else error 6: "&HFFFF"
// is -1, "&H10000" is 65536.
double LeadingNumber(std::string_view text);

// Number to text as the system's conversion gives it: one leading blank in the place of the sign of a number
// that is not negative, single precision, at most 7 significant digits.
std::string SingleToText(float value);

}  // namespace base
