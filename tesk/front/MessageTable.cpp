#include <array>
#include <string>

#include "front/Messages.h"

namespace front {

namespace {

using enum Level;

constexpr std::array kTable{
    MessageEntry{Code::DesignUnreadable, "0101tx", Error, "Design file cannot be read",
                 "The design file is missing, locked or too large.",
                 "Check that the .PLD file exists beside the project and can be opened."},
    MessageEntry{Code::IncludeMissing, "0102tx", Error, "Include file not found",
                 "A file named by $INCLUDE cannot be read.",
                 "Include files are looked for in the folder of the file that names them."},
    MessageEntry{Code::IncludeLoop, "0103tx", Error, "File includes itself",
                 "An $INCLUDE leads back to a file that is being read.",
                 "Remove the $INCLUDE, or put the shared text into a file of its own."},
    MessageEntry{Code::IncludeDepth, "0104tx", Error, "Include files nested too deeply",
                 "More than 16 files include one another.", "Include the files from the design itself."},
    MessageEntry{Code::FileTooBig, "0105tx", Error, "File too large", "A source file holds more than 16 MB.",
                 "Split the design."},
    MessageEntry{Code::LineTooLong, "0106tx", Error, "Line too long", "A line holds more than 2 MB.",
                 "Break the line; a statement may run over many lines."},
    MessageEntry{Code::TextTooBig, "0107tx", Error, "Expanded text too large",
                 "The text after includes, repetitions and macros exceeds 400000 lines, 48 MB or 2000000 "
                 "processed lines.",
                 "Look for a $REPEAT with a wrong bound or for macros that call one another."},
    MessageEntry{Code::CommentOpen, "0108tx", Error, "Comment not closed",
                 "A comment is opened and the text ends before it is closed.",
                 "Close the comment with */. Comments do not nest."},
    MessageEntry{Code::CommandSyntax, "0201tx", Error, "Preprocessor command not understood",
                 "A $ command lacks its name, its list or its end.",
                 "Compare the line with the form of the command in the language reference."},
    MessageEntry{Code::Redefined, "0202tx", Warning, "Name defined anew",
                 "$DEFINE gives a name another text than it has.",
                 "The new text holds from here on. Use $UNDEF first if that is meant."},
    MessageEntry{Code::ConditionUnbalanced, "0203tx", Error, "$ELSE or $ENDIF without $IFDEF",
                 "No condition is open here, or it has had its $ELSE.",
                 "Conditions open and close within one file, macro or repetition."},
    MessageEntry{Code::ConditionOpen, "0204tx", Error, "$IFDEF without $ENDIF",
                 "The condition is still open where its file, macro or repetition ends.", "Add the $ENDIF."},
    MessageEntry{Code::ReplacementLoop, "0205tx", Error, "Replacement text too long",
                 "Defined names on this line lead to more than 2 MB of text or to 100000 replacements.",
                 "Look for names that are defined by one another."},
    MessageEntry{Code::RepeatOpen, "0301tx", Error, "$REPEAT without $REPEND",
                 "The repetition is still open where its file or macro ends.", "Add the $REPEND."},
    MessageEntry{Code::RepeatCount, "0302tx", Error, "Too many repetitions",
                 "A $REPEAT takes more than 4096 values.", "Check the bounds; they are decimal."},
    MessageEntry{Code::MacroOpen, "0303tx", Error, "$MACRO without $MEND",
                 "The definition is still open at the end of the text.", "Add the $MEND."},
    MessageEntry{Code::MacroArguments, "0304tx", Error, "Too few values for macro",
                 "A macro is called with fewer values than it has names.",
                 "Give a value for each name; NC stands for no connection."},
    MessageEntry{Code::MacroDepth, "0305tx", Error, "Macros nested too deeply",
                 "More than 16 macro calls and repetitions lie inside one another.",
                 "A macro cannot call itself."},
    MessageEntry{
        Code::Arithmetic, "0306tx", Error, "Arithmetic in error",
        "An expression in braces or in a bound divides by zero, leaves the range or is no expression.",
        "Decimal numbers, + - * / %, parentheses and the names of open repetitions may stand there."},
    MessageEntry{Code::BlockEnd, "0307tx", Error, "$REPEND or $MEND without its start",
                 "No repetition or macro definition is open here.",
                 "Remove the line or add the $REPEAT or $MACRO."},
    MessageEntry{Code::MacroExtra, "0308tx", Warning, "More values than the macro takes",
                 "A macro is called with more values than it has names.",
                 "The values that are left over are not used."},
    MessageEntry{Code::Syntax, "1001ta", Error, "Statement not understood",
                 "Something else stands here than the statement needs.",
                 "The statement is left out; the text is read on behind the next semicolon."},
    MessageEntry{Code::BadCharacter, "1002ta", Error, "Character not understood",
                 "A character has no meaning outside comments and header texts.",
                 "Letters of names are A to Z, a to z, digits and the underscore."},
    MessageEntry{Code::Nesting, "1003ta", Error, "Nested too deeply", "Parentheses lie more than 128 deep.",
                 "Give parts of the expression names of their own."},
    MessageEntry{Code::TooManyStatements, "1004ta", Error, "Too many statements",
                 "The design has more than 200000 statements.", "Split the design."},
    MessageEntry{
        Code::BadNumber, "1005ta", Error, "Number not understood", "A digit does not belong to the base.",
        "Bases are 'b' 'o' 'd' 'h'; without one a number is hexadecimal. X is a digit of bases 2, 8 and 16."},
    MessageEntry{Code::ReservedWord, "1006ta", Error, "Reserved word",
                 "A keyword of the language stands where a name is needed.",
                 "Choose another name; keywords are the same in any case."},
    MessageEntry{Code::TooManyErrors, "1007ta", Information, "Too many errors",
                 "The run stops after 100 errors.",
                 "Mend the first ones; the others often follow from them."},
    MessageEntry{
        Code::HeaderMissing, "1101ta", Warning, "Missing in the header",
        "The design's header lacks statements.",
        "Name, Partno, Date, Revision, Designer, Company, Assembly, Location and Device make the header."},
    MessageEntry{Code::NameMissing, "1102ta", Error, "Design has no Name",
                 "The header lacks the Name statement, or it is empty.",
                 "Begin the design with Name, a text and a semicolon."},
    MessageEntry{Code::HeaderTwice, "1103ta", Warning, "Header statement given twice",
                 "The same header statement stands in the design more than once.", "The last one holds."},
    MessageEntry{Code::HeaderLate, "1104ta", Warning, "Header statement behind a declaration",
                 "Header statements stand before the first declaration.", "It is taken all the same."},
    MessageEntry{Code::Redeclared, "1110ta", Error, "Name declared twice",
                 "The name is taken by a pin, a node, a field or a function.",
                 "Names are case-sensitive; each stands for one thing."},
    MessageEntry{Code::PinTwice, "1111ta", Error, "Number used twice",
                 "Two pins or two pinnodes are declared with one number.",
                 "Give each its own number, or none to let the fitter choose."},
    MessageEntry{Code::PinCount, "1112ta", Error, "Numbers and names differ in count",
                 "A declaration lists more numbers than names or fewer.",
                 "Each name takes one number, in the order of the lists."},
    MessageEntry{Code::NameTooLong, "1113ta", Error, "Name too long", "A name has more than 31 characters.",
                 "Shorten the name."},
    MessageEntry{Code::BadList, "1114ta", Error, "Range of names not understood",
                 "Both ends of a range must be names of one stem with a number from 0 to 31.",
                 "[A3..0] and [A3..A0] are A3, A2, A1, A0."},
    MessageEntry{Code::ListTooLong, "1115ta", Error, "List too long", "A list has more than 256 members.",
                 "Split the list."},
    MessageEntry{Code::FieldLoop, "1116ta", Error, "Field contains itself",
                 "The list of a field leads back to the field.",
                 "A field may name other fields, in any order, but not itself."},
    MessageEntry{Code::UnknownName, "1201ta", Error, "Unknown name",
                 "The name is neither declared nor on the left of an equation.",
                 "Names are case-sensitive. The nearest known name is told."},
    MessageEntry{Code::IntermediateLoop, "1202ta", Error, "Variable defined by itself",
                 "An intermediate variable depends on itself.",
                 "Declare it as a PIN, PINNODE or NODE if feedback is meant."},
    MessageEntry{Code::NotAssignable, "1203ta", Error, "Nothing can be assigned here",
                 "The name on the left is no variable, or not one that the statement can use.",
                 "Equations assign to pins, nodes and intermediate variables; state machines need declared "
                 "registers."},
    MessageEntry{Code::NodeUnassigned, "1204ta", Warning, "Node has no equation",
                 "A node is used and nothing is assigned to it.",
                 "It counts as an input that nothing drives."},
    MessageEntry{Code::NeverUsed, "1205ta", Warning, "Variable never used",
                 "An intermediate variable is defined and no equation uses it.",
                 "Check the spelling against the declarations: a name that is not declared becomes an "
                 "intermediate variable."},
    MessageEntry{
        Code::ListLengths, "1301ta", Error, "Lists differ in length",
        "Lists that are taken member by member have different lengths.",
        "Both sides need the same number of members, or a single name that stands for every member."},
    MessageEntry{Code::ConstantOutside, "1302ta", Warning, "Constant reaches beyond the list",
                 "The constant has a 1 where the list has no member.",
                 "The bit is left out. Members with indices of one stem have their index as weight."},
    MessageEntry{Code::RangeOrder, "1303ta", Error, "Range runs backwards",
                 "The lower bound is greater than the upper one.", "Write [low..high]."},
    MessageEntry{Code::DontCareMisplaced, "1304ta", Error, "Don't-care digit not possible here",
                 "X can stand in comparisons and in tables only.", "Write 0 or 1."},
    MessageEntry{Code::ScalarConstant, "1305ta", Error, "Constant is neither 0 nor 1",
                 "A number meets a single variable or no variable at all.",
                 "Single variables take 0 and 1; larger numbers meet lists and fields."},
    MessageEntry{Code::ScalarExpected, "1306ta", Error, "List where a single value is needed",
                 "A condition or an argument is a list.",
                 "Fold it with :& :# or :$ or compare it with a constant."},
    MessageEntry{Code::ConstantTooLong, "1307ta", Error, "Number too long",
                 "A number has more than 256 binary digits, or a decimal one more than 64.",
                 "Shorten the number."},
    MessageEntry{Code::SecondEquation, "1401ta", Error, "Second equation",
                 "The name and extension have an equation already.",
                 "Use APPEND to add a term to what stands."},
    MessageEntry{Code::BadExtension, "1402ta", Error, "Extension not possible",
                 "The extension does not exist or has no place here.",
                 "See the table of extensions in the language reference."},
    MessageEntry{
        Code::RegisterMix, "1403ta", Error, "Inputs do not belong together",
        "A variable has the inputs of two kinds of register, or a register input beside a plain equation.",
        "Use one of .D, .T, .J with .K, .S with .R, .L, or the bare name."},
    MessageEntry{Code::FunctionArguments, "1404ta", Error, "Function not used as it is defined",
                 "The number of values differs, the function gets no value, or its name stands alone.",
                 "Call it as name(value, ...); inside, name = expression gives the value."},
    MessageEntry{Code::FunctionDepth, "1405ta", Error, "Functions nested too deeply",
                 "A function calls itself, or more than 16 calls lie inside one another.",
                 "Functions are put in place where they are called and cannot recur."},
    MessageEntry{Code::AppendSense, "1406ta", Error, "APPEND of the other sense",
                 "APPEND !name adds to an equation of name, or the other way round.",
                 "Write the APPEND in the sense of the equation."},
    MessageEntry{Code::NoOutputs, "1407ta", Warning, "Design has no outputs",
                 "No pin or node has an equation.", "Declare the outputs with PIN, PINNODE or NODE."},
    MessageEntry{Code::StateTwice, "1501ta", Error, "State described twice",
                 "Two PRESENT of one state machine have the same value.",
                 "Put all transitions of a state behind one PRESENT."},
    MessageEntry{Code::StateBad, "1502ta", Warning, "Transition to a state that is not described",
                 "NEXT names a value without a PRESENT.",
                 "From there a D machine goes to 0; the others hold."},
    MessageEntry{Code::StateMix, "1503ta", Warning, "Plain NEXT beside IF",
                 "The plain NEXT holds whatever the IF says, and the bits of both are or-ed.",
                 "Write DEFAULT NEXT if it is meant for all other cases."},
    MessageEntry{
        Code::OneHotControl, "1504ta", Error, "State machine cannot be one-hot",
        "The registers of the field are preset, or are not all clocked and reset alike.",
        "Give all members of the field the same .CK, .CE, .AR and .SR and no preset, or take option o off."},
    MessageEntry{
        Code::TooManyTerms, "2001tb", Error, "Too many product terms",
        "An equation grows beyond the limit before reduction.",
        "Exclusive or of many names doubles the terms with each. Give parts of it nodes of their own."},
    MessageEntry{Code::DesignTooLarge, "2002tb", Error, "Design too large",
                 "The expressions of the design need more room or work than the limit.",
                 "Give large common parts nodes of their own."},
    MessageEntry{Code::ExactFallback, "3001tm", Warning, "Exact minimization given up",
                 "A variable is too large for level m2; m4 was used, in a very large design m1.",
                 "Set MIN for the variable to a heuristic level to avoid the attempt."},
    MessageEntry{Code::XorExpanded, "3002tm", Information, "Exclusive or expanded",
                 "Option kx was given and the device has no gates for exclusive or.",
                 "The equations were made sums of product terms."},
    MessageEntry{Code::Reduced, "3003tm", Information, "Reduced", "What the reduction came to.",
                 "The .DOC file with option x lists the product terms."},
    MessageEntry{Code::ComplementTooLarge, "3004tm", Warning, "Complement too large",
                 "Option kd was given; these complements need too much work or more than 32768 terms.",
                 "The sums stay as they are written. The larger ones of a large design are left out first."},
    MessageEntry{Code::Written, "4000tc", Information, "Written",
                 "The run's output files and the device that they are for.", "They stand beside the design."},
    MessageEntry{Code::CannotWrite, "4001tc", Error, "Output file cannot be written",
                 "The file is locked, or the folder or disk refuses it.",
                 "Close other programs that use the file and run again."},
    MessageEntry{Code::OutputMissing, "4002tc", Warning, "Output not written",
                 "An output was asked for that this device or this compiler cannot give.",
                 "Take the option off, or choose a device that has it."},
    MessageEntry{Code::DeviceUnknown, "4003tc", Error, "Device not known",
                 "The device library has no record of the mnemonic.",
                 "Choose a device of the library, or virtual for a run without a device."},
    MessageEntry{Code::LibraryUnreadable, "4005tc", Error, "Device library cannot be read",
                 "The library file is missing, locked or too large.",
                 "Choose the library with Options, Compiler, Library; its usual name is tesk.dl."},
    MessageEntry{Code::PlaTooLarge, "4004tc", Warning, "PLA file too large", "The table would exceed 64 MB.",
                 "Split the design."},
    MessageEntry{Code::NoVectors, "4201tc", Warning, "No vectors to simulate",
                 "The simulator was asked for and the design has no .SI file.",
                 "Write a .SI file beside the design or take the option off."},
    MessageEntry{
        Code::LettersUnknown, "4202tc", Warning, "Options of the last compile are not known",
        "The simulation made the fuse map anew; the secure fuse, one-hot states, reduction and name may "
        "differ from the one before.",
        "Compile the design, then simulate again."},
    MessageEntry{Code::InternalFault, "9000tc", Error, "Internal fault",
                 "The tool chain failed by a fault of its own; the run ends here.",
                 "The design need not be wrong. Keep it and report it with this line."},
};
static_assert(kTable.size() == static_cast<std::size_t>(Code::Count));

}  // namespace

std::span<const MessageEntry> MessageTable() { return kTable; }

const MessageEntry& Entry(Code code) { return kTable[static_cast<std::size_t>(code)]; }

bool IsOf(Code code, std::string_view line) {
    return line.substr(0, 7) == "[" + std::string(Entry(code).Number);
}

std::string_view LevelName(Level level) {
    return level == Error ? "Error" : level == Warning ? "Warning" : "Information";
}

std::string MessageData() {
    std::string text;
    for (const MessageEntry& entry : kTable) {
        text += std::string(entry.Number) + " " + std::string(entry.Message) + "\r\n";
        text += std::string(LevelName(entry.Severity)) + ". " + std::string(entry.Description) + "\r\n";
        text += std::string(entry.Information) + "\r\n";
    }
    return text;
}

}  // namespace front
