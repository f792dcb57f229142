#pragma once

#include <gtest/gtest.h>

#include "base/RunTimeError.h"
#include "platform/qt/ToolHost.h"
#include "support/Doubles.h"

namespace platform::qt {

// A tool host with a library that misbehaves on order.
class ToolHostTest : public testing::Test {
  protected:
    ToolHostTest() {
        Copy(BADLIB, "TESKK.DLL");
        Copy(BADLOAD, "badload.dll");
        Copy(BADLOAD, "hangload.dll");
        Folder.Write("text.dll", "MZ no library");
        Record.resize(2060, ' ');
        Put(0, Host.Register([&](const ToolMessage& m) { Status.push_back(m); }));
        Put(4, Host.Register([&](const ToolMessage& m) { List.push_back(m); }));
    }
    void Copy(const char* from, const char* name) { std::filesystem::copy_file(from, Folder.Path() / name); }
    void Put(std::size_t at, WindowHandle handle) { std::memcpy(&Record[at], &handle, sizeof handle); }

    // Loads, calls and frees; the result, or "number: description" of the error.
    std::string Run(const std::string& order, const std::string& entry = "TeskkVB") {
        const auto module = Host.Load(Folder.Logic("teskk.dll"));
        const std::string outcome = Call(module, order, entry);
        Host.Free(module);
        EXPECT_FALSE(Host.IsRunning());
        return outcome;
    }
    std::string Call(ToolLibraries::Module module, const std::string& order, const std::string& entry) {
        std::copy_n(order.c_str(), order.size() + 1, Record.begin() + 268);
        try {
            return std::to_string(Host.Call(module, entry, Record));
        } catch (const base::RunTimeError& error) {
            return std::to_string(error.Number()) + ": " + error.Description();
        }
    }

    doubles::TemporaryFolder Folder;
    static constexpr std::uint64_t Memory = 256 << 20;
    doubles::Clock Time;
    ToolHost Host{Time, PathMap(), TOOLHOST, Memory};
    std::vector<std::uint8_t> Record;
    std::vector<ToolMessage> Status;
    std::vector<ToolMessage> List;
};

}  // namespace platform::qt
