#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// Text is bytes: UTF-8, one byte a character to the logic. Upper and lower case touch ASCII letters only.
namespace base {

char UpperChar(char c);
std::string Upper(std::string_view text);
std::string Lower(std::string_view text);
bool EqualNoCase(std::string_view a, std::string_view b);
bool StartsWith(std::string_view text, std::string_view head);
bool Contains(std::string_view text, std::string_view part);

// Positions from 1. Mid takes `count` characters from position `start`; what lies outside the text is left
// out.
std::string Mid(std::string_view text, std::size_t start, std::size_t count = std::string_view::npos);
std::string Left(std::string_view text, std::size_t count);
std::string Right(std::string_view text, std::size_t count);

std::string_view TrimView(std::string_view text);  // blanks, tabs and line ends off both sides
std::string Trim(std::string_view text);
std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to);

std::string PadLeft(std::string text, std::size_t width, char fill = ' ');
std::string PadRight(std::string text, std::size_t width);

// Takes the first line off a text that is not empty, with its end: CR LF, LF or CR. Without the end it comes
// back.
std::string_view TakeLine(std::string_view& rest);
// The lines of a text; a line end at the very end makes no further line.
std::vector<std::string> Lines(std::string_view text);
std::vector<std::string_view> LineViews(std::string_view text);

// What stands between blanks and tabs.
std::vector<std::string_view> Words(std::string_view text);

// Makes every line end CR LF.
std::string ToCrLf(std::string_view text);

bool IsValidUtf8(std::string_view text);
// The text with every byte that belongs to no UTF-8 sequence replaced by U+FFFD: for display only.
std::string DisplayUtf8(std::string_view text);

}  // namespace base
