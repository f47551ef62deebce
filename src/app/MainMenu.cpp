#include "app/MainMenu.h"

#include <utility>

namespace vantrel {
namespace {

MenuItem item(std::string title, std::string action, std::string key) {
    MenuItem item;
    item.title = std::move(title);
    item.action = std::move(action);
    item.keyEquivalent = std::move(key);
    return item;
}

MenuItem submenu(Menu menu) {
    MenuItem item;
    item.kind = MenuItem::Kind::submenu;
    item.submenu = std::move(menu);
    return item;
}

}  // namespace

Menu mainMenu() {
    return {"",
            {submenu({"", {item("Esci da Vantrel", "terminate:", "q")}}),
             submenu({"Edit",
                      {item("Undo", "undo", "z"), item("Redo", "redo", "Z"), MenuItem::separator(),
                       item("Cut", "cut:", "x"), item("Copy", "copy:", "c"), item("Paste", "paste:", "v"),
                       item("Select All", "selectAll:", "a")}})}};
}

}  // namespace vantrel
