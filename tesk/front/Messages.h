#pragma once

#include <span>
#include <string_view>

#include "model/Message.h"

namespace front {

using model::Message;
using model::MessageEntry;
using model::Severity;

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
    PropertyUnknown,
    PropertyUnused,
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

std::span<const MessageEntry> MessageTable();
const MessageEntry& Entry(Code code);
// Whether a line of the message list is of this code.
bool IsOf(Code code, std::string_view line);

}  // namespace front
