#include "session/EndScreen.h"

namespace vantrel {

View EndScreen::view(const Rect& frame) {
    Control title;
    title.text = "Sessione terminata";
    title.font = {22, true};
    title.frame = {{24, 380}, {392, 30}};

    Control message;
    message.kind = Control::Kind::wrappingLabel;
    message.id = endMessageLabel;
    message.font = {13, false};
    message.color = TextColor::secondaryLabel;
    message.frame = {{24, 290}, {392, 80}};
    message.announced = true;

    Control again;
    again.kind = Control::Kind::button;
    again.id = newSessionButton;
    again.text = "Nuova sessione";
    again.frame = {{24, 230}, {160, 32}};
    again.action = "resetToJoin";

    View view;
    view.id = viewId;
    view.frame = frame;
    view.autoresizingMask = viewWidthSizable | viewHeightSizable;
    view.hidden = true;
    view.controls = {title, message, again};
    return view;
}

void EndScreen::setMessage(std::string_view message) {
    window_.setText(endMessageLabel, message);
}

void EndScreen::setHidden(bool hidden) {
    window_.setViewHidden(viewId, hidden);
}

}  // namespace vantrel
