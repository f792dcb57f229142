#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Dialogs.h"
#include "session/Session.h"

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

// What frmNewDesign asks of the windows around it.
class NewDesignDoors {
  public:
    virtual ~NewDesignDoors() = default;

    virtual void SetDialogVisible(bool visible) = 0;  // frmNewDesign itself
    virtual void ShowProject() = 0;
    virtual void OpenDocument() = 0;  // a new untitled one
    virtual void HighlightSyntax(session::Document& document) = 0;
    virtual void UpdateMru(const std::string& path) = 0;
};

struct NewDesignDesk {
    session::Session& State;
    platform::Dialogs& Boxes;
    NewDesignDoors& Doors;
};

// `OK_Click`: false if the dialog stays open, with the reason told.
bool AcceptNewDesign(const NewDesignDesk& desk, const DesignFields& fields);

// `WriteTemplate`: gives each document whose ID is the count of documents the design's name and the skeleton.
// In the ordinary case that is the one just made.
void WriteTemplate(const NewDesignDesk& desk, const DesignFields& fields, const PinCounts& counts);

}  // namespace project
