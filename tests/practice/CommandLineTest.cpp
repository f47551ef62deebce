#include <gtest/gtest.h>

#include "practice/program/CommandLine.h"

namespace vantrel::practice::test {
namespace {

CommandLine read(const std::vector<std::string>& arguments) {
    const auto result = CommandLine::read(arguments);
    if (const auto* error = std::get_if<CommandLineError>(&result)) {
        ADD_FAILURE() << error->message;
        return {};
    }
    return std::get<CommandLine>(result);
}

std::string wrong(const std::vector<std::string>& arguments) {
    const auto result = CommandLine::read(arguments);
    const auto* error = std::get_if<CommandLineError>(&result);
    return error == nullptr ? "" : error->message;
}

TEST(CommandLine, HasDefaults) {
    const CommandLine line = read({});
    EXPECT_EQ(line.listenAddress.text(), "127.0.0.1");
    EXPECT_FALSE(line.passwordFile.has_value());
    EXPECT_EQ(line.port, 8787);
    EXPECT_FALSE(line.help);
    EXPECT_FALSE(line.exitWithStandardInput);
    EXPECT_FALSE(line.seconds.has_value());
    EXPECT_FALSE(line.lostAfterSeconds.has_value());
    EXPECT_FALSE(line.configurationFile.has_value());
    EXPECT_TRUE(line.sessions.empty());
}

TEST(CommandLine, ReadsEveryOption) {
    const CommandLine line =
        read({"--port",   "0",         "--session",       "abc=Uno=Due", "--session",         "DEF",
              "--status", "def=ENDED", "--config",        "c.yaml",      "--public-address",  "http://a",
              "--for",    "1.5",       "--lost-after",    "2.5",         "--exit-with-stdin", "--help",
              "--listen", "0.0.0.0",   "--password-file", "p.txt"});
    EXPECT_EQ(line.listenAddress.text(), "0.0.0.0");
    EXPECT_EQ(line.passwordFile, "p.txt");
    EXPECT_EQ(line.port, 0);
    ASSERT_EQ(line.sessions.size(), 2U);
    EXPECT_EQ(line.sessions[0].code, "ABC");
    EXPECT_EQ(line.sessions[0].title, "Uno=Due");
    EXPECT_EQ(line.sessions[1].code, "DEF");
    EXPECT_EQ(line.sessions[1].title, "Lezione di prova");
    ASSERT_EQ(line.statuses.size(), 1U);
    EXPECT_EQ(line.statuses[0].first, "DEF");
    EXPECT_EQ(line.statuses[0].second, SessionStatus::ended);
    EXPECT_EQ(line.configurationFile, "c.yaml");
    EXPECT_EQ(line.publicAddress, "http://a");
    EXPECT_EQ(line.seconds, 1.5);
    EXPECT_EQ(line.lostAfterSeconds, 2.5);
    EXPECT_TRUE(line.exitWithStandardInput);
    EXPECT_TRUE(line.help);
}

TEST(CommandLine, SaysWhatIsWrong) {
    EXPECT_EQ(wrong({"--prot", "1"}), "unknown option '--prot'");
    EXPECT_EQ(wrong({"PROVA"}), "unknown option 'PROVA'");
    EXPECT_EQ(wrong({"--port"}), "--port: the value is missing");
    for (const std::string port : {"", "x", "80x", "-1", "65536"}) {
        EXPECT_EQ(wrong({"--port", port}), "--port: '" + port + "' is not a port number");
    }
    for (const std::string seconds : {"", "x", "1s", "-1", "inf", "nan"}) {
        EXPECT_EQ(wrong({"--for", seconds}), "--for: '" + seconds + "' is not a number of seconds");
        EXPECT_EQ(wrong({"--lost-after", seconds}), "--lost-after: '" + seconds + "' is not a number of seconds");
    }
    EXPECT_EQ(wrong({"--session", "A B"}),
              "--session: 'A B' is not a session code (letters, digits, '-', '.', '_' and '~')");
    EXPECT_EQ(wrong({"--status", "A=OVER"}), "--status: 'A=OVER' is not CODE=ACTIVE, CODE=WAITING or CODE=ENDED");
    EXPECT_EQ(wrong({"--status", "A"}), "--status: 'A' is not CODE=ACTIVE, CODE=WAITING or CODE=ENDED");
    EXPECT_EQ(wrong({"--public-address", ""}), "--public-address: the address is empty");
}

TEST(CommandLine, OthersReachTheServerOnlyWithAPassword) {
    for (const std::string address : {"127.0.0.1", "127.1.2.3", "::1"}) {
        EXPECT_EQ(wrong({"--listen", address}), "") << address;
    }
    for (const std::string address : {"0.0.0.0", "192.168.1.20", "::", "128.0.0.1", "::2", "::ffff:127.0.0.1"}) {
        EXPECT_NE(wrong({"--listen", address}), "") << address;
        EXPECT_EQ(wrong({"--password-file", "p.txt", "--listen", address}), "") << address;
    }
    for (const std::string address : {"", "localhost", "127.0.0", "[::1]", "127.0.0.1:80", "1.2.3.256"}) {
        EXPECT_EQ(wrong({"--listen", address}),
                  "--listen: '" + address + "' is not an IPv4 or IPv6 address in numbers");
    }
}

TEST(CommandLine, AnAddressStandsInALinkAsItShould) {
    EXPECT_EQ(ListenAddress().url(80), "http://127.0.0.1:80");
    EXPECT_EQ(ListenAddress::parse("::1")->url(8787), "http://[::1]:8787");
}

}  // namespace
}  // namespace vantrel::practice::test
