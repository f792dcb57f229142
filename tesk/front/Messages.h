#pragma once

#include <span>
#include <string>
#include <string_view>

namespace front {

enum class Level { Information, Warning, Error };

// One name a message; the order is that of the table.
enum class Code {
    DesignUnreadable,
    IncludeMissing,
    IncludeLoop,
    IncludeDepth,
    FileTooBig,
    LineTooLong,
    TextTooBig,
    CommentOpen,
    CommandSyntax,
    Redefined,
    ConditionUnbalanced,
    ConditionOpen,
    ReplacementLoop,
    RepeatOpen,
    RepeatCount,
    MacroOpen,
    MacroArguments,
    MacroDepth,
    Arithmetic,
    BlockEnd,
    MacroExtra,
    Syntax,
    BadCharacter,
    Nesting,
    TooManyStatements,
    BadNumber,
    ReservedWord,
    TooManyErrors,
    HeaderMissing,
    NameMissing,
    HeaderTwice,
    HeaderLate,
    Redeclared,
    PinTwice,
    PinCount,
    NameTooLong,
    BadList,
    ListTooLong,
    FieldLoop,
    UnknownName,
    IntermediateLoop,
    NotAssignable,
    NodeUnassigned,
    NeverUsed,
    ListLengths,
    ConstantOutside,
    RangeOrder,
    DontCareMisplaced,
    ScalarConstant,
    ScalarExpected,
    ConstantTooLong,
    SecondEquation,
    BadExtension,
    RegisterMix,
    FunctionArguments,
    FunctionDepth,
    AppendSense,
    NoOutputs,
    StateTwice,
    StateBad,
    StateMix,
    OneHotControl,
    TooManyTerms,
    DesignTooLarge,
    ExactFallback,
    XorExpanded,
    Reduced,
    ComplementTooLarge,
    Written,
    CannotWrite,
    OutputMissing,
    DeviceUnknown,
    LibraryUnreadable,
    PlaTooLarge,
    NoVectors,
    LettersUnknown,
    InternalFault,
    Count
};

struct MessageEntry {
    Code Id;
    std::string_view Number;  // "ccccss": four digits, the first two the family, and the stage
    Level Severity;
    std::string_view Message;      // line 1 of its record in TeskErr.txt, behind the number and a blank
    std::string_view Description;  // line 2, behind the level, "." and a blank
    std::string_view Information;  // line 3
};

std::span<const MessageEntry> MessageTable();
const MessageEntry& Entry(Code code);
// Whether a line of the message list is of this code.
bool IsOf(Code code, std::string_view line);
// The three lines of every entry, each ended by CR LF, as TeskErr.txt holds them.
std::string MessageData();

std::string_view LevelName(Level level);  // "Information", "Warning", "Error"

}  // namespace front
