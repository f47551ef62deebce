#include <memory>
#include <string>
#include <vector>

#include "tests/virtual/MacTest.h"

namespace vantrel::virtualmac {
namespace {

using Lines = std::vector<std::string>;

/// The client in front of nothing, Chrome behind it, and Note, which the participant can bring to the front.
class ActivationTest : public MacTest {
  protected:
    explicit ActivationTest(int systemVersion = 14) : MacTest(withSystem(systemVersion)) {}

    void SetUp() override {
        mac().onMain([this] {
            WindowDescription description;
            description.title = "Vantrel";
            description.contentRect = {{40, 40}, {300, 200}};
            window = computer().windows.makeWindow(description, {});
            window->makeKeyAndOrderFront();
            computer().application.activate();
        });
        chrome = mac().applications().add({"Google Chrome", "com.google.Chrome"});
        note = mac().applications().add({"Note", "com.example.notes"});
    }
    void TearDown() override {
        mac().onMain([this] { window.reset(); });
        MacTest::TearDown();
    }

    static Options withSystem(int version) {
        Options options = optionsFromEnvironment();
        options.systemVersion = version;
        return options;
    }

    void participantGoesToNote() {
        participant().bringToFront("Note");
        mac().runFor(0);
        forgetEvents();
    }
    void answer(ActivationAnswer answer) { mac().activations().setAnswer(answer); }
    bool activate() {
        bool accepted = false;
        mac().onMain([&] {
            const auto application = computer().runningApplications.withProcessIdentifier(chrome);
            accepted = application->activate(ActivationOptions::none);
        });
        return accepted;
    }
    /// What the system alone answers.
    bool request() { return mac().processes().find(chrome)->requestActivation(ActivationOptions::none); }
    std::string front() {
        const auto candidates = mac().desktop().front();
        return candidates.empty() ? "" : candidates.front().name;
    }
    std::string frontAfter(double seconds) {
        mac().runFor(seconds);
        return front();
    }
    bool isClientInFront() { return mac().activations().isClientInFront(); }

    std::unique_ptr<Window> window;
    ProcessIdentifier chrome = 0;
    ProcessIdentifier note = 0;
};

class ActivationOnMacOS13 : public ActivationTest {
  protected:
    ActivationOnMacOS13() : ActivationTest(13) {}
};

TEST_F(ActivationTest, AClientInFrontBringsOthersInItsOwnPlaceOnly) {
    mac().onMain([this] { computer().application.activate(); });
    ASSERT_TRUE(isClientInFront());
    EXPECT_FALSE(request());
    mac().runFor(5);
    EXPECT_TRUE(isClientInFront());
    const auto& process = mac().processes().find(chrome);
    EXPECT_TRUE(process->requestActivationFrom(mac().desktop().front().front(), ActivationOptions::none));
    EXPECT_EQ("Google Chrome", frontAfter(0.2));
}

TEST_F(ActivationTest, AClientInFrontStaysThereIfItsRequestIsIgnored) {
    mac().onMain([this] { computer().application.activate(); });
    answer(ActivationAnswer::ignores);
    EXPECT_TRUE(request());
    mac().runFor(5);
    EXPECT_TRUE(isClientInFront());
}

TEST_F(ActivationTest, AClientThatIsNotInFrontIsRefused) {
    participantGoesToNote();
    EXPECT_FALSE(request());
    EXPECT_EQ("Note", frontAfter(5));
    const auto& process = mac().processes().find(chrome);
    EXPECT_FALSE(process->requestActivationFrom({chrome, "Google Chrome"}, ActivationOptions::none)) << "not in front";
    EXPECT_TRUE(process->requestActivationFrom({note, "Note"}, ActivationOptions::none));
    EXPECT_EQ("Google Chrome", frontAfter(0.2));
    EXPECT_TRUE(request()) << "what is in front may be asked for";
}

TEST_F(ActivationTest, ARequestMayBeAcceptedAndIgnored) {
    answer(ActivationAnswer::ignores);
    participantGoesToNote();
    EXPECT_TRUE(request());
    EXPECT_TRUE(mac().processes().find(chrome)->requestActivationFrom({note, "Note"}, ActivationOptions::none));
    EXPECT_EQ("Note", frontAfter(5));
}

TEST_F(ActivationTest, ARequestMayBeFollowedLate) {
    answer(ActivationAnswer::comesLate);
    participantGoesToNote();
    EXPECT_TRUE(request());
    EXPECT_EQ("Note", frontAfter(2));
    EXPECT_EQ("Google Chrome", frontAfter(0.2));
}

TEST_F(ActivationTest, TheClientBringsTheBrowserWhateverTheAnswer) {
    for (const auto each : {ActivationAnswer::brings, ActivationAnswer::refuses, ActivationAnswer::ignores,
                            ActivationAnswer::comesLate}) {
        answer(each);
        participantGoesToNote();
        EXPECT_TRUE(activate());
        mac().runFor(1.5);
        EXPECT_TRUE(activate());
        EXPECT_EQ("Google Chrome", frontAfter(1));
        mac().runFor(10);
    }
}

TEST_F(ActivationTest, TheClientsWindowIsSeenWhateverTheAnswer) {
    mac().applications().openWindow(note, {"Note", {{200, 200}, {600, 400}}});
    const auto frontWindow = [this] {
        const auto windows = computer().windowList.copy(WindowListOption::onScreenOnly);
        return windows && !windows->empty() ? windows->front().ownerName.value_or("") : "";
    };
    for (const auto each : {ActivationAnswer::brings, ActivationAnswer::refuses, ActivationAnswer::ignores,
                            ActivationAnswer::comesLate}) {
        answer(each);
        participantGoesToNote();
        EXPECT_EQ("Note", frontWindow());
        mac().onMain([this] { computer().application.activate(); });
        mac().runFor(0.2);
        EXPECT_EQ("Vantrel", frontWindow());
        EXPECT_EQ(each != ActivationAnswer::ignores && each != ActivationAnswer::comesLate, isClientInFront());
        mac().runFor(5);
    }
}

TEST_F(ActivationTest, AClientThatComesLateIsToldThenAndOneThatComesAtOnceIsNot) {
    participantGoesToNote();
    answer(ActivationAnswer::brings);
    mac().onMain([this] { computer().application.activate(); });
    EXPECT_TRUE(isClientInFront());
    EXPECT_EQ(Lines{}, texts(ApplicationEvent::frontmost));
    participantGoesToNote();
    answer(ActivationAnswer::comesLate);
    mac().onMain([this] { computer().application.activate(); });
    mac().runFor(5);
    EXPECT_EQ(Lines{"Vantrel"}, texts(ApplicationEvent::frontmost));
}

TEST_F(ActivationOnMacOS13, AClientThatComesLateIsToldThen) {
    participantGoesToNote();
    answer(ActivationAnswer::comesLate);
    mac().onMain([this] { computer().application.activate(); });
    mac().runFor(5);
    EXPECT_TRUE(isClientInFront());
    EXPECT_EQ(Lines{"Vantrel"}, texts(ApplicationEvent::frontmost));
}

TEST_F(ActivationTest, AClientThatWasHiddenIsSeenAgain) {
    answer(ActivationAnswer::ignores);
    participant().hideOthersOf("Note");
    participantGoesToNote();
    EXPECT_TRUE(mac().application().isHidden());
    participant().press("X");
    mac().runFor(0);
    EXPECT_EQ("no window is on the screen", events(Deed::press).at(0).field(Field::ignored));
    mac().onMain([this] { computer().application.activate(); });
    EXPECT_FALSE(mac().application().isHidden());
    EXPECT_EQ(Lines{"Vantrel"}, texts(WindowEvent::orderedFront));
}

/// Starts Chrome as the client does, and returns who is in front when its window has opened.
class ActivationOfWhatIsStarted : public ActivationTest {
  protected:
    void SetUp() override {
        ActivationTest::SetUp();
        mac().processes().exit(chrome);
        mac().processes().install(chromePath, virtualmac::chrome());
    }
    std::string frontAfterStart() {
        computer().processLauncher.launch(chromePath, {});
        return frontAfter(2);
    }
};

TEST_F(ActivationOfWhatIsStarted, ComesToTheFrontBecauseTheClientLetsIt) {
    EXPECT_EQ("Google Chrome", frontAfterStart());
    EXPECT_EQ("com.google.Chrome", mac().activations().yieldedTo());
}

TEST_F(ActivationOfWhatIsStarted, StaysBehindWhereNobodyLetsIt) {
    mac().processes().launchTask(chromePath, {});
    mac().runFor(2);
    EXPECT_TRUE(isClientInFront());
    EXPECT_EQ("", mac().activations().yieldedTo());
}

TEST_F(ActivationOfWhatIsStarted, StaysBehindWhenTheClientIsNotInFront) {
    participantGoesToNote();
    EXPECT_EQ("Note", frontAfterStart());
    EXPECT_EQ("", mac().activations().yieldedTo());
}

TEST_F(ActivationOfWhatIsStarted, ComesToTheFrontForTheParticipant) {
    participantGoesToNote();
    participant().openApplication(chromePath);
    EXPECT_EQ("Google Chrome", frontAfter(2));
}

TEST_F(ActivationOnMacOS13, TheClientBringsWhatItAsksFor) {
    participantGoesToNote();
    EXPECT_TRUE(request());
    EXPECT_EQ("Google Chrome", frontAfter(0.2));
}

TEST_F(ActivationOnMacOS13, NothingIsYieldedAndWhatIsStartedComesByItself) {
    mac().processes().exit(chrome);
    mac().processes().install(chromePath, virtualmac::chrome());
    participantGoesToNote();
    computer().processLauncher.launch(chromePath, {});
    EXPECT_EQ("Google Chrome", frontAfter(2));
    EXPECT_EQ("", mac().activations().yieldedTo());
}

}  // namespace
}  // namespace vantrel::virtualmac
