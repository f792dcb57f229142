#include <gtest/gtest.h>

#include <filesystem>

#include "DeviceFile.h"
#include "devices/frmDevices.h"
#include "support/FormUser.h"

namespace devices {
namespace {

class DeviceWindow : public DeviceFile, protected doubles::FormUser {
  protected:
    std::unique_ptr<frmDevices> Make(const std::string& deviceName) {
        return std::make_unique<frmDevices>(Engine, Boxes, Folder.Logic() + "\\", deviceName, nullptr);
    }
    void Load(const std::string& deviceName) {
        form_ = Make(deviceName);
        Use(*form_);
    }
    void LoadCatalogue(const std::string& deviceName) {
        MakeFile(HostPath(), catalogue);
        Load(deviceName);
    }
    std::string Info() { return Text("txtDeviceInfo"); }

    std::unique_ptr<frmDevices> form_;
};

TEST_F(DeviceWindow, ListsAndReportFollowTheSelection) {
    LoadCatalogue("V2");
    EXPECT_EQ(Text("lstManufacturers"), "*Alpha|Unnumbered|Zeta|");
    EXPECT_EQ(Text("lstPackages"), "*DIP|PLCC|");
    EXPECT_EQ(Text("lstDevices"), "*Zap4|Bee2|Nil|") << "the first one, not the one of the name";
    EXPECT_EQ(Text("txtMnemonic"), "P4");
    EXPECT_TRUE(Info().starts_with("Mnemonic:  P4\nPin Count:  4\n")) << Info();
    EXPECT_TRUE(Info().ends_with("Device Notes:\nOne.\nTwo.")) << Info();

    ClickLine("lstDevices", 1);
    EXPECT_EQ(Text("txtMnemonic"), "V2");
    EXPECT_TRUE(Info().starts_with("Mnemonic:  V2\n")) << Info();
    Key(Qt::Key_Up);
    EXPECT_EQ(Text("txtMnemonic"), "P4");

    ClickLine("lstDevices", 1);
    ClickLine("lstManufacturers", 0);
    EXPECT_EQ(Text("lstDevices") + Text("txtMnemonic"), "*Zap4|Bee2|Nil|P4") << "clicked again";
    ClickLine("lstPackages", 1);
    EXPECT_EQ(Text("lstDevices"), "*|") << "its name is null";
    EXPECT_EQ(Text("txtMnemonic"), "V2");
    ClickLine("lstManufacturers", 1);
    EXPECT_EQ(Text("lstDevices") + Text("txtMnemonic") + Info(), "") << "no devices";
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
        if (c.ToggleInFile) Click("chkDevInFile");
        EXPECT_EQ(Text("lstDevices"), "*Zap4|Bee2|Nil|") << "the box greys and clears nothing";
        Click(c.End);
        EXPECT_FALSE(form_->isVisible());
        EXPECT_EQ(form_->DeviceName, c.After) << c.Before;
        EXPECT_EQ(form_->Cancelled, c.Cancelled);
    }
    std::filesystem::remove(HostPath());
    LoadCatalogue("P4");
    ClickLine("lstDevices", 1);
    ClickLine("lstDevices", 1, true);
    EXPECT_FALSE(form_->isVisible());
    EXPECT_EQ(form_->DeviceName, "V2");
}

TEST_F(DeviceWindow, WithoutADatabaseOkIsHarmless) {
    Load("V2");
    EXPECT_EQ(Boxes.Shown.size(), 1u);
    EXPECT_EQ(Text("lstManufacturers") + Text("lstPackages") + Text("lstDevices") + Info(), "");
    Click("OK");
    EXPECT_EQ(form_->DeviceName, "V2");
    Load("&");
    Click("OK");
    EXPECT_EQ(form_->DeviceName, "&");
}

TEST_F(DeviceWindow, ShowsItsCaptionsInWhole) {
    MakeFile(HostPath(), catalogue);
    EXPECT_EQ(doubles::FormFaults([&] { return Make("V2"); }), "");
}

}  // namespace
}  // namespace devices
