#include "rehearsal/reading/DesktopActionReader.h"

namespace vantrel::rehearsal {

namespace {

constexpr double far = 100'000;
constexpr long long most = 1'000'000;

}  // namespace

DesktopActionReader::DesktopActionReader(NodeReader& reader, MacReader& mac) : reader_(reader), mac_(mac) {
    const auto text = [this](const YAML::Node& node, const char* word) {
        return reader_.nonEmptyText(node, "'" + std::string(word) + "'");
    };
    using What = DoToApplication::What;
    for (const auto& [word, what] : std::map<std::string, What>{{"quit", What::quit},
                                                                {"kill", What::kill},
                                                                {"minimise-window", What::minimise},
                                                                {"restore-window", What::restore},
                                                                {"close-window", What::close},
                                                                {"toggle-full-screen", What::toggleFullScreen},
                                                                {"hide-others", What::hideOthers}}) {
        readers_[word] = [text, word = word, what = what](const YAML::Node& node) {
            return DoToApplication{what, text(node, word.c_str())};
        };
    }
    readers_["hold-key"] = [this](const auto& node) { return heldKey(node); };
    readers_["application"] = [this](const auto& node) { return application(node); };
    readers_["move-window"] = [this](const auto& node) { return move(node); };
    readers_["resize-window"] = [this](const auto& node) { return resize(node); };
    readers_["open-window"] = [this](const auto& node) { return window(node); };
    readers_["swipe"] = [this](const auto& node) {
        return Swipe{reader_.word<bool>(node, "'swipe'", {{"left", true}, {"right", false}})};
    };
    readers_["arrange"] = [this](const auto& node) { return ArrangeDisplay{mac_.display(node)}; };
    readers_["mirror"] = [text](const auto& node) { return MirrorDisplay{text(node, "mirror"), true}; };
    readers_["unmirror"] = [text](const auto& node) { return MirrorDisplay{text(node, "unmirror"), false}; };
    readers_["display-notices"] = [this](const auto& node) { return notices(node); };
    readers_["close-cover"] = [text](const auto& node) { return CloseCover{text(node, "close-cover")}; };
    readers_["taps"] = [this](const auto& node) {
        return SetTaps{reader_.word<bool>(node, "'taps'", {{"given", true}, {"refused", false}})};
    };
    readers_["secure-input"] = [this](const auto& node) {
        return SetSecureInput{reader_.flag(node, "'secure-input'")};
    };
    readers_["window-list"] = [this](const auto& node) {
        return SetWindowList{reader_.word<bool>(node, "'window-list'", {{"works", true}, {"fails", false}})};
    };
    readers_["fail-elements"] = [this](const auto& node) { return fault(node); };
    readers_["silence"] = [text](const auto& node) { return SilenceApplication{text(node, "silence"), true}; };
    readers_["unsilence"] = [text](const auto& node) { return SilenceApplication{text(node, "unsilence"), false}; };
    readers_["hang"] = [this](const auto& node) { return HangClient{reader_.number(node, "'hang'", 0, 3600)}; };
}

DesktopAction DesktopActionReader::heldKey(const YAML::Node& node) {
    PressKeys pressed;
    reader_.mapping(
        node, "'hold-key'",
        {{"key",
          [&](const YAML::Node& value) {
              const auto key = virtualmac::KeyStroke::parse(reader_.text(value, "'key'"));
              if (!key) reader_.fail(value, "'key' is not a key such as cmd+shift+4");
              pressed.key = key.value_or(virtualmac::KeyStroke{});
          },
          true},
         {"times",
          [&](const YAML::Node& value) { pressed.times = static_cast<int>(reader_.whole(value, "'times'", 1, most)); },
          true}});
    return pressed;
}

DesktopAction DesktopActionReader::application(const YAML::Node& node) {
    if (!node.IsMap()) return ShowApplication{reader_.nonEmptyText(node, "'application'"), std::nullopt};
    auto started = mac_.application(node);
    auto name = started.name;
    return ShowApplication{std::move(name), std::move(started)};
}

MoveWindow DesktopActionReader::move(const YAML::Node& node) {
    MoveWindow moved;
    reader_.mapping(node, "'move-window'",
                    {reader_.requiredTextInto("of", moved.application),
                     {"to", [&](const YAML::Node& value) { moved.origin = pair(value, "'to'", -far); }, true}});
    return moved;
}

ResizeWindow DesktopActionReader::resize(const YAML::Node& node) {
    ResizeWindow resized;
    reader_.mapping(node, "'resize-window'",
                    {reader_.requiredTextInto("of", resized.application),
                     {"to",
                      [&](const YAML::Node& value) {
                          const Point size = pair(value, "'to'", 1);
                          resized.size = {size.x, size.y};
                      },
                      true}});
    return resized;
}

OpenWindow DesktopActionReader::window(const YAML::Node& node) {
    OpenWindow opened;
    const auto name = [&] { opened.window.title = opened.application; };
    if (!node.IsMap()) {
        opened.application = reader_.nonEmptyText(node, "'open-window'");
        name();
        return opened;
    }
    reader_.mapping(node, "'open-window'",
                    {reader_.requiredTextInto("of", opened.application),
                     reader_.textInto("title", opened.window.title),
                     {"frame", [&](const YAML::Node& value) { opened.window.frame = mac_.frame(value); }},
                     {"layer", [&](const YAML::Node& value) {
                          opened.window.layer = static_cast<int>(reader_.whole(value, "'layer'", -most, most));
                      }}});
    if (opened.window.title.empty()) name();
    return opened;
}

SetDisplayNotices DesktopActionReader::notices(const YAML::Node& node) {
    SetDisplayNotices set;
    reader_.mapping(
        node, "'display-notices'",
        {{"count",
          [&](const YAML::Node& value) { set.count = static_cast<int>(reader_.whole(value, "'count'", 0, 1000)); },
          true},
         {"every", [&](const YAML::Node& value) { set.every = reader_.number(value, "'every'", 0, 3600); }, true}});
    return set;
}

FailElements DesktopActionReader::fault(const YAML::Node& node) {
    using Operation = virtualmac::AccessibilityFaults::Operation;
    FailElements made;
    const auto named = [&](const char* word, Operation operation) {
        return NodeReader::Member{word, [this, &made, word, operation](const YAML::Node& value) {
                                      if (!made.name.empty()) reader_.fail(value, "a fault is of one kind");
                                      made.operation = operation;
                                      made.name = reader_.nonEmptyText(value, "'" + std::string(word) + "'");
                                  }};
    };
    reader_.mapping(node, "'fail-elements'",
                    {named("read", Operation::read),
                     named("write", Operation::write),
                     named("action", Operation::action),
                     {"error",
                      [&](const YAML::Node& value) {
                          made.error = static_cast<AccessibilityError>(reader_.whole(value, "'error'", -25299, 0));
                      },
                      true},
                     {"times", [&](const YAML::Node& value) {
                          made.times = static_cast<int>(reader_.whole(value, "'times'", 1, most));
                      }}});
    if (node.IsMap() && made.name.empty())
        reader_.fail(node, "'fail-elements' lacks what fails: read, write or action");
    return made;
}

Point DesktopActionReader::pair(const YAML::Node& node, const std::string& what, double least) {
    if (!node.IsSequence() || node.size() != 2) {
        reader_.fail(node, what + " is not two numbers such as [300, 200]");
        return {};
    }
    return {reader_.number(node[0], "the first number", least, far),
            reader_.number(node[1], "the second number", least, far)};
}

}  // namespace vantrel::rehearsal
