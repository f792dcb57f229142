#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/FileSystem.h"
#include "platform/RichTextBox.h"
#include "session/Records.h"

// The macros of the language: the library's files, and the texts that the three dialogs make of them.
namespace aids {

struct MacroRecord {
    std::string Name;
    std::string Args;        // parted by blanks
    std::string Definition;  // the lines of the body, each with CR LF
};

// What one reading has found. A definition without `$MEND` goes on with the next one, in the same record.
struct MacroTable {
    static constexpr std::size_t Size = 101;

    std::vector<std::string> Names;    // one for each `$MACRO`
    std::vector<MacroRecord> Records;  // one for each `$MEND`, and what is open
    std::size_t Count = 0;             // definitions closed: the index of the record under way

    const MacroRecord& At(int index) const;  // empty where nothing was read; error 9 outside the table
    MacroRecord& Current();                  // error 9 behind its end
};

// The macro files of the installation, in directory order, without folder and extension.
std::string LibraryPath(const std::string& installRoot, const std::string& name);
std::vector<std::string> LibraryNames(const platform::FileSystem& files, const std::string& installRoot);

// Reads a file of the library into an empty table, which keeps what stands before an error.
void LoadMacroFile(const platform::FileSystem& files, const std::string& path, MacroTable& table);

// Appends a definition to a file of the library, which is made if it is not there.
void AppendToLibrary(platform::FileSystem& files, const std::string& path, const std::string& macro);

// The text that "Add" appends to the chosen macros, and the mere header of a double click. Empty if the name
// stands somewhere in `chosen` already, be it as a part of another word.
std::string AddedMacro(std::string_view chosen, const MacroRecord& macro);
std::string AddedHeader(std::string_view chosen, const MacroRecord& macro);

// A definition to be filled in.
std::string NewMacroText(const std::string& name, const std::vector<std::string>& arguments);
// The colours of such a text: `$MACRO`, the arguments, `$MEND`.
std::vector<platform::FormatRun> NewMacroFormats(std::string_view text,
                                                 const std::vector<session::KeywordRec>& keywords);

// "name:NC" for each argument.
std::vector<std::string> ArgumentEntries(std::string_view args);
// Such an entry up to and with its first ":", and what stands behind.
std::string EntryHead(std::string_view entry);
std::string EntryValue(std::string_view entry);
// The call of a macro with the values of the entries, a line.
std::string ReferenceText(const std::string& name, const std::vector<std::string>& entries);

}  // namespace aids
