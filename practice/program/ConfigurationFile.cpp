#include "practice/program/ConfigurationFile.h"

#include <yaml-cpp/yaml.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <set>

#include "practice/configuration/ClientVersion.h"
#include "practice/configuration/SessionCode.h"

namespace vantrel::practice {

namespace {

/// Reads nodes, and remembers the first mistake.
class Reader {
  public:
    explicit Reader(std::string path) : path_(std::move(path)) {}

    const std::string& error() const { return error_; }

    void fail(const YAML::Mark& mark, const std::string& what) {
        if (!error_.empty()) return;
        const int line = mark.is_null() ? 1 : mark.line + 1;
        error_ = path_ + ":" + std::to_string(line) + ": " + what;
    }

    using Members = std::map<std::string, std::function<void(const YAML::Node&)>>;

    void readMembers(const YAML::Node& node, const std::string& name, const Members& members) {
        if (!node.IsMap()) return fail(node.Mark(), name + " is not a mapping");
        const std::string inName = " in " + name;
        std::set<std::string> seen;
        for (const auto& entry : node) {
            if (!entry.first.IsScalar()) return fail(entry.first.Mark(), "a key of " + name + " is not a plain text");
            const std::string key = entry.first.Scalar();
            const auto member = members.find(key);
            if (member == members.end())
                return fail(entry.first.Mark(), std::string("unknown key '").append(key).append("'").append(inName));
            if (!seen.insert(key).second)
                return fail(entry.first.Mark(), std::string("'").append(key).append("' stands twice").append(inName));
            member->second(entry.second);
            if (!error_.empty()) return;
        }
    }

    std::function<void(const YAML::Node&)> text(std::string& place, const std::string& name) {
        return [this, &place, name](const YAML::Node& node) {
            if (!node.IsScalar()) return fail(node.Mark(), "'" + name + "' is not a text");
            place = node.Scalar();
        };
    }

    std::function<void(const YAML::Node&)> version(std::string& place, const std::string& name) {
        return [this, &place, name](const YAML::Node& node) {
            if (!node.IsScalar() || !ClientVersion::parse(node.Scalar())) {
                return fail(node.Mark(), "'" + name + "' is not a version such as 2.1-macOS");
            }
            place = node.Scalar();
        };
    }

    PracticeSession session(const YAML::Node& node) {
        PracticeSession session;
        readMembers(node, "a session",
                    {{"code",
                      [&](const YAML::Node& value) {
                          if (!value.IsScalar() || !isSessionCode(value.Scalar())) {
                              return fail(value.Mark(), "'code' is not letters, digits, '-', '.', '_' and '~'");
                          }
                          session.code = upperCaseCode(value.Scalar());
                      }},
                     {"title", text(session.title, "title")},
                     {"status",
                      [&](const YAML::Node& value) {
                          const auto status = value.IsScalar() ? sessionStatusFrom(value.Scalar()) : std::nullopt;
                          if (!status) return fail(value.Mark(), "'status' is not ACTIVE, WAITING or ENDED");
                          session.status = *status;
                      }},
                     {"meet-link", text(session.meetLink, "meet-link")}});
        if (session.code.empty()) fail(node.Mark(), "a session lacks 'code'");
        return session;
    }

    PracticeConfiguration configuration(const YAML::Node& root) {
        PracticeConfiguration configuration;
        VersionConfiguration& version = configuration.version;
        readMembers(root, "the file",
                    {{"public-address", text(configuration.publicAddress, "public-address")},
                     {"sessions",
                      [&](const YAML::Node& list) {
                          if (!list.IsSequence()) return fail(list.Mark(), "'sessions' is not a list");
                          std::set<std::string> codes;
                          for (const YAML::Node& node : list) {
                              configuration.sessions.push_back(session(node));
                              const std::string& code = configuration.sessions.back().code;
                              if (!codes.insert(code).second) fail(node.Mark(), "there are two sessions " + code);
                              if (!error_.empty()) return;
                          }
                      }},
                     {"version", [&](const YAML::Node& node) {
                          readMembers(node, "'version'",
                                      {{"latest", this->version(version.latest, "latest")},
                                       {"severity", text(version.severity, "severity")},
                                       {"release-notes", text(version.releaseNotes, "release-notes")},
                                       {"download-url", text(version.downloadUrl, "download-url")},
                                       {"minimum", this->version(version.minimum, "minimum")},
                                       {"minimum-message", text(version.minimumMessage, "minimum-message")}});
                      }}});
        return configuration;
    }

  private:
    std::string path_;
    std::string error_;
};

}  // namespace

std::variant<PracticeConfiguration, ConfigurationError> readConfigurationFile(const std::string& path) {
    std::error_code error;
    if (std::filesystem::is_directory(path, error)) return ConfigurationError{path + ": the file is a folder"};
    std::ifstream file(path, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    if (!file.is_open() || file.bad()) return ConfigurationError{path + ": the file cannot be read"};
    return readConfiguration(text, path);
}

std::variant<PracticeConfiguration, ConfigurationError> readConfiguration(const std::string& text,
                                                                          const std::string& path) {
    Reader reader(path);
    try {
        PracticeConfiguration configuration = reader.configuration(YAML::Load(text));
        if (reader.error().empty()) return configuration;
    } catch (const YAML::Exception& exception) {
        reader.fail(exception.mark, exception.msg);
    }
    return ConfigurationError{reader.error()};
}

}  // namespace vantrel::practice
