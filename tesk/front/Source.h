#pragma once

#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "base/modLib.h"
#include "front/Place.h"

namespace front {

// One text as it was read. `Code` holds its lines with comments blanked out, so that columns stay.
struct SourceFile {
    std::string Path;
    int Name = 0;  // places carry this index into the report's file names
    std::string Bytes;
    std::vector<std::string> Code;
    int OpenComment = 0;  // line of a comment that is never closed, 0 if there is none
};

// A line after the preprocessor.
struct ExpandedLine {
    std::string Text;
    Place At;            // the user's own line; of a macro's body the line of the call
    Place Body;          // the line of the macro's body, File -1 elsewhere
    bool Exact = false;  // columns of Text are those of the user's line
};

struct Source {
    std::deque<SourceFile> Files;  // the design first, each file once; places index it
    std::vector<ExpandedLine> Lines;
};

// Fills `Code` and `OpenComment` from `Bytes`.
void BlankComments(SourceFile& file);

using base::IsWordChar;
bool IsBlank(char c);
std::string_view TrimView(std::string_view text);
std::string_view FirstWord(std::string_view text);  // leading blanks skipped; empty if none stands there

}  // namespace front
