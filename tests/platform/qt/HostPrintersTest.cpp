#include "platform/qt/HostPrinters.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <QImage>
#include <QLineEdit>
#include <QProcess>
#include <QRadioButton>

#include "base/ScopeExit.h"
#include "platform/qt/HostApplication.h"
#include "platform/qt/TextBox.h"
#include "support/Doubles.h"
#include "support/FormUser.h"
#include "support/QtMain.h"

namespace platform::qt {
namespace {

struct HostPrintersTest : testing::Test, doubles::FormUser {
    static constexpr int asked = NoPageNumbers | ReturnDeviceContext;

    std::optional<int> Choose(
        int flags, const std::function<void()>& before = [] {}) {
        std::optional<int> left;
        const auto fillIn = [&] {
            std::filesystem::remove(File);  // the dialog would ask
            before();
            Control<QLineEdit>("filename").setText(QString::fromStdString(File));
            Control("filename").setFocus();
            Key(Qt::Key_Return);
        };
        Drive([&] { left = Printers.Choose(flags); }, {{"PrinterDialog", "filename", fillIn}});
        return left;
    }
    // The file as another program reads it; pages end with a form feed.
    std::string Printed() {
        Printers.Print(Box);
        QProcess reader;
        reader.start("pdftotext", {"-layout", QString::fromStdString(File), "-"});
        EXPECT_TRUE(reader.waitForFinished() && reader.exitCode() == 0);
        return reader.readAllStandardOutput().toStdString();
    }
    std::map<QRgb, int> Colors() const {  // pixels of each
        QProcess painter;
        painter.start("pdftoppm", {"-r", "300", "-png", QString::fromStdString(File)});
        EXPECT_TRUE(painter.waitForFinished());
        const QImage page = QImage::fromData(painter.readAllStandardOutput(), "PNG");
        std::map<QRgb, int> colors;
        for (int y = 0; y < page.height(); ++y)
            for (int x = 0; x < page.width(); ++x) ++colors[page.pixel(x, y)];
        return colors;
    }

    doubles::TemporaryFolder Folder;
    const std::string File = (Folder.Path() / "out.pdf").string();
    HostPrinters Printers{[] { return nullptr; }};
    TextBox Box;
};

TEST_F(HostPrintersTest, AFileIsPrintedAsTheTextLooks) {
    Box.SetText("PIN 1 = A;\r\n  Y = \u03A9;\r\n");
    const FormatRun runs[] = {{0, 3, {0x0000FF, true, false, false}},
                              {14, 3, {0xFF0000, false, false, false}}};
    Box.ApplyFormats(runs);
    EXPECT_EQ(Choose(asked | NoSelection), asked | NoSelection);
    Box.SetSelStart(0);
    EXPECT_EQ(Printed(), "PIN 1 = A;\n  Y = \u03A9;\n\f");
    auto colors = Colors();
    for (const QRgb color : {qRgb(255, 0, 0), qRgb(0, 0, 255), qRgb(0, 0, 0)}) EXPECT_GT(colors[color], 20);
    EXPECT_GT(colors[qRgb(255, 255, 255)], 300 * 300 * 80);  // of some 96 square inches

    const auto chooseSelection = [&] {
        EXPECT_TRUE(Control("printSelection").isEnabled());
        EXPECT_FALSE(Control("printRange").isVisible());
        Click("printSelection");
    };
    EXPECT_EQ(Choose(asked, chooseSelection), asked | PrintSelection);
    Box.SetSelStart(1);
    Box.SetSelLength(14);
    EXPECT_EQ(Printed(), "IN 1 = A;\n  Y\n\f");
    EXPECT_GT(Colors()[qRgb(255, 0, 0)], 20);
    EXPECT_EQ(Box.SelText(), "IN 1 = A;\r\n  Y");
    const auto seesNone = [&] {
        EXPECT_FALSE(Control("printSelection").isEnabled());
        EXPECT_TRUE(Control<QRadioButton>("printAll").isChecked());
    };
    EXPECT_EQ(Choose(asked | NoSelection, seesNone), asked | NoSelection);
    Box.SetText("");
    EXPECT_EQ(Printed(), "\f");
}

TEST_F(HostPrintersTest, LongLinesGoOnBelowAndLongTextsOnTheNextPage) {
    std::string text;
    for (int line = 1; line <= 500; ++line) text += "line " + std::to_string(line) + "\n";
    Box.SetText(text + std::string(1000, 'x'));
    Choose(asked);
    std::string printed = Printed();
    const auto pages = std::count(printed.begin(), printed.end(), '\f');
    EXPECT_GT(pages, 4);
    EXPECT_LT(pages, 20);
    std::erase(printed, '\f');
    EXPECT_EQ(printed.substr(0, text.size()), text);
    EXPECT_EQ(std::count(printed.begin(), printed.end(), 'x'), 1000);
}

TEST_F(HostPrintersTest, AFullDiskIsToldAndTheOldFileStays) {
    doubles::Dialogs boxes;
    auto& application = *dynamic_cast<HostApplication*>(qApp);
    application.ShowErrorsWith(&boxes);
    const base::ScopeExit restore([&] { application.ShowErrorsWith(&UnexpectedErrors()); });
    Box.SetText("text");
    Choose(asked);
    Folder.Write("out.pdf", "old");
    rlimit room{};
    ::getrlimit(RLIMIT_FSIZE, &room);
    const rlimit small{1000, room.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &small);
    Printers.Print(Box);
    ::setrlimit(RLIMIT_FSIZE, &room);
    EXPECT_TRUE(boxes.Shown.empty());
    QCoreApplication::processEvents();
    EXPECT_EQ(boxes.LastText(), "The text could not be printed: Disk full");
    EXPECT_EQ(Folder.Read("out.pdf"), "old");
    EXPECT_EQ(Printed(), "text\n\f");
}

}  // namespace
}  // namespace platform::qt
