#include "rehearsal/reading/ActionReader.h"

#include <algorithm>
#include <array>
#include <functional>
#include <map>

namespace vantrel::rehearsal {
namespace {

struct FieldWord {
    std::string_view word;
    std::string_view id;
};

constexpr std::array fields = {FieldWord{"server", "serverUrlField"}, FieldWord{"code", "sessionCodeField"},
                               FieldWord{"name", "fullNameField"}, FieldWord{"email", "emailField"}};

constexpr std::array words = {
    "type",  "press",     "answer",           "choose",        "key",        "do",     "permission", "launch",
    "exit",  "plug",      "unplug",           "accessibility", "microphone", "camera", "close-lid",  "end-session",
    "reply", "fail-json", "refuse-addresses", "opening"};

}  // namespace

bool ActionReader::isWord(const std::string& word) const {
    return desktop_.isWord(word) || std::find(words.begin(), words.end(), word) != words.end();
}

Action ActionReader::read(const std::string& word, const YAML::Node& value) {
    if (desktop_.isWord(word)) return desktop_.read(word, value);
    const auto what = "'" + word + "'";
    const std::map<std::string, std::function<Action()>> readers = {
        {"type", [&] { return texts(value); }},
        {"press", [&] { return PressButton{reader_.nonEmptyText(value, what)}; }},
        {"answer", [&] { return AnswerAlert{reader_.nonEmptyText(value, what)}; }},
        {"choose", [&] { return ChooseMenuItem{reader_.nonEmptyText(value, what)}; }},
        {"key", [&] { return key(value); }},
        {"do", [&] { return deed(value); }},
        {"permission",
         [&] {
             return AnswerPermissionPrompt{reader_.word<bool>(value, what, {{"allow", true}, {"refuse", false}})};
         }},
        {"launch", [&] { return LaunchApplication{mac_.application(value)}; }},
        {"exit", [&] { return ExitApplication{reader_.nonEmptyText(value, what)}; }},
        {"plug", [&] { return PlugDisplay{mac_.display(value)}; }},
        {"unplug", [&] { return UnplugDisplay{reader_.nonEmptyText(value, what)}; }},
        {"accessibility", [&] { return SetAccessibility{mac_.accessibility(value)}; }},
        {"microphone",
         [&] {
             return SetCapture{MediaType::audio, mac_.capture(value, what)};
         }},
        {"camera",
         [&] {
             return SetCapture{MediaType::video, mac_.capture(value, what)};
         }},
        {"close-lid", [&] { return CloseLid{reader_.number(value, what, 0, 10'000'000)}; }},
        {"end-session", [&] { return EndSession{reader_.nonEmptyText(value, what)}; }},
        {"reply", [&] { return ChangeReplies{server_.rule(value)}; }},
        {"fail-json", [&] { return FailSerialisations{static_cast<int>(reader_.whole(value, what, 1, 1'000'000))}; }},
        {"refuse-addresses", [&] { return RefuseAddresses{reader_.text(value, what)}; }},
        {"opening",
         [&] {
             return SetOpening{reader_.word<bool>(value, what, {{"works", true}, {"fails", false}})};
         }},
    };
    return readers.at(word)();
}

TypeTexts ActionReader::texts(const YAML::Node& node) {
    TypeTexts typed;
    reader_.entries(node, "'type'", [&](const YAML::Node& key, const YAML::Node& value) {
        const auto field = std::find_if(fields.begin(), fields.end(),
                                        [&](const FieldWord& candidate) { return candidate.word == key.Scalar(); });
        if (field == fields.end()) {
            return reader_.fail(key, "unknown field '" + key.Scalar() + "' (server, code, name or email)");
        }
        typed.fields.emplace_back(field->id, reader_.text(value, "'" + key.Scalar() + "'"));
    });
    return typed;
}

Action ActionReader::key(const YAML::Node& node) {
    const auto name = reader_.text(node, "'key'");
    if (name == "Return") return PressKey{false, "\r"};
    constexpr std::string_view command = "Command-";
    if (name.starts_with(command) && name.size() == command.size() + 1) {
        const char letter = name.back();
        if (letter >= 'A' && letter <= 'Z')
            return PressKey{true, std::string(1, static_cast<char>(letter - 'A' + 'a'))};
    }
    if (const auto stroke = virtualmac::KeyStroke::parse(name)) return PressKeys{*stroke};
    reader_.fail(node, "'key' is not Return, Command- with a capital letter, or a key such as cmd+shift+4");
    return PressKey{};
}

Action ActionReader::deed(const YAML::Node& node) {
    return reader_.word<Action>(node, "'do'",
                                {{"open the status menu", Deed::openStatusMenu},
                                 {"open the application menu", Deed::openApplicationMenu},
                                 {"close the menu", Deed::closeMenu},
                                 {"close the window", Deed::closeWindow},
                                 {"log out", Deed::logOut},
                                 {"let the server reply as usual", ReplyAsUsual{}},
                                 {"let elements work as usual", DesktopAction(MendElements{})}});
}

}  // namespace vantrel::rehearsal
