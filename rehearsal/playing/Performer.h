#pragma once

#include <string>

#include "platform/virtual/VirtualMac.h"
#include "rehearsal/playing/DesktopPerformer.h"
#include "rehearsal/playing/RehearsalNetwork.h"
#include "rehearsal/scenario/Action.h"
#include "rehearsal/transcript/Transcript.h"

namespace vantrel::rehearsal {

/// Performs a step's actions, on the driver's thread. It records what the virtual Mac does not: changes of the server,
/// the permissions and the faults.
class Performer {
  public:
    Performer(virtualmac::VirtualMac& mac, RehearsalNetwork& network, Transcript& transcript)
        : mac_(mac), network_(network), transcript_(transcript), desktop_(mac, transcript) {}

    void perform(const Action& action);
    void launch(const OtherApplication& application) { desktop_.launch(application); }

  private:
    void operator()(const TypeTexts& action);
    void operator()(const PressButton& action);
    void operator()(const AnswerAlert& action);
    void operator()(const ChooseMenuItem& action);
    void operator()(const PressKey& action);
    void operator()(Deed deed);
    void operator()(const AnswerPermissionPrompt& action);
    void operator()(const LaunchApplication& action);
    void operator()(const ExitApplication& action);
    void operator()(const PlugDisplay& action);
    void operator()(const UnplugDisplay& action);
    void operator()(const SetAccessibility& action);
    void operator()(const SetCapture& action);
    void operator()(const CloseLid& action);
    void operator()(const EndSession& action);
    void operator()(const ChangeReplies& action);
    void operator()(const ReplyAsUsual& action);
    void operator()(const FailSerialisations& action);
    void operator()(const RefuseAddresses& action);
    void operator()(const SetOpening& action);
    void operator()(const DesktopAction& action) { desktop_.perform(action); }

    void note(const char* kind, const std::string& text);

    virtualmac::VirtualMac& mac_;
    RehearsalNetwork& network_;
    Transcript& transcript_;
    DesktopPerformer desktop_;
};

}  // namespace vantrel::rehearsal
