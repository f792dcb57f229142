#include <gtest/gtest.h>

#include <QLineEdit>
#include <QRadioButton>
#include <cstring>

#include "base/RunTimeError.h"
#include "partitioner/frmZonerex.h"
#include "partitioner/frmZrxEditor.h"
#include "partitioner/frmZrxParams.h"
#include "support/FormUser.h"
#include "support/MemoryFiles.h"
#include "support/Rooms.h"

namespace partitioner {
namespace {

class PartitionerWindows : public testing::Test,
                           public doubles::Bench<doubles::MemoryFiles>,
                           protected doubles::FormUser {
  protected:
    PartitionerWindows() {
        State.ZrxDir = "C:\\Z\\";
        State.sProject = "C:\\WORK\\A";
        State.PartitionFlags = "a2m012l025u100t00:00:55c2p3N1";
    }
    template <class Window>
    void Open() {
        Window_.reset();
        Window_ = std::make_unique<Window>(App);
        Use(*Window_);
    }
    std::string& File(const std::string& name) { return Files.Files["C:\\Z\\" + name]; }

    std::unique_ptr<QWidget> Window_;
};

TEST_F(PartitionerWindows, ParametersDefaultChangeReopen) {
    State.PartitionFlags.clear();
    File("\\TEMP.DEV") = "P16L8\r\np16r4\r\nG22V10\r\n";
    Open<frmZrxParams>();
    EXPECT_EQ(
        Texts({"txtChips", "txtSolutions", "txtUtilization", "txtTime", "txtCost", "txtPower", "txtDevices"}),
        "5|25|100|55|2|3|1|");
    ClickTab("SSTab1", "Devices");
    ClickEach({"Device0", "Device29"});  // one of the two P16L8
    ClickTab("SSTab1", "Priority");
    TabTo("UpDownPower");
    Key(Qt::Key_Down);
    ClickTab("SSTab1", "Fitting");
    ClickEach({"optHistory", "OK"});
    EXPECT_EQ(State.PartitionFlags, "hsm005l025u100t00:00:55roc3p2N1");
    EXPECT_EQ(File("\\TEMP.DEV"), "EP300\r\nG22V10\r\nP16L8\r\n");
    Open<frmZrxParams>();
    EXPECT_TRUE(Control<QRadioButton>("optHistory").isChecked());
    EXPECT_TRUE(Control<QCheckBox>("Device29").isChecked()) << "as its twin";
    Files.FailWrites = 75;
    EXPECT_THROW(static_cast<frmZrxParams&>(*Window_).OK_Click(), base::RunTimeError);
    EXPECT_TRUE(Window_->isVisible());
}

TEST_F(PartitionerWindows, ParametersApplyTheTabInFront) {
    Open<frmZrxParams>();
    ClickTab("SSTab1", "Files");
    ClickEach({"chkReport", "chkPld", "Apply"});
    EXPECT_EQ(State.PartitionFlags, "ro");
    Click("Apply");
    Key(Qt::Key_Escape);
    EXPECT_EQ(State.PartitionFlags, "roro");
    EXPECT_FALSE(Files.FileExists("C:\\Z\\\\TEMP.DEV"));
}

// Plays the libraries: two lines for the messages, then two solutions.
TEST_F(PartitionerWindows, RunFindsListsAndFits) {
    Files.Files["C:\\WORK\\A.DOC"] = "";
    const std::string devices = "G16V8A*2 G22V10" + std::string(45, ' ');
    std::string called;
    Desk.Libraries.OnCall = [&](const std::string& entry, std::span<std::uint8_t> bytes) {
        base::ZrxRecord record{};
        std::memcpy(&record, bytes.data(), sizeof record);
        called += entry + " " + base::TextOf(record.szOptions) + " " + base::TextOf(record.szDesign) + " " +
                  base::TextOf(record.szDeviceFile) + " " + base::TextOf(record.szDirectory) + "|";
        if (entry == "zrxlist") {
            Desk.Libraries.Send(record.hWndSolutions, {384, "", devices + "     180     220*"});
            Desk.Libraries.Send(record.hWndSolutions, {384, "", "G22V10 "});
        } else {
            Desk.Libraries.Send(record.hWndMessages, {384, "", "One"});
            Desk.Libraries.Send(record.hWndMessages, {103, "dropped", "dropped"});
            Desk.Libraries.Send(record.hWndMessages, {384, "", "Two"});
        }
        return 2;
    };
    Open<frmZonerex>();
    Click("Fit");
    EXPECT_EQ(called, "") << "disabled";
    Click("Test");
    EXPECT_EQ(called,
              "zrxtest a2m012l025u100t00:00:55c2p3N1 C:\\WORK\\A C:\\Z\\temp.dev C:\\Z\\|"
              "zrxlist a2m012l025u100t00:00:55c2p3N1 C:\\WORK\\A C:\\Z\\temp.dev C:\\Z\\|");
    EXPECT_EQ(Text("txtMsgBox"), "\nOne\nTwo");
    EXPECT_EQ(Text("cmbDevices"), "*" + devices + "     180     220|G22V10|");
    Click("Fit");
    EXPECT_EQ(File("SOLUTION.SLF"), "G16V8A*2 G22V10\r\n");
    called.clear();
    ClickLine("cmbDevices", 1, true);
    EXPECT_EQ(called, "zrxpld -rjof C:\\WORK\\A C:\\Z\\solution.slf C:\\Z\\|");
    EXPECT_EQ(File("SOLUTION.SLF"), "G22V10\r\n");
    EXPECT_EQ(Hall.Calls, std::vector<std::string>(2, "UpdateTreeView"));
    Desk.Libraries.OnCall = [](auto&, auto) { return 0; };
    Click("Test");
    EXPECT_EQ(Text("cmbDevices") + Text("txtMsgBox"), "");
    EXPECT_TRUE(Control<>("Fit").isEnabled()) << "stays so";
    const std::string options(Desk.Libraries.Record.begin() + 8, Desk.Libraries.Record.begin() + 264);
    EXPECT_EQ(options, std::string("-rjof\0", 6) + std::string(250, ' '));
    EXPECT_EQ(Desk.Libraries.Log.back(), "free zrxtest");
    Window_.reset();
    EXPECT_EQ(Desk.Libraries.HandlerCount(), 0u);
}

TEST_F(PartitionerWindows, RunTellsWhatLacks) {
    Open<frmZonerex>();
    Click("Test");
    EXPECT_EQ(Desk.Libraries.Log.size(), 0u);
    Files.Files["C:\\WORK\\A.DOC"] = "";
    Desk.Libraries.OnCall = [](auto& entry, auto) -> std::int32_t {
        if (entry == "zrxtest") return 1;
        throw base::RunTimeError(platform::errToolEnded, "exit code 3");
    };
    for (const char* library : {"zrxtest", "zrxlist", "zrxpld", ""}) {
        Desk.Libraries.Missing = library;
        Click("Test");
        if (*library != '\0' && library[3] != 't') Click("Fit");
    }
    const std::string folder = " in the C:\\Z\\ directory.|";
    const std::string ended = " ended unexpectedly: exit code 3.|";
    EXPECT_EQ(Desk.Boxes.TakeTexts(),
              "No documentation file was found. Recompile the design file and specify that expanded product "
              "terms file(doc) be created |"
              "Unable to load C:\\Z\\zrxtest.  Make sure the file zrxlist.dll is" +
                  folder + "Unable to load C:\\Z\\zrxlist Make sure the file zrxlist.dll is" + folder +
                  "The tool zrxpld.dll" + ended + "The tool zrxlist.dll" + ended +
                  "Unable to load zrxpld.dll.  Make sure the file zrxpld.dll is" + folder +
                  "The tool zrxlist.dll" + ended);
}

// A library of `count` devices, each with the figures 1, 2 and 3 behind its number.
std::string Library(int count) {
    const auto number = [](int value, int size) {
        std::string bytes;
        for (; size-- > 0; value >>= 8) bytes += static_cast<char>(value & 0xFF);
        return bytes;
    };
    std::string index = number(count, 2) + "??", data;
    for (int i = 0; i < count; ++i) {
        std::string name = "D" + std::to_string(i);
        name.resize(20);
        index += name + number(4 + 24 * count + 32 * i, 4);
        data += std::string(20, '.') + number(i, 2) + "ab" + number(-2, 2) + "cd" + number(300, 2) + "ef";
    }
    return index + data;
}

TEST_F(PartitionerWindows, EditorWritesBesideWhereItReads) {
    const std::string before = File("ZRXLIB.DB") = Library(61);
    Open<frmZrxEditor>();
    EXPECT_TRUE(Text("cmbDevices").starts_with("*D0                  300   -2|")) << Text("cmbDevices");
    Click("Done");
    EXPECT_EQ(Files.Files.size(), 1u) << "writes nothing";
    std::string after = before;
    for (std::size_t i = 0; i < 61; ++i)
        after.replace(4 + 24 * 61 + 32 * i + 18, 6, std::string{static_cast<char>(i), 0, -2, -1, 44, 1});
    Open<frmZrxEditor>();
    ClickEach({"Update", "Update"});
    EXPECT_EQ(File("ZRXLIB.DB"), after);
    EXPECT_EQ(File("ZRXLIB.DB.BAK"), before);
    Open<frmZrxEditor>();
    Click("Update");
    EXPECT_EQ(File("ZRXLIB.DB.BAK"), before) << "has the figures in their places";
    File("ZRXLIB.DB") = Library(62);
    Open<frmZrxEditor>();
    Click("Update");
    EXPECT_EQ(File("ZRXLIB.DB.BAK"), Library(62)) << "another library";
}

TEST_F(PartitionerWindows, EditorRefusesWhatIsNoLibrary) {
    const auto open = [this] { return doubles::ErrorOf([this] { frmZrxEditor window(App); }); };
    EXPECT_EQ(open(), 9);
    EXPECT_TRUE(Files.FileExists("C:\\Z\\zrxlib.db")) << "made, empty";
    const std::string sound = Library(60);
    for (const auto& [size, error] :
         std::map<std::size_t, int>{{1, 62}, {4 + 24 * 60, 62}, {sound.size() - 3, 62}, {sound.size(), 0}}) {
        File("ZRXLIB.DB") = sound.substr(0, size);
        EXPECT_EQ(open(), error) << size;
    }
    Open<frmZrxEditor>();
    EXPECT_THROW(static_cast<frmZrxEditor&>(*Window_).Update_Click(), base::RunTimeError);
    EXPECT_NE(File("ZRXLIB.DB"), sound) << "what there is";
    File("ZRXLIB.DB").replace(4, 20, 20, 'x');
    EXPECT_EQ(open(), 5);
    File("ZRXLIB.DB").replace(0, 2, "\xFF\xFF");
    EXPECT_EQ(open(), 9);
}

TEST_F(PartitionerWindows, ShowTheirCaptionsInWhole) {
    File("ZRXLIB.DB") = Library(61);
    EXPECT_EQ(doubles::FormFaults<frmZrxParams>(App), "");
    EXPECT_EQ(doubles::FormFaults<frmZonerex>(App), "");
    EXPECT_EQ(doubles::FormFaults<frmZrxEditor>(App), "");
}

}  // namespace
}  // namespace partitioner
