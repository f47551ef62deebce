#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QTest>

#include "platform/linux/ui/LinuxWindow.h"
#include "tests/linux/support/Builders.h"
#include "tests/linux/support/DesktopTest.h"

namespace vantrel::linuxdesktop {
namespace {

class MenusTest : public DesktopTest {
  protected:
    void SetUp() override {
        DesktopTest::SetUp();
        if (!computer) return;
        Menu edit{"Edit",
                  {actionItem("Undo", "undo", "z"), actionItem("Redo", "redo", "Z"), MenuItem::separator(),
                   actionItem("Copy", "copy:", "c"), actionItem("Select All", "selectAll:", "a"),
                   targetItem("Uno & due", [this] { order.push_back("target"); }), informationItem("Sessione")}};
        Menu first{"", {actionItem("Esci da Vantrel", "terminate:", "q")}};
        Menu main;
        main.items = {submenuItem(first), submenuItem(edit)};
        computer->application.setMainMenu(main);

        WindowDescription description;
        description.contentRect = {{0, 0}, {300, 200}};
        description.styleMask = windowTitled;
        description.views.push_back({"view",
                                     {{0, 0}, {300, 200}},
                                     0,
                                     false,
                                     {control(Control::Kind::textField, "field", "", {{10, 10}, {280, 24}})}});
        window = computer->windows.makeWindow(description, [](std::string_view) {});
        window->makeKeyAndOrderFront();
        ASSERT_TRUE(waitUntil([this] { return widget().isActiveWindow(); }));
    }

    void TearDown() override {
        window.reset();
        DesktopTest::TearDown();
    }

    QWidget& widget() const { return dynamic_cast<LinuxWindow&>(*window).widget(); }
    QMenuBar* bar() const { return widget().findChild<QMenuBar*>(); }
    QMenu* menu(int index) const { return bar()->actions().at(index)->menu(); }

    std::unique_ptr<Window> window;
    std::vector<std::string> order;
};

TEST_F(MenusTest, ShowsTheApplicationsNameForAnUntitledSubmenu) {
    EXPECT_EQ(bar()->actions().at(0)->text(), "Vantrel");
    EXPECT_EQ(bar()->actions().at(1)->text(), "Edit");
}

TEST_F(MenusTest, ShowsItemsWithTheirKeysAndState) {
    const auto items = menu(1)->actions();
    ASSERT_EQ(items.size(), 7);
    EXPECT_EQ(items[0]->shortcut(), QKeySequence("Ctrl+Z"));
    EXPECT_EQ(items[1]->shortcut(), QKeySequence("Ctrl+Shift+Z"));
    EXPECT_TRUE(items[2]->isSeparator());
    EXPECT_EQ(items[5]->text(), "Uno && due");
    EXPECT_FALSE(items[6]->isEnabled());
    EXPECT_EQ(menu(0)->actions().at(0)->shortcut(), QKeySequence("Ctrl+Q"));
}

TEST_F(MenusTest, SendsEditingToTheFocusedField) {
    auto* field = widget().findChild<QLineEdit*>("field");
    QTest::keyClicks(field, "codice");
    menu(1)->actions().at(4)->trigger();
    ASSERT_TRUE(waitUntil([field] { return field->selectedText() == "codice"; }));
    menu(1)->actions().at(3)->trigger();
    EXPECT_TRUE(waitUntil([] { return QApplication::clipboard()->text() == "codice"; }));
    menu(1)->actions().at(0)->trigger();
    EXPECT_TRUE(waitUntil([field] { return field->text().isEmpty(); }));
    menu(1)->actions().at(1)->trigger();
    EXPECT_TRUE(waitUntil([field] { return field->text() == "codice"; }));
}

TEST_F(MenusTest, CallsATargetFromAnEventAfterTheMenuIsGone) {
    menu(1)->popup(QPoint(50, 50));
    ASSERT_TRUE(waitUntil([this] { return menu(1)->isVisible(); }));
    menu(1)->setActiveAction(menu(1)->actions().at(5));
    QTest::keyClick(menu(1), Qt::Key_Return);
    EXPECT_FALSE(menu(1)->isVisible());
    EXPECT_TRUE(order.empty());
    EXPECT_TRUE(waitUntil([this] { return order.size() == 1; }));
}

TEST_F(MenusTest, FillsTheBarsThatExistAnewWhenTheMenuChanges) {
    Menu main;
    main.items.push_back(submenuItem({"Altro", {informationItem("Voce")}}));
    computer->application.setMainMenu(main);
    ASSERT_EQ(bar()->actions().size(), 1);
    EXPECT_EQ(bar()->actions().at(0)->text(), "Altro");
}

}  // namespace
}  // namespace vantrel::linuxdesktop
