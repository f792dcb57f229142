#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QTest>

#include "base/Text.h"
#include "editor/frmDocument.h"
#include "platform/qt/HostApplication.h"
#include "platform/qt/HostClipboard.h"
#include "platform/qt/HostFileSystem.h"
#include "platform/qt/TextBox.h"
#include "shell/windows/Shell.h"
#include "support/Doubles.h"
#include "support/QtMain.h"
#include "toolchain/frmMessage.h"

// The whole program from Main on, on an installation in a temporary folder, with scripted dialogs.
class ShellFixture : public testing::Test {
  protected:
    ShellFixture() {
        for (const char* name : {"Korvane/ZrxPart/", "Korvane/Utility/", "Shared/", "Examples/"}) {
            std::filesystem::create_directories(folder.Path() / name);
        }
        folder.Write("Shared/Fullset.dl", "devices");
        folder.Write("Korvane/TeskErr.txt",
                     "0101ta Syntax error\r\nError. What was found\r\nLook there.\r\n");
        desktop.Desk.Program = folder.Logic("Korvane/Korvane");
    }
    ~ShellFixture() override {
        ShowErrorsWith(UnexpectedErrors());
        shell.reset();
    }

    // What no command traps is shown there instead of failing the test.
    static void ShowErrorsWith(platform::Dialogs& boxes) {
        static_cast<platform::qt::HostApplication*>(qApp)->ShowErrorsWith(&boxes);
    }

    void Start() { Start(desktop.Host); }
    void Start(platform::Host& host) {
        shell = std::make_unique<shell::Shell>(state, host, folder.Logic("state") + "\\");
        ASSERT_TRUE(shell->Start());
        QApplication::setActiveWindow(&shell->Main());
        QApplication::processEvents();
    }
    // Ends the program as the user does.
    bool Close() {
        const bool closed = shell->Main().close();
        if (closed) shell.reset();
        return closed;
    }

    editor::frmDocument* ActiveDocument() {
        return dynamic_cast<editor::frmDocument*>(shell->Main().ActiveChild());
    }
    toolchain::frmMessage& Messages() {
        return *shell->Main().findChild<toolchain::frmMessage*>("frmMessage");
    }

    // Opens a file that holds `bytes` and gives its window.
    editor::frmDocument& Open(const std::string& name, const std::string& bytes) {
        folder.Write(name, bytes);
        shell->TheApp().Hall.Editor->OpenDocument(folder.Logic(name));
        return *ActiveDocument();
    }
    editor::frmDocument& NewText() {
        shell->TheApp().Hall.Editor->OpenDocument();
        return *ActiveDocument();
    }
    static platform::qt::TextBox& TextOf(editor::frmDocument& document) {
        return *document.findChild<platform::qt::TextBox*>("txtText");
    }
    static void Key(editor::frmDocument& document, Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(&TextOf(document), key, modifiers);
    }
    static void Save(editor::frmDocument& document) { Key(document, Qt::Key_S, Qt::ControlModifier); }
    static void Type(editor::frmDocument& document, const char* keys) {
        QTest::keyClicks(&TextOf(document), keys);
    }
    std::string UpperLogic(const std::string& name) const { return base::Upper(folder.Logic(name)); }

    doubles::TemporaryFolder folder;
    platform::qt::HostFileSystem files;
    platform::qt::HostClipboard clipboard;
    doubles::Desktop desktop{files, clipboard};
    session::Session state;
    std::unique_ptr<shell::Shell> shell;
};

class RunningShell : public ShellFixture {
  protected:
    RunningShell() { Start(); }
};
