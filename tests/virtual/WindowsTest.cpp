#include <string>

#include "tests/virtual/MacTest.h"

namespace vantrel::virtualmac {
namespace {

using Lines = std::vector<std::string>;

Control control(Control::Kind kind, std::string id, std::string text) {
    Control made;
    made.kind = kind;
    made.id = std::move(id);
    made.text = std::move(text);
    return made;
}

WindowDescription description(std::string title) {
    WindowDescription made;
    made.title = std::move(title);
    made.contentRect = {{0, 0}, {480, 360}};
    made.styleMask = windowTitled | windowClosable;
    View form{"form", {}, 0, false, {}};
    form.controls = {control(Control::Kind::label, "", "Nome"), control(Control::Kind::textField, "name", "Ada"),
                     control(Control::Kind::button, "go", "Entra")};
    form.controls.back().keyEquivalent = "\r";
    View end{"end", {}, 0, true, {control(Control::Kind::button, "back", "Indietro")}};
    made.views = {form, end};
    return made;
}

class WindowsTest : public MacTest {
  protected:
    void make(Windows::ActionHandler onAction = {}) {
        mac().onMain([&] { window = computer().windows.makeWindow(description("Vantrel"), std::move(onAction)); });
    }
    void drop() {
        mac().onMain([this] { window.reset(); });
    }
    void onMain(const std::function<void(Window&)>& function) {
        mac().onMain([&] { function(*window); });
    }

    std::unique_ptr<Window> window;
};

TEST_F(WindowsTest, ShowsAndHidesItselfAndItsViews) {
    make();
    onMain([](Window& window) {
        window.center();
        window.setIsVisible(true);
        window.makeKeyAndOrderFront();
        window.makeKeyAndOrderFront();
        window.setViewHidden("form", true);
        window.setViewHidden("form", true);
        window.setViewHidden("end", false);
        window.setStyleMask(windowTitled);
        window.orderOut();
        window.orderOut();
    });
    EXPECT_EQ((Happenings{
                  {WindowEvent::centered, "Vantrel"},
                  {WindowEvent::shown, "Vantrel", {{Field::frame, "0 0 480 360"}}},
                  {WindowEvent::key, "Vantrel"},
                  {ViewEvent::hidden, "form"},
                  {ViewEvent::shown, "end"},
                  {WindowEvent::style, "Vantrel", {{Field::mask, "1"}}},
                  {WindowEvent::hidden, "Vantrel"},
              }),
              transcript());
    const auto state = mac().windows().all().at(0);
    EXPECT_FALSE(state.visible);
    EXPECT_TRUE(state.centered);
    EXPECT_EQ(1U, state.styleMask);
    EXPECT_TRUE(state.view("form")->hidden);
    drop();
    EXPECT_EQ(0U, mac().leftovers().windows);
}

TEST_F(WindowsTest, HoldsTheTextsAndStatesOfItsControls) {
    make();
    onMain([](Window& window) {
        EXPECT_EQ("Ada", window.text("name"));
        EXPECT_EQ(std::nullopt, window.text("nobody"));
        window.setText("name", "Grace");
        window.setText("name", "Grace");
        window.setEnabled("go", false);
        window.setEnabled("go", false);
        EXPECT_EQ("Grace", window.text("name"));
    });
    EXPECT_EQ((Happenings{
                  {ControlEvent::text, "name", {{Field::value, "Grace"}}},
                  {ControlEvent::disabled, "go"},
              }),
              transcript());
    EXPECT_EQ("Grace", mac().windows().all().at(0).text("name"));
    EXPECT_FALSE(mac().windows().all().at(0).isEnabled("go"));
    drop();
}

TEST_F(WindowsTest, KeepsOneWindowInFrontAndWithTheKeyboard) {
    make();
    std::unique_ptr<Window> other;
    mac().onMain([&] {
        other = computer().windows.makeWindow(description("Altra"), {});
        window->makeKeyAndOrderFront();
        other->makeKeyAndOrderFront();
    });
    EXPECT_EQ("Altra", mac().windows().front()->title);
    EXPECT_TRUE(mac().windows().all().at(0).key);
    EXPECT_FALSE(mac().windows().all().at(1).key);
    mac().onMain([&] { other.reset(); });
    EXPECT_EQ("Vantrel", mac().windows().front()->title);
    drop();
}

TEST_F(WindowsTest, TakesItselfOffTheScreenWhenItIsDestroyed) {
    make();
    onMain([](Window& window) { window.makeKeyAndOrderFront(); });
    forgetEvents();
    drop();
    EXPECT_EQ((Happenings{{WindowEvent::hidden, "Vantrel"}}), transcript());
}

TEST_F(WindowsTest, MayBeDestroyedByItsOwnAction) {
    const auto owned = std::make_shared<std::string>("x");
    make([this, owned](std::string_view id) {
        window.reset();
        computer().log.print(std::string(id) + *owned);
    });
    onMain([](Window& window) { window.makeKeyAndOrderFront(); });
    participant().press("go");
    mac().runFor(0);
    EXPECT_EQ(Lines{"gox"}, logLines());
    EXPECT_EQ(1, owned.use_count());
}

TEST_F(WindowsTest, RefusesIdsThatNobodyBearsAndIdsThatTwoBear) {
    expectMisuse();
    make();
    onMain([](Window& window) {
        window.setText("nobody", "");
        window.setEnabled("nobody", true);
        window.setViewHidden("nobody", true);
    });
    drop();
    auto twice = description("Due");
    twice.views[0].controls.push_back(twice.views[0].controls.back());
    mac().onMain([&] { computer().windows.makeWindow(twice, {}).reset(); });
    EXPECT_EQ(
        (Lines{"Window.setText: no control is called nobody", "Window.setEnabled: no control is called nobody",
               "Window.setViewHidden: no view is called nobody", "Windows.makeWindow: two controls are called go"}),
        expectedMisuse());
}

TEST_F(WindowsTest, RefusesEveryTouchOffTheMainThread) {
    expectMisuse();
    make();
    const Window* touched = window.get();
    mac().inBackground([&] {
        touched->text("name");
        touched->styleMask();
        window->center();
        window->setIsVisible(false);
        window->makeKeyAndOrderFront();
        window->orderOut();
        window->setStyleMask(0);
        window->setText("name", "");
        window->setEnabled("name", true);
        window->setViewHidden("form", false);
        window.reset();
    });
    mac().runFor(0);
    EXPECT_EQ(11U, expectedMisuse().size());
    for (const auto& what : expectedMisuse()) EXPECT_NE(std::string::npos, what.find("off the main thread")) << what;
}

}  // namespace
}  // namespace vantrel::virtualmac
