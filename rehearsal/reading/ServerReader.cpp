#include "rehearsal/reading/ServerReader.h"

#include "platform/portable/URLComponents.h"
#include "platform/portable/URLGrammar.h"
#include "practice/configuration/ClientVersion.h"
#include "practice/configuration/SessionCode.h"
#include "practice/messages/Base64.h"

namespace vantrel::rehearsal {
namespace {

/// Whether it is only scheme and host, with or without a port.
bool isOrigin(const std::string& address) {
    if (!isURIReference(address)) return false;
    const auto parts = URLComponents::split(address);
    const bool isHTTP = parts.scheme == "http" || parts.scheme == "https";
    if (!isHTTP || !parts.authority || !parts.path.empty() || parts.query || parts.fragment) return false;
    const auto& authority = *parts.authority;
    return !authority.empty() && authority.front() != ':' && authority.back() != ':' &&
           authority.find('@') == std::string::npos;
}

}  // namespace

ServerSetup ServerReader::read(const YAML::Node& node) {
    ServerSetup server;
    std::set<std::string> codes;
    auto members = conditionsInto(server, codes);
    members.push_back({"address", [&](const YAML::Node& value) { server.address = address(value); }});
    reader_.mapping(node, "'server'", members);
    return server;
}

ServerConditions ServerReader::readAfterPrelude(const YAML::Node& node, const ServerSetup& before) {
    ServerConditions server;
    std::set<std::string> codes;
    for (const auto& session : before.sessions) codes.insert(session.code);
    auto members = conditionsInto(server, codes);
    members.push_back(reader_.settledByPrelude("address"));
    reader_.mapping(node, "'server'", members);
    return server;
}

std::vector<NodeReader::Member> ServerReader::conditionsInto(ServerConditions& server, std::set<std::string>& codes) {
    return {{"latency", [&](const YAML::Node& value) { server.latency = reader_.number(value, "'latency'", 0); }},
            {"sessions",
             [&](const YAML::Node& value) {
                 reader_.list(value, "'sessions'", [&](const YAML::Node& one) {
                     auto session = this->session(one);
                     if (!session.code.empty() && !codes.insert(session.code).second) {
                         reader_.fail(one, "there are two sessions " + session.code);
                     }
                     server.sessions.push_back(std::move(session));
                 });
             }},
            {"version", [&](const YAML::Node& value) { server.version = version(value); }},
            {"replies", [&](const YAML::Node& value) {
                 reader_.list(value, "'replies'", [&](const YAML::Node& one) { server.replies.push_back(rule(one)); });
             }}};
}

ExchangeRule ServerReader::rule(const YAML::Node& node) {
    ExchangeRule rule;
    auto& reply = rule.reply;
    int endings = 0;
    const auto ending = [&](const std::string& name, ExchangeRule::Ending kind) {
        return NodeReader::Member{name, [this, &rule, &endings, name, kind](const YAML::Node& value) {
                                      if (!reader_.flag(value, "'" + name + "'")) return;
                                      rule.ending = kind;
                                      ++endings;
                                  }};
    };
    reader_.mapping(
        node, "a reply rule",
        {{"to", [&](const YAML::Node& value) { target(value, reply); }, true},
         {"times",
          [&](const YAML::Node& value) {
              reply.times = static_cast<std::uint64_t>(reader_.whole(value, "'times'", 1, 1'000'000));
          }},
         {"status",
          [&](const YAML::Node& value) {
              reply.status = static_cast<int>(reader_.whole(value, "'status'", 200, 999));
          }},
         {"body", [&](const YAML::Node& value) { reply.body = reader_.text(value, "'body'"); }},
         {"body-size",
          [&](const YAML::Node& value) {
              reply.bodySize = static_cast<std::size_t>(
                  reader_.whole(value, "'body-size'", 0, static_cast<long long>(practice::ReplyRule::largestBody)));
          }},
         {"body-base64",
          [&](const YAML::Node& value) {
              reply.body = value.IsScalar() ? practice::fromBase64(value.Scalar()) : std::nullopt;
              if (!reply.body) reader_.fail(value, "'body-base64' is not base64 with its padding");
          }},
         {"location", [&](const YAML::Node& value) { reply.location = reader_.nonEmptyText(value, "'location'"); }},
         {"delay",
          [&](const YAML::Node& value) {
              reply.delaySeconds = reader_.number(value, "'delay'", 0, practice::ReplyRule::longestDelay);
          }},
         {"pieces", [&](const YAML::Node& value) { pieces(value, rule); }},
         {"stalls", [&](const YAML::Node& value) { reply.stallAfterHeaders = reader_.flag(value, "'stalls'"); }},
         {"drops", [&](const YAML::Node& value) { reply.dropConnection = reader_.flag(value, "'drops'"); }},
         ending("never-comes", ExchangeRule::Ending::silence),
         ending("not-http", ExchangeRule::Ending::notHTTP),
         {"error", [&](const YAML::Node& value) {
              rule.ending = ExchangeRule::Ending::transportError;
              rule.errorText = reader_.nonEmptyText(value, "'error'");
              ++endings;
          }}});
    if (reply.dropConnection) ++endings;
    if (reply.stallAfterHeaders) ++endings;
    if (endings > 1) {
        reader_.fail(node, "a reply rule has more than one of: stalls, drops, never-comes, not-http, error");
    }
    return rule;
}

std::string ServerReader::address(const YAML::Node& node) {
    auto address = reader_.nonEmptyText(node, "'address'");
    if (!isOrigin(address)) reader_.fail(node, "'address' is not of the form https://HOST or http://HOST:PORT");
    return address;
}

practice::PracticeSession ServerReader::session(const YAML::Node& node) {
    practice::PracticeSession session;
    reader_.mapping(node, "a session",
                    {{"code",
                      [&](const YAML::Node& value) {
                          if (!value.IsScalar() || !practice::isSessionCode(value.Scalar())) {
                              return reader_.fail(value, "'code' is not letters, digits, '-', '.', '_' and '~'");
                          }
                          session.code = practice::upperCaseCode(value.Scalar());
                      },
                      true},
                     reader_.textInto("title", session.title),
                     {"status",
                      [&](const YAML::Node& value) {
                          session.status =
                              reader_.word<practice::SessionStatus>(value, "'status'",
                                                                    {{"WAITING", practice::SessionStatus::waiting},
                                                                     {"ACTIVE", practice::SessionStatus::active},
                                                                     {"ENDED", practice::SessionStatus::ended}});
                      }},
                     reader_.textInto("meet-link", session.meetLink)});
    return session;
}

practice::VersionConfiguration ServerReader::version(const YAML::Node& node) {
    practice::VersionConfiguration version;
    const auto number = [this](const std::string& name, std::string& place) {
        return NodeReader::Member{name, [this, name, &place](const YAML::Node& value) {
                                      place = reader_.text(value, "'" + name + "'");
                                      if (value.IsScalar() && !practice::ClientVersion::parse(place)) {
                                          reader_.fail(value, "'" + name + "' is not a version such as 2.1-macOS");
                                      }
                                  }};
    };
    reader_.mapping(
        node, "'version'",
        {number("latest", version.latest), reader_.textInto("severity", version.severity),
         reader_.textInto("release-notes", version.releaseNotes), reader_.textInto("download-url", version.downloadUrl),
         number("minimum", version.minimum), reader_.textInto("minimum-message", version.minimumMessage)});
    return version;
}

void ServerReader::target(const YAML::Node& node, practice::ReplyRule& reply) {
    const auto text = reader_.text(node, "'to'");
    if (!node.IsScalar()) return;
    const auto space = text.find(' ');
    const auto method = text.substr(0, space);
    const auto path = space == std::string::npos ? "" : text.substr(space + 1);
    const bool isMethod = method == "*" || method == "GET" || method == "POST";
    if (!isMethod || !path.starts_with('/') || path.find(' ') != std::string::npos) {
        reader_.fail(node, "'to' is not a method (GET, POST or *) and a path, such as: GET /api/sessions/*");
    }
    reply.method = method;
    reply.path = path;
}

void ServerReader::pieces(const YAML::Node& node, ExchangeRule& rule) {
    reader_.mapping(
        node, "'pieces'",
        {{"count",
          [&](const YAML::Node& value) { rule.pieces = static_cast<int>(reader_.whole(value, "'count'", 1, 1'000)); },
          true},
         {"every", [&](const YAML::Node& value) { rule.pause = reader_.number(value, "'every'", 0); }, true}});
}

}  // namespace vantrel::rehearsal
