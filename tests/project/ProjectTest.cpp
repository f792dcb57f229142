#include "project/Project.h"

#include <gtest/gtest.h>

#include "base/RunTimeError.h"
#include "support/MemoryFiles.h"
#include "support/Rooms.h"

namespace {

using Calls = std::vector<std::string>;

// Notes what the project asks of its windows, between the calls of the hall.
class Windows : public project::ProjectWindows {
  public:
    explicit Windows(Calls& log) : Log(log) {}
    Calls& Log;
    bool Open = false;
    bool Refuses = false;
    bool CancelsNewDesign = false;

    bool IsOpen() const override { return Open; }
    void HideProject() override {}
    bool UnloadProject() override {
        Log.push_back("UnloadProject");
        return !Refuses;
    }
    bool ShowNewDesign() override {
        Log.push_back("ShowNewDesign");
        return !CancelsNewDesign;
    }
};

class Document : public doubles::Document {
  public:
    Document(session::Session& state, Calls& log, std::int16_t id, const std::string& caption)
        : state_(state), log_(log) {
        ID = id;
        SetCaption(caption);
        state_.Documents.Add(*this);
    }
    bool Refuses = false;
    std::int16_t Takes = 0;  // another that goes with it

    void BringToFront() override { log_.push_back("front " + Caption()); }
    bool Unload() override {
        log_.push_back("unload " + Caption());
        if (!Refuses) state_.Documents.Remove(std::to_string(ID));
        if (Takes != 0) state_.Documents.Remove(std::to_string(Takes));
        return !Refuses;
    }

  private:
    session::Session& state_;
    Calls& log_;
};

class Project : public testing::Test, public doubles::Bench<doubles::MemoryFiles> {
  protected:
    Windows windows_{Hall.Calls};
    project::ProjectDesk desk_{App, windows_};

    Document Open(std::int16_t id, const std::string& caption) { return {State, Hall.Calls, id, caption}; }
    Calls TakeLog() {
        Calls log = std::exchange(Hall.Calls, {});
        for (const std::string& told : std::exchange(Desk.Link.Log, {})) log.push_back(told);
        return log;
    }
};

}  // namespace

TEST_F(Project, AFileGoesToItsToolOrIntoADocument) {
    Desk.Link.Servers = {"Wavrik|frmMain", "Schematic|frmMain", "Stavrik|frmMain"};
    const std::string open = "C:\\W\\A.JED";
    Document document = Open(1, open);
    const struct {
        const char* File;
        platform::Answer Answer;
        Calls Done;
    } cases[] = {
        {"", platform::Answer::Yes, {}},
        {"C:\\W\\A.SI", platform::Answer::Yes, {"Wavrik|frmMain", "Wavrik|frmMain Open C:\\W\\A.SI"}},
        {"C:\\W\\A.sim", platform::Answer::Yes, {"Wavrik|frmMain", "Wavrik|frmMain Open C:\\W\\A.SI"}},
        {"C:\\W\\A.SIM", platform::Answer::No, {"OpenDocument C:\\W\\A.SIM"}},
        {"C:\\W\\A.SO", platform::Answer::Yes, {"OpenDocument C:\\W\\A.SO"}},
        {"C:\\W\\A.SCH", platform::Answer::Yes, {"Schematic|frmMain", "Schematic|frmMain Open C:\\W\\A.SCH"}},
        {"C:\\W\\A.smc", platform::Answer::Yes, {"Stavrik|frmMain", "Stavrik|frmMain Open C:\\W\\A.smc"}},
        {"C:\\W\\A.ABS", platform::Answer::Yes, {}},
        {"C:\\W\\A.JED", platform::Answer::Yes, {"front C:\\W\\A.JED"}},
        {"C:\\W\\A.jed", platform::Answer::Yes, {"OpenDocument C:\\W\\A.jed"}},
    };
    for (const auto& c : cases) {
        Desk.Boxes.Answers = {c.Answer};
        project::OpenProjectFile(desk_, c.File);
        EXPECT_EQ(TakeLog(), c.Done) << c.File;
    }
    ASSERT_EQ(Desk.Boxes.Shown.size(), 3u);
    EXPECT_EQ(Desk.Boxes.LastText(), "Open the Simulator Input file with Wavrik?");
    EXPECT_EQ(Desk.Boxes.Shown.back().Title, "Open With Wavrik ...");
    EXPECT_EQ(Desk.Boxes.Shown.back().Choice, platform::Buttons::YesNo);
}

TEST_F(Project, AToolThatDoesNotRunIsStarted) {
    State.InstallRoot = "C:\\K";
    project::OpenProjectFile(desk_, "C:\\W\\A.SCH");
    EXPECT_EQ(Desk.Programs.Started, Calls{"C:\\K\\Schematic\\Schematic C:\\W\\A.SCH  /NoSplash"});
    Desk.Programs.FailWith = base::errFileNotFound;
    project::OpenProjectFile(desk_, "C:\\W\\A.SCH");
    Desk.Link.Servers = {"Schematic|frmMain"};
    Desk.Link.OnCommand = [](const std::string&) { return platform::errLinkSilent; };
    Desk.Programs.FailWith = 0;
    project::OpenProjectFile(desk_, "C:\\W\\A.SCH");
    EXPECT_EQ(Desk.Programs.Started.size(), 1u);
    EXPECT_TRUE(Desk.Boxes.Shown.empty());
}

TEST_F(Project, LoadingTellsTheMenusAndClosingTakesItsDocuments) {
    Document first = Open(1, "C:\\W\\ADD.PLD");
    Document other = Open(2, "C:\\W\\SUB.PLD");
    Document longer = Open(3, "C:\\X\\ADDER.PLD");
    Document last = Open(4, "C:\\W\\ADD.SI");
    project::ProjectLoaded(App);
    EXPECT_TRUE(first.ShowsProject() && last.ShowsProject());

    longer.Refuses = true;
    EXPECT_FALSE(project::QueryUnloadProject(App, "C:\\W\\ADD"));
    EXPECT_EQ(TakeLog(), (Calls{"unload C:\\W\\ADD.PLD", "unload C:\\X\\ADDER.PLD"}));

    longer.Refuses = false;
    longer.Takes = 4;
    EXPECT_TRUE(project::QueryUnloadProject(App, "C:\\W\\ADD"));
    EXPECT_EQ(TakeLog(), Calls{"unload C:\\X\\ADDER.PLD"});
    EXPECT_TRUE(project::QueryUnloadProject(App, ""));
    EXPECT_EQ(State.Documents.All(), std::vector<session::Document*>{&other});
}

TEST_F(Project, OpeningLeavesTheProjectOnceAFileIsChosen) {
    Document open = Open(1, "C:\\W\\A.PLD");
    const struct {
        std::optional<std::string> File;
        bool WasOpen;
        bool Refuses;
        Calls Done;
        std::string Box;
        std::string Project;
    } cases[] = {
        {std::nullopt, true, false, {}, "", "OLD"},
        {"", true, false, {}, "", "OLD"},
        {"C:\\W\\B.PLD", true, true, {"UnloadProject"}, "", "OLD"},
        {"C:\\W\\B.pld", true, false, {"UnloadProject", "OpenDocument C:\\W\\B.pld"}, "", ""},
        {"C:\\W\\B.PLD", false, false, {"OpenDocument C:\\W\\B.PLD"}, "", ""},
        {"C:\\W\\B.SI",
         true,
         false,
         {"UnloadProject"},
         "Only design files with .PLD as the file extension can be opened as a project.",
         ""},
        {"C:\\W\\A.PLD", false, false, {}, "File already open in editor. ", ""},
        {"C:\\W\\a.pld", false, false, {"OpenDocument C:\\W\\a.pld"}, "", ""},
    };
    for (const auto& c : cases) {
        State.sProject = "OLD";
        windows_.Open = c.WasOpen;
        windows_.Refuses = c.Refuses;
        Desk.Boxes.Shown.clear();
        Desk.Boxes.Files = {c.File};
        project::mnuProjectOpen_Click(desk_);
        const std::string file = c.File.value_or("(cancelled)");
        EXPECT_EQ(TakeLog(), c.Done) << file;
        EXPECT_EQ(Desk.Boxes.LastText(), c.Box) << file;
        EXPECT_EQ(State.sProject, c.Project) << file;
    }
    EXPECT_EQ(Desk.Boxes.FileRequests.back().Filter, "PLD Files (*.pld)|*.pld");
}

TEST_F(Project, ANewProjectBeginsWithANewDesign) {
    Document document = Open(1, "C:\\W\\A.PLD");
    Hall.Active = &document;
    State.sProject = "OLD";
    windows_.Open = windows_.Refuses = true;
    project::mnuNewProject_Click(desk_);
    EXPECT_EQ(TakeLog(), Calls{"UnloadProject"});
    EXPECT_EQ(State.sProject, "OLD");

    windows_.Refuses = false;
    windows_.CancelsNewDesign = true;
    project::mnuNewProject_Click(desk_);
    EXPECT_EQ(TakeLog(), (Calls{"UnloadProject", "ShowNewDesign"}));
    EXPECT_EQ(State.sProject, "");

    windows_.Open = windows_.CancelsNewDesign = false;
    project::mnuNewProject_Click(desk_);
    EXPECT_EQ(TakeLog(), (Calls{"ShowNewDesign", "ShowProject", "front C:\\W\\A.PLD"}));
    EXPECT_TRUE(document.ShowsProject());
}
