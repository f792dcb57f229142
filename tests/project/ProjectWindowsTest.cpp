#include <gtest/gtest.h>

#include <QDate>
#include <QLocale>
#include <QMainWindow>
#include <QMdiArea>
#include <QTest>
#include <QTreeWidget>
#include <algorithm>
#include <memory>

#include "platform/qt/HostFileSystem.h"
#include "project/ProjectRoom.h"
#include "project/frmNewDesign.h"
#include "project/frmProject.h"
#include "support/Doubles.h"
#include "support/FormUser.h"
#include "support/Rooms.h"

namespace {

using Calls = std::vector<std::string>;

class Frame : public QMainWindow, public platform::qt::MdiFrame {
  public:
    QMdiArea* Area = new QMdiArea(this);
    Frame() { setCentralWidget(Area); }
    QWidget& Window() override { return *this; }
    QMdiSubWindow& AddChild(platform::qt::MdiChild&, QWidget& content) override {
        return *Area->addSubWindow(&content);
    }
    platform::qt::MdiChild* ActiveChild() const override { return nullptr; }
    void ChildTouched() override {}
};

// Goes when it is unloaded, unless it refuses.
class Document : public doubles::Document {
  public:
    Document(session::Session& state, const std::string& caption) : state_(state) {
        ID = static_cast<std::int16_t>(state_.Documents.Count() + 1);
        SetFile(caption, caption);
        state_.Documents.Add(*this);
    }
    std::function<bool()> OnUnload = [] { return true; };

    bool Unload() override {
        if (!OnUnload()) return false;
        state_.Documents.Remove(std::to_string(ID));
        return true;
    }

  private:
    session::Session& state_;
};

class Rooms : public doubles::Hall {
  public:
    explicit Rooms(session::Session& state) : state_(state) {}
    using doubles::Hall::OpenDocument;
    session::Document* OpenDocument() override {
        Made = std::make_unique<::Document>(state_, "Untitled 1");
        return Active = Made.get();
    }
    std::unique_ptr<::Document> Made;

  private:
    session::Session& state_;
};

struct ProjectWindows : testing::Test, doubles::FormUser {
    ProjectWindows() {
        for (const char* name : {"COUNT8.PLD", "COUNT8.SI", "COUNT8.SO", "COUNT8.JED"})
            Folder.Write(name, "");
        State.sProject = Folder.Logic("COUNT8");
        State.WorkDir = Folder.Logic();
        Room.LoadWindows(Main);
        Main.resize(700, 500);
        Main.show();
    }
    ~ProjectWindows() override { Room.UnloadWindows(); }

    void ShowProject() {
        Room.ShowProject();
        Use(Main);
    }
    QMdiSubWindow* Window() { return Main.findChild<QMdiSubWindow*>("frmProject"); }
    void ClickNode(const QString& text, bool isDouble) {
        auto& tree = Control<QTreeWidget>("TreeView");
        const auto found = tree.findItems(text, Qt::MatchExactly | Qt::MatchRecursive);
        ASSERT_EQ(found.size(), 1) << text.toStdString();
        const QPoint at = tree.visualItemRect(found.front()).center();
        QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, at);
        if (isDouble) QTest::mouseDClick(tree.viewport(), Qt::LeftButton, {}, at);
    }
    std::string Tree() {
        std::string lines = Text("TreeView");
        std::erase(lines, '*');
        return lines;
    }
    bool CanCloseProject() const { return Hall.MainCommands.IsEnabled("mnuCloseProject"); }
    Calls TakeCalls() { return std::exchange(Hall.Calls, {}); }

    doubles::TemporaryFolder Folder;
    platform::qt::HostFileSystem Files;
    doubles::Desktop Desk{Files};
    session::Session State;
    Rooms Hall{State};
    session::App App{State, Desk.Host, Hall};
    Frame Main;
    project::ProjectRoom Room{App};
};

TEST_F(ProjectWindows, TheTreeOpensFilesAndFollowsTheFolder) {
    Document open(State, "C:\\W\\OTHER.PLD");
    ShowProject();
    EXPECT_TRUE(CanCloseProject());
    EXPECT_TRUE(open.ShowsProject());
    const std::string root = State.sProject;
    EXPECT_EQ(Window()->windowTitle().toStdString(), "PROJECT: " + root);
    EXPECT_EQ(Tree(), root + "|  COUNT8.PLD|    COUNT8.JED|  COUNT8.SI|    COUNT8.SO|");

    ClickNode(QString::fromStdString(root), true);
    EXPECT_EQ(TakeCalls(), Calls{});
    ClickNode("COUNT8.JED", false);
    EXPECT_EQ(TakeCalls(), Calls{});
    ClickNode("COUNT8.JED", true);
    EXPECT_EQ(TakeCalls(), Calls{"OpenDocument " + root + ".JED"});
    auto& tree = Control<QTreeWidget>("TreeView");
    QTest::keyClick(&tree, Qt::Key_Down);
    QTest::keyClick(&tree, Qt::Key_Down);
    QTest::keyClick(&tree, Qt::Key_Return);
    EXPECT_EQ(TakeCalls(), Calls{"OpenDocument " + root + ".SO"});

    // The node that was clicked stays so when the tree is read again.
    Folder.Write("COUNT8.SIM", "");
    Room.UpdateTreeView();
    EXPECT_NE(Tree().find("    COUNT8.SIM|"), std::string::npos);
    EXPECT_NE(Text("TreeView").find("*COUNT8.SO|"), std::string::npos);
    QTest::keyClick(&tree, Qt::Key_Return);
    EXPECT_EQ(TakeCalls(), Calls{"OpenDocument " + root + ".SO"});

    State.sProject.clear();
    Room.UpdateTreeView();
    EXPECT_EQ(Window()->windowTitle(), "PROJECT: ");
    EXPECT_EQ(Tree(), "|");
}

TEST_F(ProjectWindows, ClosesWithItsDocumentsAlone) {
    Document design(State, State.sProject + ".PLD");
    Document refusing(State, State.sProject + ".JED");
    Document other(State, "C:\\W\\OTHER.PLD");
    ShowProject();
    refusing.OnUnload = [] { return false; };
    EXPECT_FALSE(Room.CloseProject());
    EXPECT_TRUE(CanCloseProject() && Window()->isVisible());
    EXPECT_EQ(State.Documents.Count(), 2u);

    // By its own cross. A text that is saved under another name as it closes closes the project too.
    int times = 0;
    refusing.OnUnload = [&] {
        EXPECT_FALSE(Room.CloseProject());
        return ++times == 1;
    };
    Window()->close();
    EXPECT_FALSE(CanCloseProject());
    EXPECT_EQ(State.Documents.All(), std::vector<session::Document*>{&other});
    Room.UpdateTreeView();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(Window(), nullptr);

    for (const bool isShown : {true, false, true}) {
        Hall.DocumentCommands.Run("mnuProject", other, -1);
        ASSERT_NE(Window(), nullptr);
        EXPECT_TRUE(CanCloseProject() && Window()->isVisible() == isShown);
        EXPECT_EQ(other.ShowsProject(), isShown);
    }
    EXPECT_TRUE(Room.CloseProject());
    EXPECT_FALSE(CanCloseProject());
}

TEST_F(ProjectWindows, ANewDesignIsAskedForAndWritten) {
    const std::vector<std::string> boxes = {"ProjectName", "PartNo",   "ProjDate", "Revision", "Designer",
                                            "Company",     "Assembly", "Location", "Device"};
    const std::string today =
        QLocale::system().toString(QDate::currentDate(), QLocale::ShortFormat).toStdString();
    const auto type = [&](const std::string& box, const std::string& text) {
        TabTo(box);
        Key(Qt::Key_A, Qt::ControlModifier);
        Type(text);
    };
    const auto run = [&](const std::function<void()>& steps) {
        Drive([&] { Hall.MainCommands.Run("mnuNewDesign", -1); }, {{"frmNewDesign", "OK", steps}});
    };
    State.sProject.clear();
    run([&] {
        EXPECT_EQ(Texts(boxes), "Name|00|" + today + "|01|Engineer||None||virtual|");
        EXPECT_EQ(TabOrder(),
                  "ProjectName PartNo ProjDate Revision Designer Company Assembly Location Device "
                  "OK Cancel ");
        type("ProjectName", std::string(33, 'a'));
        Key(Qt::Key_Return);
        EXPECT_EQ(Desk.Boxes.LastText(), "The design name is limited to 32 characters.");
        type("ProjectName", "  ");
        Key(Qt::Key_Return);
        EXPECT_EQ(Desk.Boxes.LastText(), "A design name is required.");
        type("ProjectName", "Gate");
        type("Company", "Ours");
        Key(Qt::Key_Escape);
    });
    EXPECT_EQ(State.Documents.Count(), 0u);
    EXPECT_EQ(State.sProject, "");

    Desk.Boxes.Inputs = {"1", "abc", std::nullopt};
    run([&] {
        EXPECT_EQ(Text("Company"), "");
        type("ProjectName", "Gate");
        type("Company", "Ours");
        Click("OK");
    });
    ASSERT_NE(Hall.Made, nullptr);
    EXPECT_EQ(Hall.Made->Caption() + "|" + Hall.Made->FileName(),
              State.sProject + ".PLD|" + State.sProject + ".PLD");
    EXPECT_TRUE(Hall.Made->Box.Content.starts_with("Name     Gate ;\r\nPartNo   00 ;\r\nDate     " + today +
                                                   " ;\r\nRevision 01 ;\r\nDesigner Engineer ;\r\n"
                                                   "Company  Ours ;\r\nAssembly None ;\r\nLocation  ;\r\n"
                                                   "Device   virtual ;\r\n\r\n/* *"));
    ASSERT_NE(Window(), nullptr);
    EXPECT_EQ(Window()->windowTitle().toStdString(), "PROJECT: " + State.sProject);

    // A new project asks again, with the company of before, and leaves the old one first.
    Desk.Boxes.Inputs = {};
    Drive([&] { Hall.MainCommands.Run("mnuNewProject", -1); }, {{"frmNewDesign", "OK", [&] {
                                                                     EXPECT_EQ(Text("Company"), "Ours");
                                                                     EXPECT_EQ(State.sProject, "");
                                                                     Click("OK");
                                                                 }}});
    EXPECT_EQ(State.sProject, State.Documents.All().at(0)->Caption().substr(0, State.sProject.size()));
    EXPECT_TRUE(Hall.Made->ShowsProject());
}

TEST_F(ProjectWindows, ShowTheirCaptionsInWhole) {
    EXPECT_EQ(doubles::FormFaults<project::frmNewDesign>(App), "");
}

}  // namespace
