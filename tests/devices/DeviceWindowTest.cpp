#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <filesystem>

#include "DeviceFile.h"
#include "devices/frmDevices.h"

namespace devices {
namespace {

class DeviceWindow : public DeviceFile {
  protected:
    void Load(const std::string& deviceName) {
        form_ = std::make_unique<frmDevices>(Engine, Boxes, Folder.Logic() + "\\", deviceName, nullptr);
        form_->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(form_.get()));
    }
    void LoadCatalogue(const std::string& deviceName) {
        MakeFile(HostPath(), catalogue);
        Load(deviceName);
    }

    template <class T>
    T& Control(const char* name) {
        auto* control = form_->findChild<T*>(name);
        if (control == nullptr) throw std::runtime_error(name);
        return *control;
    }
    std::string Lines(const char* name) {
        auto& list = Control<QListWidget>(name);
        std::string lines;
        for (int row = 0; row < list.count(); ++row) {
            lines += (row == list.currentRow() ? "*" : "") + list.item(row)->text().toStdString() + "|";
        }
        return lines;
    }
    std::string Mnemonic() { return Control<QLineEdit>("txtMnemonic").text().toStdString(); }
    std::string Info() { return Control<QPlainTextEdit>("txtDeviceInfo").toPlainText().toStdString(); }
    QPoint Line(const char* name, int row) {
        auto& list = Control<QListWidget>(name);
        return list.visualItemRect(list.item(row)).center();
    }
    void Click(const char* list, int row) {
        QTest::mouseClick(Control<QListWidget>(list).viewport(), Qt::LeftButton, {}, Line(list, row));
    }
    void Press(const char* button) { QTest::mouseClick(&Control<QAbstractButton>(button), Qt::LeftButton); }

    std::unique_ptr<frmDevices> form_;
};

TEST_F(DeviceWindow, ListsAndReportFollowTheSelection) {
    LoadCatalogue("V2");
    EXPECT_EQ(Lines("lstManufacturers"), "*Alpha|Unnumbered|Zeta|");
    EXPECT_EQ(Lines("lstPackages"), "*DIP|PLCC|");
    EXPECT_EQ(Lines("lstDevices"), "*Zap4|Bee2|Nil|") << "the first one, not the one of the name";
    EXPECT_EQ(Mnemonic(), "P4");
    EXPECT_TRUE(Info().starts_with("Mnemonic:  P4\nPin Count:  4\n")) << Info();
    EXPECT_TRUE(Info().ends_with("Device Notes:\nOne.\nTwo.")) << Info();

    Click("lstDevices", 1);
    EXPECT_EQ(Mnemonic(), "V2");
    EXPECT_TRUE(Info().starts_with("Mnemonic:  V2\n")) << Info();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Up);
    EXPECT_EQ(Mnemonic(), "P4");

    Click("lstDevices", 1);
    Click("lstManufacturers", 0);
    EXPECT_EQ(Lines("lstDevices") + Mnemonic(), "*Zap4|Bee2|Nil|P4") << "clicked again";
    Click("lstPackages", 1);
    EXPECT_EQ(Lines("lstDevices"), "*|") << "its name is null";
    EXPECT_EQ(Mnemonic(), "V2");
    Click("lstManufacturers", 1);
    EXPECT_EQ(Lines("lstDevices") + Mnemonic() + Info(), "") << "no devices";
}

TEST_F(DeviceWindow, WhatItHandsBack) {
    struct Case {
        const char* Before;
        bool ToggleInFile;
        const char* End;
        const char* After;
        bool Cancelled;
    };
    for (const Case& c : std::vector<Case>{{"V2", false, "OK", "P4", false},
                                           {"V2", true, "OK", "&", false},
                                           {"&", false, "OK", "&", false},
                                           {"", true, "OK", "P4", false},
                                           {"V2", true, "cmdCancel", "V2", true}}) {
        std::filesystem::remove(HostPath());
        LoadCatalogue(c.Before);
        if (c.ToggleInFile) QTest::keyClick(&Control<QCheckBox>("chkDevInFile"), Qt::Key_Space);
        EXPECT_EQ(Lines("lstDevices"), "*Zap4|Bee2|Nil|") << "the box greys and clears nothing";
        Press(c.End);
        EXPECT_FALSE(form_->isVisible());
        EXPECT_EQ(form_->DeviceName, c.After) << c.Before;
        EXPECT_EQ(form_->Cancelled, c.Cancelled);
    }
    std::filesystem::remove(HostPath());
    LoadCatalogue("P4");
    Click("lstDevices", 1);
    QTest::mouseDClick(Control<QListWidget>("lstDevices").viewport(), Qt::LeftButton, {},
                       Line("lstDevices", 1));
    EXPECT_FALSE(form_->isVisible());
    EXPECT_EQ(form_->DeviceName, "V2");
}

TEST_F(DeviceWindow, WithoutADatabaseOkIsHarmless) {
    Load("V2");
    EXPECT_EQ(Boxes.Shown.size(), 1u);
    EXPECT_EQ(Lines("lstManufacturers") + Lines("lstPackages") + Lines("lstDevices") + Info(), "");
    Press("OK");
    EXPECT_EQ(form_->DeviceName, "V2");
    Load("&");
    Press("OK");
    EXPECT_EQ(form_->DeviceName, "&");
}

}  // namespace
}  // namespace devices
