#include <dlfcn.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "base/PartitionInterface.h"
#include "base/PosixFile.h"
#include "kernel/Host.h"
#include "support/TemporaryFolder.h"
#include "tesk/front/Support.h"
#include "zrx/Database.h"
#include "zrx/Options.h"

namespace {

struct Sent {
    std::uint32_t Handle;
    std::string Text;
};
std::vector<Sent> sent;

}  // namespace

extern "C" std::int32_t SendMessageA(std::uint32_t handle, std::uint32_t message, std::uintptr_t,
                                     std::intptr_t lparam) {
    if (message == base::msgAddString) sent.push_back({handle, reinterpret_cast<const char*>(lparam)});
    return 0;
}

// As the desktop calls them: each loaded for its call, lines to two windows, files in drive form.
TEST(Libraries, FindListAndWrite) {
    const doubles::TemporaryFolder folder;
    const auto compiled =
        Compile("PIN = [A7..0]; PIN = [Y15..0]; [Y15..8] = [A7..0] & A0; [Y7..0] = [A7..0] # A1;", "x");
    for (const char* extension : {".PLD", ".DOC"})
        folder.Write(std::string("T") + extension, compiled->Text(extension));
    std::filesystem::copy(ZRX_DIR "/zrxlib.db", folder.Path());
    folder.Write("TEMP.DEV", "G16V8A\r\n");
    const std::string drive = folder.Logic() + "\\";
    base::ZrxRecord record{11, 22, {}, {}, {}, {}};
    base::SetText(record.szOptions, "-nfProojTsa1N1c2p3u100m005l025t00:00:55");
    base::SetText(record.szDesign, drive + "T");
    base::SetText(record.szDeviceFile, drive + "temp.dev");
    base::SetText(record.szDirectory, drive);
    const auto call = [&](const std::string& library) {
        void* handle = dlopen((ZRX_DIR "/" + library + ".dll").c_str(), RTLD_NOW | RTLD_LOCAL);
        if (handle == nullptr) throw std::runtime_error(dlerror());
        const auto entry =
            reinterpret_cast<std::int32_t (*)(base::ZrxRecord*)>(dlsym(handle, library.c_str()));
        const std::int32_t result = entry(&record);
        dlclose(handle);
        return result;
    };
    EXPECT_EQ(call("zrxtest"), 1);
    EXPECT_EQ(sent.back().Handle, 11u);
    call("zrxlist");
    ASSERT_EQ(sent.back().Handle, 22u);
    EXPECT_EQ(sent.back().Text, "G16V8A*2" + std::string(52, ' ') + "     180     220 ");
    folder.Write("solution.slf", "G16V8A*2\r\n");
    base::SetText(record.szOptions, "-rjof");
    base::SetText(record.szDeviceFile, drive + "solution.slf");
    call("zrxpld");
    for (const char* file : {"T_1.PLD", "T_2.PLD", "T.ZRP"}) EXPECT_TRUE(folder.Exists(file)) << file;
}

// Every name of the dialog has figures, the editor finds the 61 records that it writes, and what it writes
// (three figures from byte 18 on) harms nothing that is read here.
TEST(ShippedLibrary, OutlivesItsEditor) {
    std::string bytes = base::ReadWhole(ZRX_DIR "/zrxlib.db", zrx::DatabaseLimits::FileBytes);
    const auto before = zrx::ReadDatabase(bytes);
    ASSERT_EQ(before.Error, "");
    ASSERT_EQ(before.Records.size(), 61u);
    EXPECT_EQ(before.Records[34].Name, "P16L8");
    EXPECT_EQ(before.Records[55].Name, "P6L16");
    for (std::size_t i = 0; i < 61; ++i) {
        std::uint32_t at = 0;
        std::copy_n(bytes.begin() + 24 + 24 * i, 4, reinterpret_cast<char*>(&at));
        bytes.replace(at + 18, 6, "UPDATE");
    }
    const auto after = zrx::ReadDatabase(bytes);
    for (std::size_t i = 0; i < 61; ++i) {
        EXPECT_GT(before.Records[i].Cost, 0) << before.Records[i].Name;
        EXPECT_EQ(after.Records[i].Cost, before.Records[i].Cost);
        EXPECT_EQ(after.Records[i].Power, before.Records[i].Power);
        EXPECT_EQ(after.Records[i].Text, before.Records[i].Text);
    }
    EXPECT_EQ(zrx::LimitsOf(*after.Find("g22v10"))->Modes[0].Cells.size(), 10u);
}

TEST(Options, ReadsTheLettersOfTheDialog) {
    const auto first = zrx::Options::Parse("-nfProojTsa1N1c2p3u100m005l025t00:00:55");
    EXPECT_TRUE(first.Split && first.Report && first.Pld && !first.List && !first.FirstFit && !first.History);
    EXPECT_EQ(first.MostChips, 5u);
    EXPECT_EQ(first.Seconds, 55);
    const auto second = zrx::Options::Parse("a2m012l003u080t00:01:05dc3p1N2");
    EXPECT_TRUE(second.FirstFit && second.List && !second.Split);
    EXPECT_EQ(second.MostSolutions, 3u);
    EXPECT_EQ(second.Utilization, 80);
    EXPECT_EQ(second.Seconds, 65);
    using enum zrx::Figure;
    EXPECT_EQ(second.Order, (std::array{Power, Devices, Cost}));
    EXPECT_TRUE(zrx::Options::Parse("hmxyzt00:aa:00").History);
}
