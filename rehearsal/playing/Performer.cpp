#include "rehearsal/playing/Performer.h"

#include <string_view>
#include <variant>

namespace vantrel::rehearsal {
namespace {

std::string_view word(AuthorizationStatus status) {
    switch (status) {
        case AuthorizationStatus::notDetermined:
            return "undecided";
        case AuthorizationStatus::restricted:
            return "restricted";
        case AuthorizationStatus::denied:
            return "refused";
        case AuthorizationStatus::authorized:
            return "granted";
    }
    return {};
}

}  // namespace

void Performer::perform(const Action& action) {
    std::visit([this](const auto& what) { (*this)(what); }, action);
}

void Performer::operator()(const TypeTexts& action) {
    for (const auto& [id, text] : action.fields) mac_.participant().type(id, text);
}

void Performer::operator()(const PressButton& action) {
    mac_.participant().press(action.title);
}

void Performer::operator()(const AnswerAlert& action) {
    mac_.participant().answerAlert(action.button);
}

void Performer::operator()(const ChooseMenuItem& action) {
    mac_.participant().chooseMenuItem(action.title);
}

void Performer::operator()(const PressKey& action) {
    if (action.command) {
        mac_.participant().pressCommand(action.key);
    } else {
        mac_.participant().pressReturn();
    }
}

void Performer::operator()(Deed deed) {
    auto& participant = mac_.participant();
    switch (deed) {
        case Deed::openStatusMenu:
            return participant.openStatusMenu();
        case Deed::openApplicationMenu:
            // It has no title of its own; the system shows the application's name.
            return participant.openMainMenu("");
        case Deed::closeMenu:
            return participant.closeMenu();
        case Deed::closeWindow:
            return participant.closeWindow();
        case Deed::logOut:
            return participant.logOut();
    }
}

void Performer::operator()(const AnswerPermissionPrompt& action) {
    mac_.participant().answerPermissionPrompt(action.allow);
}

void Performer::operator()(const LaunchApplication& action) {
    launch(action.application);
}

void Performer::operator()(const ExitApplication& action) {
    const auto own = mac_.applications().ownProcess();
    for (const auto& process : mac_.processes().all()) {
        if (process->processIdentifier() == own || !process->isListed()) continue;
        if (process->description().name == action.name && process->exit()) return;
    }
    note("ignored", action.name + " exits: it is not running");
}

void Performer::operator()(const PlugDisplay& action) {
    const auto& name = action.display.localizedName;
    for (const auto& screen : mac_.screens().displays().screens) {
        if (screen.localizedName == name) return note("ignored", "display " + name + " is plugged in: there is one");
    }
    mac_.screens().plug(action.display);
}

void Performer::operator()(const UnplugDisplay& action) {
    if (!mac_.screens().unplug(action.name)) note("ignored", "display " + action.name + " is unplugged: there is none");
}

void Performer::operator()(const SetAccessibility& action) {
    note("permission", action.granted ? "accessibility is granted" : "accessibility is refused");
    mac_.trust().setTrusted(action.granted);
}

void Performer::operator()(const SetCapture& action) {
    mac_.capture().setStatus(action.media, action.status);
    note("permission", std::string(action.media == MediaType::audio ? "microphone" : "camera") + " is set to " +
                           std::string(word(action.status)));
}

void Performer::operator()(const CloseLid& action) {
    mac_.clock().closeLid(action.seconds);
}

void Performer::operator()(const EndSession& action) {
    if (network_.endSession(action.code)) {
        note("server", "ends session " + action.code);
    } else {
        note("ignored", "the server ends session " + action.code + ": there is none");
    }
}

void Performer::operator()(const ChangeReplies& action) {
    network_.add(action.rule);
    const auto& reply = action.rule.reply;
    note("server", "replies otherwise to " + reply.method + " " + reply.path);
}

void Performer::operator()(const ReplyAsUsual&) {
    network_.removeRules();
    note("server", "replies as usual");
}

void Performer::operator()(const FailSerialisations& action) {
    mac_.json().failNext(action.count);
    note("fault", "JSON serialisations that fail from now on: " + std::to_string(action.count));
}

void Performer::operator()(const RefuseAddresses& action) {
    if (action.containing.empty()) {
        mac_.urls().failFormingWhere(nullptr);
        note("fault", "addresses form URLs again");
        return;
    }
    mac_.urls().failFormingWhere(
        [part = action.containing](std::string_view text) { return text.find(part) != std::string_view::npos; });
    note("fault", "no URL is formed of an address with " + action.containing);
}

void Performer::operator()(const SetOpening& action) {
    mac_.workspace().setFailing(!action.works);
    constexpr const char* error = "L’applicazione “Safari” non può essere aperta.";
    mac_.opener().failWith(action.works ? std::nullopt : std::optional<std::string>(error));
    note("fault", action.works ? "addresses are opened again" : "no address is opened");
}

void Performer::note(const char* kind, const std::string& text) {
    transcript_.add(mac_.now(), kind, text);
}

}  // namespace vantrel::rehearsal
