#include "session/JoinScreen.h"

#include "server/ServerAddress.h"
#include "server/Whitespace.h"

namespace vantrel {
namespace {

Control label(std::string text, Font font, TextColor color, Rect frame) {
    Control control;
    control.text = std::move(text);
    control.font = font;
    control.color = color;
    control.frame = frame;
    return control;
}

Control field(std::string_view id, std::string placeholder, Rect frame) {
    Control control;
    control.kind = Control::Kind::textField;
    control.id = id;
    control.placeholder = std::move(placeholder);
    control.frame = frame;
    return control;
}

// Each field is called by the label above it.
void nameFields(std::vector<Control>& controls) {
    for (std::size_t index = 1; index < controls.size(); ++index) {
        if (controls[index].kind == Control::Kind::textField) {
            controls[index].accessibilityLabel = controls[index - 1].text;
        }
    }
}

Control separator(Rect frame) {
    Control control;
    control.kind = Control::Kind::separator;
    control.frame = frame;
    return control;
}

}  // namespace

View JoinScreen::view(const Rect& frame, const std::string& clientVersion) {
    View view;
    view.id = viewId;
    view.frame = frame;
    view.autoresizingMask = viewWidthSizable | viewHeightSizable;

    const Font caption{12, false};
    auto status = label("", caption, TextColor::systemRed, {{24, 122}, {392, 18}});
    status.id = errorLabel;
    status.announced = true;

    Control join;
    join.kind = Control::Kind::button;
    join.id = joinButton;
    join.text = "Avvia sessione protetta";
    join.frame = {{24, 80}, {210, 32}};
    join.keyEquivalent = "\r";
    join.action = "joinTapped";

    view.controls = {
        label("🔒 Vantrel", {26, true}, TextColor::standard, {{24, 408}, {392, 34}}),
        label("Inserisci i dati ricevuti dal formatore", caption, TextColor::secondaryLabel, {{24, 384}, {392, 18}}),
        label("Server Vantrel:", caption, TextColor::standard, {{24, 352}, {392, 18}}),
        field(serverUrlField, std::string(defaultServerAddress), {{24, 324}, {392, 24}}),
        separator({{24, 310}, {392, 1}}),
        label("Codice sessione:", caption, TextColor::standard, {{24, 288}, {392, 18}}),
        field(sessionCodeField, "es. NQRP5D", {{24, 262}, {392, 24}}),
        label("Nome e cognome:", caption, TextColor::standard, {{24, 232}, {392, 18}}),
        field(fullNameField, "Maria Bianchi", {{24, 206}, {392, 24}}),
        label("Email:", caption, TextColor::standard, {{24, 176}, {392, 18}}),
        field(emailField, "maria.bianchi@example.com", {{24, 150}, {392, 24}}),
        status,
        join,
        label("v" + clientVersion + " — a cura del gruppo Vantrel", {10, false}, TextColor::tertiaryLabel,
              {{24, 50}, {392, 16}}),
    };
    nameFields(view.controls);
    return view;
}

void JoinScreen::fill() {
    window_.setText(serverUrlField, defaults_.string(serverURLKey).value_or(std::string(defaultServerAddress)));
    if (const auto name = defaults_.string(fullNameKey); name && !name->empty()) window_.setText(fullNameField, *name);
    if (const auto email = defaults_.string(emailKey); email && !email->empty()) window_.setText(emailField, *email);
    window_.setText(sessionCodeField, "");
}

std::variant<JoinScreen::Input, std::string> JoinScreen::read() const {
    Input input{trimmedField(serverUrlField), trimmedField(sessionCodeField), trimmedField(fullNameField),
                trimmedField(emailField)};
    if (input.serverAddress.empty()) return "⚠ Inserisci l'indirizzo del server Vantrel";
    if (input.sessionCode.empty()) return "⚠ Inserisci il codice sessione";
    if (input.fullName.empty()) return "⚠ Inserisci nome e cognome";
    if (input.email.empty()) return "⚠ Inserisci l'email";
    return input;
}

void JoinScreen::save(const Input& input) {
    defaults_.set(serverURLKey, input.serverAddress);
    defaults_.set(fullNameKey, input.fullName);
    defaults_.set(emailKey, input.email);
}

std::string JoinScreen::serverFieldText() const {
    return window_.text(serverUrlField).value_or("");
}

void JoinScreen::showStatus(std::string_view text) {
    window_.setText(errorLabel, text);
}

void JoinScreen::setJoinEnabled(bool enabled) {
    window_.setEnabled(joinButton, enabled);
}

void JoinScreen::setHidden(bool hidden) {
    window_.setViewHidden(viewId, hidden);
}

std::string JoinScreen::trimmedField(std::string_view id) const {
    return trimmed(window_.text(id).value_or(""));
}

}  // namespace vantrel
