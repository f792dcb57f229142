#include "toolchain/ErrorCodes.h"

#include <gtest/gtest.h>

#include "support/Doubles.h"
#include "support/MemoryFiles.h"

namespace toolchain {
namespace {

struct Loaded {
    explicit Loaded(const std::string& text) {
        files.Files["C:\\K\\TESKERR.TXT"] = text;
        Codes.LoadErrorCodes(files, Boxes, "C:\\K\\");
    }
    // "level|message|description|information"
    std::string Lookup(const std::string& code) const {
        std::string level, message, description, information;
        Codes.LookupError(code, level, message, description, information);
        return level + "|" + message + "|" + description + "|" + information;
    }
    doubles::MemoryFiles files;
    doubles::Dialogs Boxes;
    ErrorCodes Codes;
};

const std::string unknown = "Fatal|Unknown Error||Contact Brennick Labs, Customer Support.";
const std::string unreadable =
    "Unexpected error reading the error message data file: C:\\K\\TeskErr.txt.  Interactive error message "
    "display will not be functional or accurate unless this file is restored.\r\n\r\nRe-install Korvane to "
    "restore this file.";
const std::string first = "0012ta:bad symbol\r\nError. A name is wrong\r\nCheck it\r\n";
const std::string second = "0107tb no room\r\nWarning.\r\nSplit it\r\n";

TEST(ErrorCodes, FilesWholeAndDamaged) {
    struct Case {
        const char* Name;
        std::string Text;
        int Count;
        bool Box;
        std::string Of0012;
    };
    const std::string whole = "Error|bad symbol|A name is wrong|Check it";
    const std::vector<Case> cases = {
        {"whole", first + second, 2, false, whole},
        {"no end of the last line", first + "0107tb x\r\nNote. y\r\nz", 2, false, whole},
        {"one line too many", first + second + "0200tx late\r\n", 2, true, whole},
        {"cut behind the second line", first + "0107tb no room\r\nWarning. x\r\n", 2, true, whole},
        {"level without a point", first + "0107tb no room\r\nWarning\r\nSplit it\r\n", 2, true, whole},
        {"empty", "", 0, false, unknown},
        {"half a record rounds to the even neighbour below", "0012ta:x", 0, true, unknown},
        {"line ends of another system", "0012ta:x\nError. y\nz\n", 1, false, "Error|x|y|z"},
        {"short lines", "0012ta\r\n.\r\n\r\n", 1, false, "|||"},
        {"more records than a 16-bit count", std::string(3 * 32768, '\n'), 0, true, unknown},
        {"too large", std::string(ErrorCodes::MaxFileSize + 1, 'x'), 0, true, unknown},
        {"binary", std::string("\0\xFF\x80\n\0\xC3\n\xFE", 8), 1, true, unknown},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.Name);
        const Loaded loaded(c.Text);
        EXPECT_EQ(loaded.Codes.ErrorCount, c.Count);
        EXPECT_EQ(loaded.Boxes.LastText(), c.Box ? unreadable : "");
        EXPECT_EQ(loaded.Lookup("0012ta"), c.Of0012);
    }
}

TEST(ErrorCodes, AMissingFileSaysSoAndLookupsFindNothing) {
    ErrorCodes codes;
    doubles::Dialogs boxes;
    codes.LoadErrorCodes(doubles::MemoryFiles(), boxes, "C:\\K\\");
    EXPECT_EQ(boxes.LastText(),
              "Unable to find the error message data file: C:\\K\\TeskErr.txt.  Interactive error message "
              "display will not be functional unless this file is restored.\r\n\r\nReinstall Korvane to "
              "restore this file.");
    EXPECT_EQ(codes.ErrorCount, 0);
}

TEST(ErrorCodes, AnUnknownCodeFallsBackToTheFirstOfItsFamily) {
    const Loaded loaded(first + "0015ta:later\r\nError. y\r\nz\r\n" + second);
    EXPECT_EQ(loaded.Lookup("0015ta"), "Error|later|y|z");
    EXPECT_EQ(loaded.Lookup("0099ta"), "Error|bad symbol|A name is wrong|Check it");
    EXPECT_EQ(loaded.Lookup("0199ta"), unknown);
    EXPECT_EQ(loaded.Lookup("0012tb"), unknown);
}

TEST(ErrorCodes, ListLines) {
    EXPECT_EQ(ParseListLine("[0012ta] bad symbol"), "0012ta");
    EXPECT_EQ(ParseListLine("[0012  ]"), "0012  ");
    for (const char* line : {"", "[", "[001ta] x", "[abcdta] x", "[12.4ta] x", "0012ta] x", " [0012ta]",
                             "[0012ta", "[0012tax", "[0012]ta"}) {
        EXPECT_EQ(ParseListLine(line), std::nullopt) << line;
    }
}

}  // namespace
}  // namespace toolchain
