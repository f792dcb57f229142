#include "launcher/UserTree.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <map>
#include <thread>

#include "base/PosixFile.h"
#include "launcher/Folders.h"
#include "launcher/HandOver.h"
#include "support/Doubles.h"

namespace launcher {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

class UserTreeTest : public testing::Test {
  protected:
    UserTreeTest() {
        disk.Write("opt/Korvane/Korvane",
                   "\x7f"
                   "ELF program");
        disk.Write("opt/Korvane/TeskErr.txt", "texts");
        disk.Write("opt/Shared/Large.ref", std::string(1 << 19, 'x'));
        disk.Write("opt/Examples/COUNT8.PLD", "a counter");
        disk.Write("opt/bin/korvane", "the launcher");
        fs::create_directories(disk.Path() / "opt/Korvane/doc");
        fs::create_directories(disk.Path() / "documents");
        fs::permissions(disk.Path() / "opt/Korvane/TeskErr.txt", fs::perms::owner_read);
    }

    Folders Places() const {
        const std::string root = disk.Path().string();
        return {root + "/opt", root + "/data/korvane", root + "/documents/Korvane", root};
    }

    // Every file of the tree, but for the record, with its bytes; links with an arrow.
    std::map<std::string, std::string> Tree() const {
        std::map<std::string, std::string> files;
        for (const auto& entry : fs::recursive_directory_iterator(disk.Path() / "data/korvane")) {
            const std::string name = entry.path().lexically_relative(disk.Path() / "data/korvane").string();
            if (name == ".installed" || (entry.is_directory() && !entry.is_symlink())) continue;
            files[name] =
                entry.is_symlink()
                    ? "-> " + fs::read_symlink(entry.path()).lexically_relative(disk.Path()).string()
                    : disk.Read("data/korvane/" + name);
        }
        return files;
    }

    doubles::TemporaryFolder disk;
    std::map<std::string, std::string> whole = {{"Korvane/Korvane", "-> opt/Korvane/Korvane"},
                                                {"Korvane/TeskErr.txt", "texts"},
                                                {"Shared/Large.ref", "-> opt/Shared/Large.ref"},
                                                {"Examples", "-> documents/Korvane"}};
};

TEST_F(UserTreeTest, IsMadeOnceAndMended) {
    KeepUp(Places());
    EXPECT_EQ(Tree(), whole);
    EXPECT_TRUE(disk.Exists("data/korvane/Korvane/doc"));
    EXPECT_EQ(disk.Read("documents/Korvane/COUNT8.PLD"), "a counter");
    // A user's own bytes and files stay, what is lost comes again.
    disk.Write("data/korvane/Korvane/TeskErr.txt", "my texts");
    disk.Write("data/korvane/Korvane/KORVANE.CFG", "my colours");
    whole["Korvane/TeskErr.txt"] = "my texts";
    whole["Korvane/KORVANE.CFG"] = "my colours";
    fs::remove(disk.Path() / "data/korvane/Shared/Large.ref");
    fs::remove(disk.Path() / "documents/Korvane/COUNT8.PLD");
    EXPECT_TRUE(KeepUp(Places()).Beside.empty());
    EXPECT_EQ(Tree(), whole);
    EXPECT_TRUE(disk.Exists("documents/Korvane/COUNT8.PLD"));
    // With nothing to do nothing is written.
    const auto before = fs::last_write_time(disk.Path() / "data/korvane/.installed");
    KeepUp(Places());
    EXPECT_EQ(fs::last_write_time(disk.Path() / "data/korvane/.installed"), before);
}

TEST_F(UserTreeTest, AnUpgradeKeepsWhatTheUserChanged) {
    disk.Write("opt/MACRO/A.MAC", "one");
    disk.Write("opt/MACRO/B.MAC", "one");
    disk.Write("opt/MACRO/C.MAC", "one");
    disk.Write("opt/MACRO/D.MAC", "one");
    disk.Write("documents/Korvane/COUNT8.PLD", "a counter of my own");  // before the first start
    EXPECT_EQ(KeepUp(Places()).Beside, std::vector{Places().Examples + "/COUNT8.PLD"});
    EXPECT_EQ(disk.Read("documents/Korvane/COUNT8.PLD.new"), "a counter");
    disk.Write("data/korvane/MACRO/A.MAC", "mine");
    disk.Write("data/korvane/MACRO/D.MAC", "mine");

    const fs::path moved = disk.Path() / "opt2";
    fs::rename(disk.Path() / "opt", moved);
    disk.Write("opt2/MACRO/A.MAC", "two 2");
    disk.Write("opt2/MACRO/B.MAC", "two 2");
    fs::remove(moved / "MACRO/C.MAC");
    fs::remove(moved / "MACRO/D.MAC");
    Folders places = Places();
    places.Installation = moved.string();
    EXPECT_EQ(KeepUp(places).Beside, std::vector{places.Tree + "/MACRO/A.MAC"});
    whole["Korvane/Korvane"] = "-> opt2/Korvane/Korvane";
    whole["Shared/Large.ref"] = "-> opt2/Shared/Large.ref";
    whole["MACRO/A.MAC"] = "mine";
    whole["MACRO/A.MAC.new"] = "two 2";
    whole["MACRO/B.MAC"] = "two 2";
    whole["MACRO/D.MAC"] = "mine";
    EXPECT_EQ(Tree(), whole);
    EXPECT_TRUE(KeepUp(places).Beside.empty()) << "told once";
    // A folder of the user's in the place of a new file.
    fs::create_directories(disk.Path() / "data/korvane/MACRO/E.MAC/own");
    disk.Write("opt2/MACRO/E.MAC", "two");
    EXPECT_EQ(KeepUp(places).Beside, std::vector{places.Tree + "/MACRO/E.MAC"});
    EXPECT_EQ(disk.Read("data/korvane/MACRO/E.MAC.new"), "two");
}

TEST_F(UserTreeTest, IsWholeOrNotAtAll) {
    // A start that was cut short leaves no more work than there was.
    disk.Write("data/korvane/.incoming/0", "half");
    disk.Write("data/korvane/Korvane/TeskErr.txt", "texts");
    KeepUp(Places());
    EXPECT_EQ(Tree(), whole);
    // Of a newer version: left alone.
    disk.Write("data/korvane/.installed", "korvane-tree\t99.0.0\t/elsewhere\n");
    fs::remove(disk.Path() / "data/korvane/Korvane/TeskErr.txt");
    EXPECT_TRUE(KeepUp(Places()).IsOfNewerVersion);
    EXPECT_FALSE(disk.Exists("data/korvane/Korvane/TeskErr.txt"));
    fs::remove_all(disk.Path() / "data");

    // Something else in the place of the examples: told by its name, and nothing is begun.
    fs::remove_all(disk.Path() / "documents/Korvane");
    disk.Write("documents/Korvane", "mine");
    try {
        KeepUp(Places());
        ADD_FAILURE();
    } catch (const TreeError& error) {
        EXPECT_NE(std::string(error.what()).find("/documents/Korvane"), std::string::npos) << error.what();
    }
    EXPECT_EQ(disk.Read("documents/Korvane") + (disk.Exists("data/korvane") ? "!" : ""), "mine");
    fs::remove(disk.Path() / "documents/Korvane");

    // A disk that is full after some files: a limit of this process stands for it.
    disk.Write("opt/Z.TXT", std::string(200000, 'z'));
    const pid_t child = ::fork();
    if (child == 0) {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit little{100000, 100000};
        ::setrlimit(RLIMIT_FSIZE, &little);
        try {
            KeepUp(Places());
        } catch (const TreeError& error) {
            const bool isClear = std::string(error.what()).starts_with("There is not enough room ");
            ::_exit(isClear && !error.HasTree ? 7 : 8);
        }
        ::_exit(9);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(WEXITSTATUS(status), 7);
    EXPECT_FALSE(disk.Exists("data/korvane"));
}

TEST_F(UserTreeTest, TwoFirstStartsAtOnceMakeOneTree) {
    std::vector<pid_t> starts;
    for (int i = 0; i < 4; ++i) {
        starts.push_back(::fork());
        if (starts.back() != 0) continue;
        try {
            KeepUp(Places());
            ::_exit(7);
        } catch (...) {
            ::_exit(8);
        }
    }
    for (const pid_t start : starts) {
        int status = 0;
        ::waitpid(start, &status, 0);
        EXPECT_EQ(WEXITSTATUS(status), 7);
    }
    EXPECT_EQ(Tree(), whole);
    EXPECT_EQ(HandOver(Places().RunTime, "/A.PLD", 1ms), Answer::Nobody);
}

TEST_F(UserTreeTest, FoldersAreThoseOfTheDesktop) {
    const std::string root = disk.Path().string();
    ::setenv("HOME", root.c_str(), 1);
    ::setenv("XDG_CONFIG_HOME", (root + "/config").c_str(), 1);
    ::setenv("XDG_DATA_HOME", "relative", 1);
    const std::pair<std::string, std::string> cases[] = {
        {"", ""},
        {"XDG_TEMPLATES_DIR=\"/usr\"\nXDG_DOCUMENTS_DIR=\"$HOME/documents\"\n", "/documents"},
        {"XDG_DOCUMENTS_DIR=\"" + root + "/opt\"\n", "/opt"},
        {"XDG_DOCUMENTS_DIR=\"opt\"\n", ""},
        {"XDG_DOCUMENTS_DIR=\"$HOME/none\"\n", ""}};
    for (const auto& [text, documents] : cases) {
        disk.Write("config/user-dirs.dirs", text);
        EXPECT_EQ(FindFolders().Examples, root + documents + "/Korvane") << text;
    }
    EXPECT_EQ(FindFolders().Tree, root + "/.local/share/korvane");
    ::unsetenv("HOME");
    EXPECT_NE(FindFolders().Tree, "/.local/share/korvane") << "the user's home is known without";
    ::setenv("XDG_RUNTIME_DIR", "/run/user/7", 1);
    EXPECT_EQ(FindFolders().RunTime, "/run/user/7");
    ::unsetenv("XDG_RUNTIME_DIR");
    EXPECT_NE(FindFolders().RunTime.find("/runtime-"), std::string::npos);
}

TEST_F(UserTreeTest, FilesAreHandedToTheProgramThatAnswers) {
    EXPECT_EQ(HandOver(std::string(200, 'x'), "/A.PLD", 1ms), Answer::Nobody);
    const base::Descriptor server(::socket(AF_UNIX, SOCK_STREAM, 0));
    sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
    (disk.Path() / "korvane.socket").string().copy(address.sun_path, sizeof address.sun_path - 1);
    ASSERT_EQ(::bind(server.Get(), reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    ASSERT_EQ(::listen(server.Get(), 4), 0);
    EXPECT_EQ(HandOver(disk.Path().string(), "/A.PLD", 1ms), Answer::Refused) << "it does not answer";
    base::Descriptor(::accept(server.Get(), nullptr, nullptr));
    for (const auto& [said, answer] :
         {std::pair("1", Answer::Taken), {"0", Answer::Refused}, {"", Answer::Refused}}) {
        std::string asked(8, ' ');
        std::thread program([&, said = said] {
            const base::Descriptor socket(::accept(server.Get(), nullptr, nullptr));
            asked.resize(static_cast<std::size_t>(::recv(socket.Get(), asked.data(), asked.size(), 0)));
            base::WriteBytes(socket, "answer", said);
        });
        EXPECT_EQ(HandOver(disk.Path().string(), "/A.PLD", 10s), answer) << said;
        program.join();
        EXPECT_EQ(asked, "/A.PLD\n");
    }
}

}  // namespace
}  // namespace launcher
