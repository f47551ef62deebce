#include <string>

#include "tests/virtual/MacTest.h"

namespace vantrel::virtualmac {
namespace {

using Lines = std::vector<std::string>;

class Delegate final : public ApplicationDelegate {
  public:
    explicit Delegate(Computer& computer) : computer(computer) {}

    void applicationDidFinishLaunching() override {
        EXPECT_TRUE(computer.threads.isMainThread());
        computer.log.print("launched");
        if (onLaunch) onLaunch();
    }
    TerminateReply applicationShouldTerminate() override {
        computer.log.print("asked");
        return reply;
    }

    Computer& computer;
    std::function<void()> onLaunch;
    TerminateReply reply = TerminateReply::now;
};

Menu mainMenu() {
    MenuItem application;
    application.kind = MenuItem::Kind::submenu;
    application.submenu.items = {{MenuItem::Kind::action, "Esci", "terminate:", "q", true, nullptr, {}}};
    MenuItem edit;
    edit.kind = MenuItem::Kind::submenu;
    edit.submenu.title = "Edit";
    edit.submenu.items = {{MenuItem::Kind::action, "Undo", "undo", "z", true, nullptr, {}}, MenuItem::separator()};
    return {"", {application, edit}};
}

class ApplicationTest : public MacTest {
  protected:
    void launch(TerminateReply reply, std::function<void()> onLaunch = {}) {
        mac().launch([this, reply, onLaunch = std::move(onLaunch)](Computer& computer) {
            const auto delegate = std::make_shared<Delegate>(computer);
            delegate->reply = reply;
            delegate->onLaunch = onLaunch;
            computer.application.setActivationPolicy(ActivationPolicy::regular);
            computer.application.setDelegate(delegate);
            computer.application.setMainMenu(mainMenu());
            computer.application.run();
            returned = true;
        });
        mac().runFor(1);
    }

    std::atomic<bool> returned = false;
};

TEST_F(ApplicationTest, TellsTheDelegateThatLaunchingHasFinished) {
    launch(TerminateReply::now);
    EXPECT_EQ((Happenings{
                  {ClientEvent::activationPolicy, "0"},
                  {ClientEvent::mainMenu, ",Edit"},
                  {ClientEvent::log, "launched"},
              }),
              transcript());
    EXPECT_TRUE(mac().isRunning());
    EXPECT_FALSE(returned);
}

TEST_F(ApplicationTest, EndsWhenTheDelegateAnswersNow) {
    launch(TerminateReply::now);
    forgetEvents();
    participant().pressCommand("q");
    mac().runFor(1);
    EXPECT_EQ((Happenings{
                  {Deed::pressCommand, "q"},
                  {ClientEvent::terminateAsked},
                  {ClientEvent::log, "asked"},
                  {ClientEvent::terminated},
              }),
              transcript());
    EXPECT_TRUE(returned);
    EXPECT_FALSE(mac().isRunning());
}

TEST_F(ApplicationTest, GoesOnWhenTheDelegateRefuses) {
    launch(TerminateReply::cancel);
    forgetEvents();
    participant().logOut();
    mac().runFor(1);
    EXPECT_EQ((Happenings{
                  {Deed::logOut},
                  {ClientEvent::terminateAsked},
                  {ClientEvent::log, "asked"},
                  {ClientEvent::terminateRefused},
              }),
              transcript());
    EXPECT_TRUE(mac().isRunning());
}

TEST_F(ApplicationTest, EndsWithoutADelegate) {
    mac().launch([](Computer& computer) { computer.application.run(); });
    participant().logOut();
    mac().runFor(0);
    EXPECT_FALSE(mac().isRunning());
}

TEST_F(ApplicationTest, IsNotHeardOfOnceItHasEnded) {
    launch(TerminateReply::now);
    std::unique_ptr<Timer> timer;
    mac().onMain(
        [&] { timer = computer().mainRunLoop.scheduledTimer(1, true, [&] { computer().log.print("tick"); }); });
    mac().inBackground([&] {
        computer().threads.sleep(3);
        computer().log.print("worker");
        computer().urlSession.dataTask({}, [](URLReply) { ADD_FAILURE() << "a completion after the end"; });
    });
    computer().dispatch.mainQueue().asyncAfter(4, [] { ADD_FAILURE() << "a block after the end"; });
    participant().logOut();
    mac().runFor(0);
    forgetEvents();
    mac().runFor(10);
    EXPECT_EQ(Happenings{}, transcript());
    mac().drain();
    EXPECT_EQ(Leftovers{}, mac().leftovers());
}

TEST_F(ApplicationTest, ChangesNothingMoreOnceItHasEnded) {
    launch(TerminateReply::now);
    const auto other = mac().applications().add({"Anteprima", "com.apple.Preview", false, 0});
    mac().trust().setTrusted(false);
    mac().inBackground([&] {
        computer().userDefaults.set("kept", "before");
        computer().threads.sleep(3);
        computer().userDefaults.set("kept", "after");
        computer().userDefaults.set("new", "after");
        computer().captureAuthorization.requestAccess(MediaType::audio,
                                                      [](bool) { ADD_FAILURE() << "an answer after the end"; });
        EXPECT_FALSE(computer().accessibilityTrust.isProcessTrustedWithPrompt());
        for (const auto& each : computer().runningApplications.withBundleIdentifier("com.apple.Preview")) {
            EXPECT_FALSE(each->forceTerminate());
        }
    });
    mac().postToMain([&] {
        computer().threads.sleep(1);
        computer().application.terminate();
        EXPECT_FALSE(computer().workspace.open(URL{"https://download.example"}));
    });
    mac().runFor(10);
    EXPECT_FALSE(mac().isRunning());
    EXPECT_EQ((VirtualUserDefaults::Values{{"kept", "before"}}), mac().defaults().values());
    EXPECT_EQ(Lines{}, mac().workspace().opened());
    EXPECT_EQ(0, mac().trust().prompts());
    EXPECT_EQ(0U, mac().capture().prompts());
    EXPECT_TRUE(mac().applications().exit(other));
}

TEST_F(ApplicationTest, EndsUnderItsOwnAlert) {
    launch(TerminateReply::now, [this] {
        computer().alerts.runModal({AlertStyle::informational, "Già in esecuzione", "", {}});
        computer().log.print("dismissed");
        computer().application.terminate();
    });
    EXPECT_EQ(Lines{"launched"}, logLines());
    participant().logOut();
    mac().runFor(0);
    EXPECT_EQ((Lines{"launched", "asked"}), logLines());
    EXPECT_TRUE(returned);
}

TEST_F(ApplicationTest, RunsAMainMenusItemAfterTrackingHasEnded) {
    launch(TerminateReply::now);
    std::unique_ptr<Timer> timer;
    mac().onMain([&] {
        auto menu = mainMenu();
        menu.items[1].submenu.items[0].target = [this] { computer().log.print("undo"); };
        computer().application.setMainMenu(menu);
        timer = computer().mainRunLoop.scheduledTimer(1, true, [&] { computer().log.print("tick"); });
    });
    forgetEvents();
    participant().openMainMenu("Edit");
    mac().runFor(2.5);
    computer().dispatch.mainQueue().async([&] { computer().log.print("block"); });
    mac().runFor(0);
    participant().chooseMenuItem("Undo");
    mac().runFor(0.1);
    EXPECT_EQ((Happenings{
                  {Deed::openMenu, "Edit"},
                  {MenuEvent::opened, "Edit"},
                  {ClientEvent::log, "block"},
                  {Deed::chooseMenuItem, "Undo"},
                  {MenuEvent::closed, "Edit", {{Field::chosen, "Undo"}}},
                  {ClientEvent::log, "undo"},
                  {ClientEvent::log, "tick"},
              }),
              transcript());
    mac().onMain([&] { timer.reset(); });
}

TEST_F(ApplicationTest, IgnoresKeysThatNobodyAnswers) {
    launch(TerminateReply::now);
    participant().pressCommand("Q");
    participant().pressCommand("z");
    mac().runFor(0);
    EXPECT_EQ("no menu item answers", events<Deed>().at(0).field(Field::ignored));
    EXPECT_EQ("only a text field would answer", events<Deed>().at(1).field(Field::ignored));
}

TEST_F(ApplicationTest, RefusesToBeTouchedOffTheMainThread) {
    expectMisuse();
    mac().inBackground([&] { computer().application.activate(); });
    mac().runFor(0);
    EXPECT_EQ(Lines{"Application.activate off the main thread"}, expectedMisuse());
}

}  // namespace
}  // namespace vantrel::virtualmac
