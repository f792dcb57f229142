#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "session/App.h"

// The compiler option string CompilerFlags: tokens without separators, each one letter, two letters or "m"
// with a digit. One table drives parser, writer, record and window.
namespace toolchain {

// The option record: it outlives the window frmCompiler, so what was set once in a run of the program stays
// set until the user's next OK. 0 off, 1 on, 2 greyed (does not count).
struct CompilerOptions {
    std::int16_t Jedec = 0;
    std::int16_t Ascii = 0;
    std::int16_t Hl = 0;
    std::int16_t Fuse = 0;
    std::int16_t Equations = 0;
    std::int16_t Absolute = 0;
    std::int16_t List = 0;
    std::int16_t Expanded = 0;
    std::int16_t Pdif = 0;
    std::int16_t Pla = 0;
    std::int16_t Palasm = 0;
    std::int16_t Edif = 0;
    std::int16_t Xnf = 0;
    std::int16_t Qdif = 0;
    std::int16_t Minimization = 0;  // index of optMinimization
    std::int16_t Best = 0;
    std::int16_t Demorgan = 0;
    std::int16_t Share = 0;
    std::int16_t Keep = 0;
    std::int16_t Secure = 0;
    std::int16_t Deactivate = 0;
    std::int16_t Simulate = 0;
    std::int16_t ViewSimulation = 0;
    std::int16_t Onehot = 0;
    std::int16_t Name = 0;
    bool MinimizationSeen = false;  // the string last parsed carries "m"
};

enum class CompilerTab { OutputFiles, Minimization, Optimization, General, Library, Device };

// One token, in the order of writing.
struct CompilerOption {
    std::string_view Token;  // "m" is followed by the digit of its field
    std::int16_t CompilerOptions::*Field;
    const char* Control;
    CompilerTab Tab;
    const char* Frame;  // the frame on the tab, empty for none
    const char* Caption;
    const char* Tip;
};

std::span<const CompilerOption> CompilerOptionTable();

// The frames of the tab OutputFiles with their options.
std::vector<session::OutputFrame> OutputFrames();

inline constexpr const char* MinimizationCaptions[] = {"None", "Quick", "Quine-McCluskey", "Presto",
                                                       "Expresso"};

// Sets the fields of the tokens found and never clears one; only MinimizationSeen starts anew. Not the mirror
// of the writer: "kb", "kd", "ks" and "kx" are read as their second letters. An "m" without a digit is
// error 13.
void ParseCompilerFlags(std::string_view flags, CompilerOptions& options);

std::string WriteCompilerFlags(const CompilerOptions& options);

// Takes the fields of one tab over from the controls' values.
void ReadCompilerTab(CompilerTab tab, const CompilerOptions& controls, CompilerOptions& options);

// The button of optMinimization that the window shows: Quick if the string had no "m".
std::int16_t ShownMinimization(const CompilerOptions& options);

// Asks for a device catalog in the place of one that is not there. False, with DeviceCatalog empty, on
// cancel.
bool ShowCatalog(session::App& app);

}  // namespace toolchain
