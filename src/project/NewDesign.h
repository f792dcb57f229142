#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "session/App.h"

// The skeleton of a new design, from the fields of frmNewDesign to the text of a document.
namespace project {

// The text boxes of frmNewDesign.
struct DesignFields {
    std::string ProjectName = "Name";
    std::string PartNo = "00";
    std::string ProjDate = {};  // short format of the system
    std::string Revision = "01";
    std::string Designer = "Engineer";
    std::string Company = {};
    std::string Assembly = "None";
    std::string Location = {};
    std::string Device = "virtual";
};

struct PinCounts {
    std::int16_t Inputs = 0;
    std::int16_t Outputs = 0;
    std::int16_t Pinnodes = 0;
};

// What is wrong with a design's name, for a box; nothing if it is right.
std::optional<std::string> DesignNameFault(std::string_view name);

// The number at the start of an answer, rounded, halves to even; 0 without one and for a cancelled box.
// Error 6 out of 16 bits.
std::int16_t CountFromAnswer(const std::optional<std::string>& answer);

// Asks for the counts one by one. Error 6 as above.
PinCounts AskPinCounts(platform::Dialogs& boxes);

// Base path of a new design of this name, upper case.
std::string DesignPath(const session::Session& state, std::string_view name);

// The lines of the skeleton, each with its CR LF. A section without pins is left out, one with a negative
// count has its header alone.
std::string TemplateText(const DesignFields& fields, const PinCounts& counts);

// `OK_Click`: false if the dialog stays open, with the reason told. `showDialog` shows or hides the dialog.
bool AcceptNewDesign(session::App& app, const std::function<void(bool)>& showDialog,
                     const DesignFields& fields);

// `WriteTemplate`: gives each document whose ID is the count of documents the design's name and the skeleton.
// In the ordinary case that is the one just made.
void WriteTemplate(session::App& app, const DesignFields& fields, const PinCounts& counts);

}  // namespace project
