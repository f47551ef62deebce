#include <gtest/gtest.h>

#include "app/MainMenu.h"

namespace vantrel {
namespace {

TEST(MainMenu, HasTheApplicationsMenuAndTheEditMenu) {
    const auto menu = mainMenu();
    EXPECT_EQ(menu.title, "");
    ASSERT_EQ(menu.items.size(), 2u);
    for (const auto& item : menu.items) {
        EXPECT_EQ(item.kind, MenuItem::Kind::submenu);
        EXPECT_EQ(item.title, "");
    }
    EXPECT_EQ(menu.items[0].submenu.title, "");
    EXPECT_EQ(menu.items[1].submenu.title, "Edit");
}

TEST(MainMenu, QuitsByItsOneItalianItem) {
    const auto items = mainMenu().items[0].submenu.items;
    ASSERT_EQ(items.size(), 1u);
    EXPECT_EQ(items[0].title, "Esci da Vantrel");
    EXPECT_EQ(items[0].action, "terminate:");
    EXPECT_EQ(items[0].keyEquivalent, "q");
}

TEST(MainMenu, EditsByEnglishItems) {
    struct Row {
        const char* title;
        const char* action;
        const char* key;
    };
    const Row rows[] = {{"Undo", "undo", "z"},
                        {"Redo", "redo", "Z"},
                        {"", "", ""},
                        {"Cut", "cut:", "x"},
                        {"Copy", "copy:", "c"},
                        {"Paste", "paste:", "v"},
                        {"Select All", "selectAll:", "a"}};
    const auto items = mainMenu().items[1].submenu.items;
    ASSERT_EQ(items.size(), std::size(rows));
    for (std::size_t index = 0; index < items.size(); ++index) {
        EXPECT_EQ(items[index].title, rows[index].title);
        EXPECT_EQ(items[index].action, rows[index].action);
        EXPECT_EQ(items[index].keyEquivalent, rows[index].key);
    }
    EXPECT_EQ(items[2].kind, MenuItem::Kind::separator);
}

}  // namespace
}  // namespace vantrel
