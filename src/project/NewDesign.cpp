#include "project/NewDesign.h"

#include <array>
#include <charconv>

#include "base/Number.h"
#include "base/Text.h"
#include "base/modLib.h"

namespace project {
namespace {

constexpr std::size_t maxNameLength = 32;
constexpr const char* lineEnd = "\r\n";

// As users fill them in: inputs and outputs alike.
constexpr const char* pinLine =
    "PIN     =                         ; /*                                 */ \r\n";
constexpr const char* pinnodeLine =
    "PINNODE     =                      ; /*                                 */ \r\n";

struct HeaderLine {
    const char* Keyword;
    std::string DesignFields::*Field;
};
constexpr std::array header = {
    HeaderLine{"Name     ", &DesignFields::ProjectName}, HeaderLine{"PartNo   ", &DesignFields::PartNo},
    HeaderLine{"Date     ", &DesignFields::ProjDate},    HeaderLine{"Revision ", &DesignFields::Revision},
    HeaderLine{"Designer ", &DesignFields::Designer},    HeaderLine{"Company  ", &DesignFields::Company},
    HeaderLine{"Assembly ", &DesignFields::Assembly},    HeaderLine{"Location ", &DesignFields::Location},
    HeaderLine{"Device   ", &DesignFields::Device},
};

struct Section {
    const char* Title;  // of the box that asks for the count
    const char* Question;
    const char* Heading;
    const char* Line;
    std::int16_t PinCounts::*Count;
};
constexpr std::array sections = {
    Section{"INPUT PINS", "How many input pins are there",
            "/* *************** INPUT PINS *********************/", pinLine, &PinCounts::Inputs},
    Section{"OUTPUT PINS", "How many output pins are there",
            "/* *************** OUTPUT PINS *********************/", pinLine, &PinCounts::Outputs},
    Section{"PINNODES", "How many pinnodess are there",
            "/* *************** PINNODES    *********************/", pinnodeLine, &PinCounts::Pinnodes},
};

// The longest number that a text begins with; empty without one.
std::string_view NumberAtStart(std::string_view text) {
    std::string_view unsignedPart = text;
    if (unsignedPart.starts_with('-') || unsignedPart.starts_with('+')) unsignedPart.remove_prefix(1);
    // Digits or a point: the conversion would take words too.
    if (unsignedPart.empty() || !(base::IsDigitChar(unsignedPart[0]) || unsignedPart[0] == '.')) return {};
    double value = 0;
    const char* const end = unsignedPart.data() + unsignedPart.size();
    const auto result = std::from_chars(unsignedPart.data(), end, value);
    if (result.ec == std::errc::invalid_argument) return {};
    return text.substr(0, static_cast<std::size_t>(result.ptr - text.data()));
}

}  // namespace

std::optional<std::string> DesignNameFault(std::string_view name) {
    if (name.size() > maxNameLength) return "The design name is limited to 32 characters.";
    if (base::Trim(name).empty()) return "A design name is required.";
    return std::nullopt;
}

std::int16_t CountFromAnswer(const std::optional<std::string>& answer) {
    const std::string text = base::Trim(answer.value_or(""));
    const std::string_view number = NumberAtStart(text);
    return number.empty() ? std::int16_t{0} : base::TextToInt16(number);
}

PinCounts AskPinCounts(platform::Dialogs& boxes) {
    PinCounts counts;
    for (const Section& section : sections) {
        counts.*section.Count = CountFromAnswer(boxes.InputBox(section.Question, section.Title, "0"));
    }
    return counts;
}

std::string DesignPath(const session::Session& state, std::string_view name) {
    return base::Upper(state.WorkDir + "\\" + std::string(name));
}

std::string TemplateText(const DesignFields& fields, const PinCounts& counts) {
    std::string text;
    for (const HeaderLine& line : header) text += line.Keyword + fields.*line.Field + " ;" + lineEnd;
    for (const Section& section : sections) {
        const std::int16_t count = counts.*section.Count;
        if (count == 0) continue;
        text += std::string(lineEnd) + section.Heading + lineEnd;
        for (std::int16_t i = 0; i < count; ++i) text += section.Line;
    }
    for (int i = 0; i < 4; ++i) text += lineEnd;
    return text;
}

bool AcceptNewDesign(session::App& app, const std::function<void(bool)>& showDialog,
                     const DesignFields& fields) {
    if (const auto fault = DesignNameFault(fields.ProjectName)) {
        app.Host.Boxes.Say(*fault);
        return false;
    }
    const PinCounts counts = AskPinCounts(app.Host.Boxes);
    if (app.State.sProject.empty()) {
        showDialog(false);
        app.State.sProject = DesignPath(app.State, fields.ProjectName);
        app.Hall.Project->ShowProject();
        showDialog(true);
    }
    app.Hall.Editor->OpenDocument();
    WriteTemplate(app, fields, counts);
    showDialog(false);
    return true;
}

void WriteTemplate(session::App& app, const DesignFields& fields, const PinCounts& counts) {
    const std::string path = DesignPath(app.State, fields.ProjectName) + ".PLD";
    const auto count = static_cast<std::int64_t>(app.State.Documents.Count());
    for (session::Document* document : app.State.Documents.All()) {
        if (document->ID != count) continue;
        document->SetFile(path, path);
        {
            platform::RichTextBox& text = document->txtText();
            const platform::HiddenScope hidden(text);
            // Behind what is there: an ID may have been given twice, and then this is no new text.
            text.SetText(text.Text() + TemplateText(fields, counts));
            app.Hall.Editor->HighlightSyntax(*document);
        }
        document->BringToFront();
        app.Hall.Editor->UpdateMru(document->FileName());
    }
}

}  // namespace project
