#include <gtest/gtest.h>

#include "practice/program/ConfigurationFile.h"

namespace vantrel::practice::test {
namespace {

std::string wrong(const std::string& text) {
    const auto result = readConfiguration(text, "c.yaml");
    const auto* error = std::get_if<ConfigurationError>(&result);
    return error == nullptr ? "" : error->message;
}

TEST(ConfigurationFile, ReadsTheExample) {
    const auto result = readConfigurationFile(VANTREL_PRACTICE_CLASSES);
    ASSERT_TRUE(std::holds_alternative<PracticeConfiguration>(result));
    const auto& configuration = std::get<PracticeConfiguration>(result);
    ASSERT_EQ(configuration.sessions.size(), 4U);
    EXPECT_EQ(configuration.sessions[0].code, "PROVA");
    EXPECT_EQ(configuration.sessions[0].title, "Sicurezza sul lavoro, modulo 1");
    EXPECT_EQ(configuration.sessions[0].status, SessionStatus::active);
    EXPECT_EQ(configuration.sessions[0].meetLink, "");
    EXPECT_EQ(configuration.sessions[1].status, SessionStatus::waiting);
    EXPECT_EQ(configuration.sessions[2].status, SessionStatus::ended);
    EXPECT_EQ(configuration.sessions[3].meetLink, "https://meet.example.org/primo-soccorso");
    EXPECT_EQ(configuration.version.latest, "2.1-macOS");
    EXPECT_EQ(configuration.version.severity, "recommended");
    EXPECT_EQ(configuration.version.releaseNotes, "Avvio più rapido della riunione.");
    EXPECT_EQ(configuration.version.downloadUrl, "https://download.example.org/vantrel");
    EXPECT_EQ(configuration.version.minimum, "1.5");
    EXPECT_NE(configuration.version.minimumMessage, "");
}

TEST(ConfigurationFile, NamesTheLineOfWhatIsWrong) {
    EXPECT_EQ(wrong("sessions:\n  - code: A\n    titel: B\n"), "c.yaml:3: unknown key 'titel' in a session");
    EXPECT_EQ(wrong("sessions:\n  - code: A B\n"), "c.yaml:2: 'code' is not letters, digits, '-', '.', '_' and '~'");
    EXPECT_EQ(wrong("sessions:\n  - code: A\n  - title: B\n"), "c.yaml:3: a session lacks 'code'");
    EXPECT_EQ(wrong("sessions:\n  - code: A\n  - code: B\n  - code: a\n"), "c.yaml:4: there are two sessions A");
    EXPECT_EQ(wrong("sessions:\n  - code: A\n    code: B\n"), "c.yaml:3: 'code' stands twice in a session");
    EXPECT_EQ(wrong("sessions:\n  - code: A\n    status: ended\n"),
              "c.yaml:3: 'status' is not ACTIVE, WAITING or ENDED");
    EXPECT_EQ(wrong("sessions:\n  - A\n"), "c.yaml:2: a session is not a mapping");
    EXPECT_EQ(wrong("\nsessions: A\n"), "c.yaml:2: 'sessions' is not a list");
    EXPECT_EQ(wrong("version:\n  latest: newest\n"), "c.yaml:2: 'latest' is not a version such as 2.1-macOS");
    EXPECT_EQ(wrong("version:\n  severity: [a]\n"), "c.yaml:2: 'severity' is not a text");
    EXPECT_EQ(wrong("version: 2\n"), "c.yaml:1: 'version' is not a mapping");
    EXPECT_EQ(wrong("public-address: http://a\nport: 1\n"), "c.yaml:2: unknown key 'port' in the file");
    EXPECT_EQ(wrong("[a]: b\n"), "c.yaml:1: a key of the file is not a plain text");
    EXPECT_EQ(wrong("- a\n"), "c.yaml:1: the file is not a mapping");
    EXPECT_EQ(wrong(""), "c.yaml:1: the file is not a mapping");
}

TEST(ConfigurationFile, NamesTheLineOfWhatIsNoYaml) {
    EXPECT_EQ(wrong("sessions:\n  - code: \"A\n").rfind("c.yaml:", 0), 0U);
    EXPECT_EQ(wrong("sessions:\n\t- code: A\n").rfind("c.yaml:2: ", 0), 0U);
    EXPECT_EQ(wrong("sessions: *none\n").rfind("c.yaml:1: ", 0), 0U);
    EXPECT_NE(wrong(std::string(100000, '[')), "");
}

TEST(ConfigurationFile, SaysThatAFileCannotBeRead) {
    const auto result = readConfigurationFile("/nowhere/classes.yaml");
    ASSERT_TRUE(std::holds_alternative<ConfigurationError>(result));
    EXPECT_EQ(std::get<ConfigurationError>(result).message, "/nowhere/classes.yaml: the file cannot be read");
}

}  // namespace
}  // namespace vantrel::practice::test
