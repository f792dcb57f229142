#include <gtest/gtest.h>

#include <array>

#include "shell/Imports.h"
#include "support/MemoryFiles.h"
#include "support/Rooms.h"

TEST(Imports, RunTheirConverterAndOpenWhatItLeaves) {
    const std::array<const char*, 3> cases[] = {
        // entry, chosen file, calls

        {"mnuImportAhdl", "C:\\a.tdf",
         "RunAndWait C:\\U\\TDF2TESK.EXE C:\\a.tdf C:\\a.PLD|OpenDocument C:\\a.PLD|"},
        {"mnuImportAhdl", "C:\\a b.tdf",
         "RunAndWait C:\\U\\TDF2TESK.EXE \"C:\\a b.tdf\" \"C:\\a b.PLD\"|OpenDocument C:\\a b.PLD|"},
        {"mnuImportNettrel", "C:\\a.x.edn",
         "RunAndWait C:\\N\\NTR.EXE C:\\a.x.edn|OpenDocument C:\\a.x.PLD|"},
        {"mnuImportOntesk", "C:\\a", "RunAndWait C:\\U\\ONTESK.EXE C:\\a|OpenDocument C:\\a.PLD|"},
        {"mnuImportPalasm", "C:\\a.pds", "RunAndWait C:\\U\\PTOT.EXE C:\\a.pds|OpenDocument C:\\a.PLD|"},
        {"mnuImportPla", "C:\\a.tt2", "RunAndWait C:\\U\\PLA2TESK.EXE C:\\a.tt2|OpenDocument C:\\a.PLD|"},
        {"mnuImportPla", "", ""},
        {"mnuImportPla", nullptr, ""},
    };
    for (const auto& [entry, chosen, calls] : cases) {
        doubles::Bench<doubles::MemoryFiles> bench;
        bench.State.NettrelDir = "C:\\N\\";
        bench.State.UtilityDir = "C:\\U\\";
        bench.State.WorkDir = "C:\\WORK";
        if (chosen != nullptr) bench.Desk.Boxes.Files.push_back(chosen);
        session::MainCommands commands;
        commands.Add(shell::ImportCommands(bench.App));
        commands.Run(entry, -1);
        EXPECT_EQ(doubles::Joined(bench.Hall.Calls), calls);
        EXPECT_EQ(bench.Desk.Boxes.FileRequests.at(0).InitialFolder, "C:\\WORK");
    }
}
