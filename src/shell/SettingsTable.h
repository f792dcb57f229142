#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <variant>

#include "session/Session.h"

// Every value of the settings store, in the order of writing. Loading and saving walk this table.
namespace shell {

struct SettingsTarget {
    session::Session& State;
    session::Placement& Main;
};

// The place of a value in memory: a truth value is stored as -1 or 0, a length in twips as a whole number.
// Nothing: no place, always stored as -1.
using Field = std::variant<std::monostate, bool*, std::int16_t*, float*, std::int32_t*, std::string*>;

enum class Source {
    Given,       // number or text of the table
    SharedDir,   // the text behind SharedDir
    ProgramDir,  // the program directory without final backslash
    Found,       // what is in the field before the store is read
    Misplaced,   // none: the empty read buffer goes to InstallRoot
};

struct Default {
    int Number = 0;
    const char* Text = "";
    Source From = Source::Given;
};

enum class Use { ReadAndWritten, WrittenOnly, ReadOnly };

struct Setting {
    const char* Name;  // "#" stands for the row number
    Field (*Place)(SettingsTarget, std::size_t row);
    Default Absent = {};                   // the value can't be read
    std::optional<Default> FirstRun = {};  // no settings yet; as Absent unless given
    Use How = Use::ReadAndWritten;
};

// Settings that repeat together for the rows First to Last.
struct SettingGroup {
    int First;
    int Last;
    std::span<const Setting> Members;
};

std::span<const SettingGroup> SettingsTable();

}  // namespace shell
