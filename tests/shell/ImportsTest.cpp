#include <gtest/gtest.h>

#include "shell/Imports.h"
#include "support/Doubles.h"
#include "support/MemoryFiles.h"
#include "support/Rooms.h"

TEST(Imports, RunTheirConverterAndOpenWhatItLeaves) {
    doubles::MemoryFiles files;
    session::Session state;
    state.NettrelDir = "C:\\N\\";
    state.UtilityDir = "C:\\U\\";
    state.WorkDir = "C:\\WORK";
    const struct {
        const char* Entry;
        const char* Chosen;
        const char* Calls;
    } cases[] = {
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
    for (const auto& c : cases) {
        doubles::Desktop desktop(files);
        doubles::Hall hall;
        session::App app{state, desktop.Host, hall};
        if (c.Chosen != nullptr) desktop.Boxes.Files.push_back(c.Chosen);
        session::MainCommands commands;
        commands.Add(shell::ImportCommands(app));
        commands.Run(c.Entry, -1);
        std::string calls;
        for (const std::string& call : hall.Calls) calls += call + "|";
        EXPECT_EQ(calls, c.Calls);
        EXPECT_EQ(desktop.Boxes.FileRequests.at(0).InitialFolder, "C:\\WORK");
    }
}
