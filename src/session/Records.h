#pragma once

#include <cstdint>
#include <string>

namespace session {

// Of the palette of 16 colours, 0x00BBGGRR.
inline constexpr std::int32_t Magenta = 0x800080;    // 5
inline constexpr std::int32_t LightBlue = 0xFF0000;  // 9

inline constexpr const char* DefaultPartitionFlags = "-nfProojTsa1N1c2p3u100m005l025t00:00:55";

// A font of the program's windows.
struct FontRecord {
    std::string Name;
    std::int16_t Size = 8;  // points
    bool Bold = false;
    bool Italic = false;
    std::int32_t ForeColor = 0;  // 0x00BBGGRR
};

// A tool of the Utilities menu and the toolbar, a row of StdUtils or CustUtils. A Program that begins with
// "MACRO" is a keystroke macro, "MACRO*" one not yet defined.
struct CustomUtility {
    std::string Program;
    std::string Name;
    bool Menu = false;
    bool Toolbar = false;
    std::uint32_t TaskId = 0;  // process that this program started, 0 if none
    std::uint32_t Hwnd = 0;    // its top-level window
};

inline bool IsMacro(const CustomUtility& tool) { return tool.Program.starts_with("MACRO"); }

// A word that the highlighter paints; "COMMENTS" stands for comment text.
struct KeywordRec {
    std::string Name;
    std::int32_t Color = 0;  // 0x00BBGGRR
    bool Bold = false;
    bool Italic = false;
    bool Underline = false;
};

struct SchematicTool {
    std::string Name;
    int Number = 0;
};

// A rectangle in twips.
struct Placement {
    float Left = 0;
    float Top = 0;
    float Width = 0;
    float Height = 0;
};

}  // namespace session
