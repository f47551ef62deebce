#pragma once

#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "platform/desktop/Screens.h"
#include "platform/system/CaptureAuthorization.h"
#include "rehearsal/scenario/DesktopAction.h"
#include "rehearsal/scenario/ExchangeRule.h"
#include "rehearsal/scenario/MacSetup.h"

namespace vantrel::rehearsal {

/// Texts for fields of the join screen, by the fields' ids, in order.
struct TypeTexts {
    std::vector<std::pair<std::string, std::string>> fields;
};

struct PressButton {
    std::string title;
};

struct AnswerAlert {
    std::string button;
};

struct ChooseMenuItem {
    std::string title;
};

/// Return, or Command with a letter.
struct PressKey {
    bool command = false;
    /// "\r" for Return.
    std::string key;
};

enum class Deed { openStatusMenu, openApplicationMenu, closeMenu, closeWindow, logOut };

struct AnswerPermissionPrompt {
    bool allow = true;
};

struct LaunchApplication {
    OtherApplication application;
};

struct ExitApplication {
    std::string name;
};

struct PlugDisplay {
    Screen display;
};

struct UnplugDisplay {
    std::string name;
};

struct SetAccessibility {
    bool granted = true;
};

struct SetCapture {
    MediaType media = MediaType::audio;
    AuthorizationStatus status = AuthorizationStatus::authorized;
};

struct CloseLid {
    double seconds = 0;
};

struct EndSession {
    std::string code;
};

struct ChangeReplies {
    ExchangeRule rule;
};

/// The server answers normally again.
struct ReplyAsUsual {};

/// The next JSON serialisations fail.
struct FailSerialisations {
    int count = 0;
};

/// Addresses that contain the text form no URL. An empty text ends this.
struct RefuseAddresses {
    std::string containing;
};

/// Whether the workspace opens addresses.
struct SetOpening {
    bool works = true;
};

using Action = std::variant<TypeTexts, PressButton, AnswerAlert, ChooseMenuItem, PressKey, Deed, AnswerPermissionPrompt,
                            LaunchApplication, ExitApplication, PlugDisplay, UnplugDisplay, SetAccessibility,
                            SetCapture, CloseLid, EndSession, ChangeReplies, ReplyAsUsual, FailSerialisations,
                            RefuseAddresses, SetOpening, DesktopAction>;

}  // namespace vantrel::rehearsal
