#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QTest>
#include <chrono>
#include <future>

#include "platform/qt/HostLink.h"
#include "platform/qt/LinkServer.h"
#include "support/Doubles.h"

namespace platform::qt {
namespace {

constexpr auto topic = "Schematic/PCB|frmMain";  // the slash is no folder

class LinkTest : public testing::Test {
  protected:
    LinkTest() {
        std::filesystem::permissions(folder_.Path(), std::filesystem::perms::owner_all);
        qputenv("XDG_RUNTIME_DIR", folder_.Path().c_str());
    }
    ~LinkTest() override { qputenv("XDG_RUNTIME_DIR", before_); }

    // The number of the error that a call ends with, 0 for none.
    static int ErrorOf(const std::function<void()>& call) {
        const auto start = std::chrono::steady_clock::now();
        int number = 0;
        try {
            call();
        } catch (const base::RunTimeError& error) {
            number = error.Number();
        }
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
        return number;
    }

    const QByteArray before_ = qgetenv("XDG_RUNTIME_DIR");
    const doubles::TemporaryFolder folder_;
};

// Takes one conversation: after each command it sends the next reply, then goes.
void Play(int listener, const std::vector<std::string>& replies) {
    const base::Descriptor client(::accept(listener, nullptr, nullptr));
    char byte = 0;
    for (const std::string& reply : replies) {
        while (::read(client.Get(), &byte, 1) == 1 && byte != LinkEnd) {
        }
        ::send(client.Get(), reply.data(), reply.size(), MSG_NOSIGNAL);
    }
    if (replies.empty() || !replies.back().empty()) return;
    while (::read(client.Get(), &byte, 1) == 1) {  // a silent one stays until the client goes
    }
}

}  // namespace

TEST_F(LinkTest, WhatAServerSaysBecomesAnError) {
    const auto message = [](const std::string& text) { return text + LinkEnd; };
    const struct {
        const char* Server;
        std::vector<std::string> Replies;
        std::vector<int> Errors;
    } cases[] = {
        {"obliging", {message("accepted"), message("accepted")}, {0, 0}},
        {"unwilling", {message("refused"), message("accepted")}, {errLinkRefused, 0}},
        {"silent", {""}, {errLinkSilent}},
        {"late", {"", message("refused") + message("accepted"), message("refused")}, {286, 0, 285}},
        {"broken off", {"acc", ""}, {errLinkSilent}},
        {"dying at once", {}, {errLinkClosed, errLinkClosed}},
        {"dying midway", {"acc"}, {errLinkClosed, errLinkClosed}},
        {"talking nonsense", {message("\x01 200 OK"), message("")}, {errLinkRefused, errLinkRefused}},
        {"talking on and on", {std::string(1 << 16, 'x')}, {errLinkClosed, errLinkClosed}},
    };
    HostLink link;
    link.SetLinkTopic(topic);
    EXPECT_EQ(ErrorOf([&] { link.LinkExecute("Display"); }), errLinkClosed);
    for (const auto& c : cases) {
        SCOPED_TRACE(c.Server);
        EXPECT_EQ(ErrorOf([&] { link.SetLinkMode(LinkMode::Manual); }), base::errNoForeignApplication);
        const base::Descriptor listener(::socket(AF_UNIX, SOCK_STREAM, 0));
        sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
        const std::string path = LinkSocket(topic).toStdString();
        path.copy(address.sun_path, sizeof address.sun_path - 1);
        ASSERT_EQ(::bind(listener.Get(), reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
        ASSERT_EQ(::listen(listener.Get(), 1), 0);
        const auto server = std::async(std::launch::async, Play, listener.Get(), c.Replies);
        EXPECT_EQ(ErrorOf([&] { link.SetLinkMode(LinkMode::Manual); }), 0);
        for (const int error : c.Errors) EXPECT_EQ(ErrorOf([&] { link.LinkExecute("Display"); }), error);
        EXPECT_EQ(ErrorOf([&] { link.SetLinkMode(LinkMode::None); }), 0);
        ::unlink(path.c_str());
    }
}

TEST_F(LinkTest, AServerCarriesOutWhatItWasSent) {
    std::vector<std::string> commands;
    const LinkServer server("Schematic/PCB", "frmMain", [&](const std::string& command) {
        commands.push_back(command);
        return command != "no";
    });
    ASSERT_TRUE(server.IsListening());
    const std::string longest(MaxLinkMessage, 'x');
    const auto converse = [&] {
        HostLink link;
        link.SetLinkTopic(topic);
        link.SetLinkMode(LinkMode::Manual);
        std::vector<int> errors;
        for (const std::string& command : {std::string("Open C:\\Ä\n.SI"), std::string("no"), longest,
                                           longest + "x", std::string(2, '\0')})
            errors.push_back(ErrorOf([&] { link.LinkExecute(command); }));
        return errors;
    };
    auto client = std::async(std::launch::async, converse);
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return client.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }));
    EXPECT_EQ(client.get(), (std::vector<int>{0, errLinkRefused, 0, 5, 5}));
    EXPECT_EQ(commands, (std::vector<std::string>{"Open C:\\Ä\n.SI", "no", longest}));

    commands.clear();  // a server that is busy while a client comes and goes
    EXPECT_EQ(converse(), (std::vector<int>{286, 286, 286, 5, 5}));
    EXPECT_TRUE(QTest::qWaitFor([&] { return commands.size() == 3; }));
}

TEST_F(LinkTest, AFurtherCopyTakesOverTheName) {
    const auto accept = [](const std::string&) { return true; };
    const pid_t crashed = ::fork();
    if (crashed == 0) {
        const LinkServer left("Schematic/PCB", "frmMain", accept);
        ::_exit(1);  // the socket stays
    }
    ::waitpid(crashed, nullptr, 0);
    ASSERT_TRUE(std::filesystem::exists(LinkSocket(topic).toStdString()));
    auto first = std::make_unique<LinkServer>("Schematic/PCB", "frmMain", accept);
    const LinkServer second("Schematic/PCB", "frmMain", accept);
    EXPECT_TRUE(first->IsListening());
    EXPECT_FALSE(second.IsListening());
    first.reset();
    EXPECT_TRUE(QTest::qWaitFor([&] { return second.IsListening(); }));
    HostLink link;
    link.SetLinkTopic(topic);
    EXPECT_EQ(ErrorOf([&] { link.SetLinkMode(LinkMode::Manual); }), 0);
}

}  // namespace platform::qt
