#include "editor/HighlightTables.h"

#include "base/modLib.h"

namespace editor {
namespace {

constexpr std::int32_t magenta = session::Magenta;
constexpr std::int32_t green = 0x008000;
constexpr std::int32_t lightBlue = session::LightBlue;

struct DefaultWord {
    const char* Name;
    std::int32_t Color;
};

constexpr DefaultWord defaultWords[] = {
    {"$DEFINE", magenta},      {"$ELSE", magenta},        {"$ENDIF", magenta},      {"$IFDEF", magenta},
    {"$IFNDEF", magenta},      {"$INCLUDE", magenta},     {"$MACRO", magenta},      {"$MEND", magenta},
    {"$REPEAT", magenta},      {"$REPEND", magenta},      {"$UNDEF", magenta},      {"APPEND", lightBlue},
    {"ASSEMBLY", lightBlue},   {"ASSY", lightBlue},       {"COMMENTS", green},      {"COMPANY", lightBlue},
    {"CONDITION", lightBlue},  {"DATE", lightBlue},       {"DEFAULT", lightBlue},   {"DESIGNER", lightBlue},
    {"DEVICE", lightBlue},     {"ELSE", lightBlue},       {"FIELD", lightBlue},     {"FLD", lightBlue},
    {"FORMAT", lightBlue},     {"FUNCTION", lightBlue},   {"FUSE", lightBlue},      {"IF", lightBlue},
    {"JUMP", lightBlue},       {"LOC", lightBlue},        {"LOCATION", lightBlue},  {"MIN", lightBlue},
    {"NAME", lightBlue},       {"NEXT", lightBlue},       {"NODE", lightBlue},      {"OUT", lightBlue},
    {"PARTNO", lightBlue},     {"PIN", lightBlue},        {"PINNODE", lightBlue},   {"PRESENT", lightBlue},
    {"REV", lightBlue},        {"REVISION", lightBlue},   {"SEQUENCE", lightBlue},  {"SEQUENCED", lightBlue},
    {"SEQUENCEJK", lightBlue}, {"SEQUENCERS", lightBlue}, {"SEQUENCET", lightBlue}, {"TABLE", lightBlue},
};

}  // namespace

std::string MakeDelimiters() {
    std::string delimiters;
    for (int code = 1; code <= 255; ++code) {
        const char c = static_cast<char>(code);
        if (!base::IsWordChar(c)) delimiters += c;
    }
    return delimiters;
}

std::vector<std::int16_t> MakeNoHighlightKeys() {
    // Mouse buttons, clear, shift, control, alt, pause, caps lock, escape, paging, arrows, select, print,
    // execute, print screen, insert, help, num lock.
    return {1,  2,  3,  4,  12, 16, 17, 18, 19, 20, 27, 33, 34,
            35, 36, 37, 38, 39, 40, 41, 42, 43, 44, 45, 47, 144};
}

std::vector<session::KeywordRec> DefaultKeywords() {
    std::vector<session::KeywordRec> keywords;
    for (const DefaultWord& word : defaultWords) keywords.push_back({.Name = word.Name, .Color = word.Color});
    return keywords;
}

}  // namespace editor
