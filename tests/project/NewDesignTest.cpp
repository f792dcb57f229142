#include "project/NewDesign.h"

#include <gtest/gtest.h>

#include "base/RunTimeError.h"
#include "support/MemoryFiles.h"
#include "support/Rooms.h"

namespace {

const std::string header =
    "Name     Count ;\r\nPartNo   00 ;\r\nDate     11/23/26 ;\r\nRevision 01 ;\r\nDesigner Engineer ;\r\n"
    "Company   ;\r\nAssembly None ;\r\nLocation  ;\r\nDevice   virtual ;\r\n";
const std::string pin = "PIN     =                         ; /*                                 */ \r\n";
const std::string pinnode = "PINNODE     =                      ; /*                                 */ \r\n";
const std::string inputs = "\r\n/* *************** INPUT PINS *********************/\r\n";
const std::string outputs = "\r\n/* *************** OUTPUT PINS *********************/\r\n";
const std::string pinnodes = "\r\n/* *************** PINNODES    *********************/\r\n";
const std::string end = "\r\n\r\n\r\n\r\n";

project::DesignFields Fields() { return {.ProjectName = "Count", .ProjDate = "11/23/26"}; }

class NewDesign : public testing::Test, protected doubles::Hall {
  protected:
    session::Session state_;
    doubles::MemoryFiles files_;
    doubles::Desktop desktop_{files_};
    session::App app_{state_, desktop_.Host, *this};
    doubles::Dialogs& boxes_ = desktop_.Boxes;
    doubles::Document made_;

    NewDesign() { state_.WorkDir = "C:\\Work"; }
    bool Accept(const project::DesignFields& fields) {
        const auto show = [this](bool visible) { Calls.push_back(visible ? "show" : "hide"); };
        return project::AcceptNewDesign(app_, show, fields);
    }
    using Hall::OpenDocument;
    session::Document* OpenDocument() override {
        Hall::OpenDocument();
        made_.ID = static_cast<std::int16_t>(state_.Documents.Count() + 1);
        state_.Documents.Add(made_);
        return &made_;
    }
};

}  // namespace

TEST_F(NewDesign, TheSkeletonToTheByte) {
    EXPECT_EQ(pin.size(), 74u + 2u);
    EXPECT_EQ(pinnode.size(), 75u + 2u);
    const std::pair<project::PinCounts, std::string> cases[] = {
        {{}, ""},
        {{2, 1, 1}, inputs + pin + pin + outputs + pin + pinnodes + pinnode},
        {{0, -1, 2}, outputs + pinnodes + pinnode + pinnode},
    };
    for (const auto& [counts, sections] : cases) {
        EXPECT_EQ(project::TemplateText(Fields(), counts), header + sections + end);
    }
    EXPECT_EQ(project::TemplateText(Fields(), {32767, 0, 0}).size(),
              header.size() + inputs.size() + 32767 * pin.size() + end.size());
}

TEST_F(NewDesign, AnswersBecomeCounts) {
    const std::pair<std::optional<std::string>, int> cases[] = {
        {std::nullopt, 0}, {"", 0},    {"abc", 0},  {"12abc", 12}, {"  7 ", 7},
        {"-3", -3},        {"+4", 4},  {"2.5", 2},  {"3.5", 4},    {".6x", 1},
        {".", 0},          {"-", 0},   {"inf", 0},  {"nan", 0},    {"1e3", 1000},
        {"1e", 1},         {"1 2", 1}, {"0x10", 0}, {"1e-999", 0}, {"32767.4", 32767},
    };
    for (const auto& [answer, count] : cases) {
        EXPECT_EQ(project::CountFromAnswer(answer), count) << answer.value_or("(cancelled)");
    }
    for (const char* answer : {"32768", "-32769", "32767.5", "1e999", "99999999999999999999"}) {
        EXPECT_THROW(project::CountFromAnswer(answer), base::RunTimeError) << answer;
    }
}

TEST_F(NewDesign, AWrongNameKeepsTheDialogOpen) {
    const std::pair<std::string, const char*> cases[] = {
        {std::string(33, 'A'), "The design name is limited to 32 characters."},
        {std::string(33, ' '), "The design name is limited to 32 characters."},
        {"", "A design name is required."},
        {"   ", "A design name is required."},
    };
    for (const auto& [name, text] : cases) {
        EXPECT_FALSE(Accept({.ProjectName = name}));
        EXPECT_EQ(boxes_.LastText(), text);
    }
    boxes_.Inputs = {"40000"};
    EXPECT_THROW(Accept(Fields()), base::RunTimeError);
    EXPECT_TRUE(Calls.empty());
    EXPECT_EQ(state_.sProject, "");
    EXPECT_TRUE(Accept({.ProjectName = std::string(32, 'A')}));
}

TEST_F(NewDesign, OkMakesADocumentOfTheSkeleton) {
    boxes_.Inputs = {"1", "2x", std::nullopt};
    EXPECT_TRUE(Accept(Fields()));
    EXPECT_EQ(Calls, (std::vector<std::string>{"hide", "ShowProject", "show", "OpenDocument",
                                               "HighlightSyntax", "UpdateMru C:\\WORK\\COUNT.PLD", "hide"}));
    EXPECT_EQ(made_.Caption(), "C:\\WORK\\COUNT.PLD");
    EXPECT_EQ(made_.FileName(), "C:\\WORK\\COUNT.PLD");
    EXPECT_EQ(made_.Box.Content, header + inputs + pin + outputs + pin + pin + end);
}

// Closed documents leave numbers behind that are given again: then the skeleton may meet another document.
TEST_F(NewDesign, TheDocumentIsFoundByTheCount) {
    doubles::Document first;
    doubles::Document second;
    first.ID = 2;
    second.ID = 7;
    second.Box.Content = first.Box.Content = "text\r\n";
    state_.Documents.Add(first);
    state_.Documents.Add(second);
    state_.sProject = "C:\\WORK\\OTHER";
    project::WriteTemplate(app_, Fields(), {});
    EXPECT_EQ(first.Caption(), "C:\\WORK\\COUNT.PLD");
    EXPECT_EQ(first.Box.Content, "text\r\n" + header + end);
    EXPECT_EQ(second.Box.Content, "text\r\n");
    EXPECT_EQ(state_.sProject, "C:\\WORK\\OTHER");
}
