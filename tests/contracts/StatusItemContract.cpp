#include <memory>

#include "tests/contracts/ContractTest.h"
#include "tests/contracts/DisplayHost.h"

namespace vantrel::contracts {
namespace {

class StatusItemContract : public ContractTest {
  protected:
    void TearDown() override {
        host().onMain([this] { item.reset(); });
        ContractTest::TearDown();
    }

    DisplayHost& displays() { return dynamic_cast<DisplayHost&>(host()); }

    void install() {
        host().onMain([this] {
            item = computer().statusBar.statusItem(variableStatusItemLength);
            item->setButtonTitle("🔒 Vantrel");
            item->setMenu(menu());
        });
    }

    Menu menu() {
        Menu made;
        MenuItem line;
        line.title = "Corso [ABC]";
        line.enabled = false;
        MenuItem end;
        end.title = "Termina sessione";
        end.target = [this] { note(computer().threads.isMainThread() ? "end" : "end off the main thread"); };
        made.items = {line, MenuItem::separator(), end};
        return made;
    }

    bool shows(const Notes& titles) {
        return eventually([&] { return displays().statusItems() == titles; });
    }

    std::unique_ptr<StatusItem> item;
};

TEST_F(StatusItemContract, AnItemShowsItsTitle) {
    EXPECT_EQ(Notes{}, displays().statusItems());
    install();
    EXPECT_TRUE(shows({"🔒 Vantrel"}));
    host().onMain([this] { item->setButtonTitle("🔓 Vantrel"); });
    EXPECT_TRUE(shows({"🔓 Vantrel"}));
}

TEST_F(StatusItemContract, NoCallRunsWhatTheRunLoopHasToDo) {
    EXPECT_TRUE(keepTheRunLoopWaiting([this] {
        item = computer().statusBar.statusItem(variableStatusItemLength);
        item->setButtonTitle("🔒 Vantrel");
        item->setMenu(menu());
        computer().statusBar.removeStatusItem(*item);
        item.reset();
    }));
}

TEST_F(StatusItemContract, AChosenEntryActsOnTheMainThread) {
    install();
    ASSERT_TRUE(shows({"🔒 Vantrel"}));
    displays().chooseFromStatusMenu("Termina sessione");
    ASSERT_TRUE(noted(1));
    displays().chooseFromStatusMenu("Termina sessione");
    ASSERT_TRUE(noted(2));
    EXPECT_EQ((Notes{"end", "end"}), notes());
}

TEST_F(StatusItemContract, TheMainQueueGoesOnUnderAQuestionThatAnEntryAsks) {
    install();
    host().onMain([this] {
        Menu own;
        MenuItem end;
        end.title = "Termina sessione";
        end.target = [this] {
            computer().dispatch.mainQueue().async([this] { note("block"); });
            computer().alerts.runModal({AlertStyle::warning, "Terminare?", "", {"Termina", "Annulla"}});
            note("answered");
        };
        own.items = {end};
        item->setMenu(own);
    });
    displays().chooseFromStatusMenu("Termina sessione");
    ASSERT_TRUE(noted(1));
    EXPECT_EQ(Notes{"block"}, notes());
    host().pressAlertButton("Annulla");
    ASSERT_TRUE(noted(2));
    EXPECT_EQ((Notes{"block", "answered"}), notes());
}

TEST_F(StatusItemContract, ARemovedItemIsGone) {
    install();
    ASSERT_TRUE(shows({"🔒 Vantrel"}));
    host().onMain([this] { computer().statusBar.removeStatusItem(*item); });
    EXPECT_TRUE(shows({}));
    host().onMain([this] { item.reset(); });
    EXPECT_TRUE(shows({}));
}

TEST_F(StatusItemContract, ARemovedItemTakesItsOpenMenuAlong) {
    install();
    displays().openStatusMenu();
    host().onMain([this] { computer().statusBar.removeStatusItem(*item); });
    EXPECT_TRUE(eventually([&] { return !displays().statusMenuIsOpen(); }));
    EXPECT_TRUE(shows({}));
    EXPECT_TRUE(notes().empty());
}

TEST_F(StatusItemContract, ADestroyedItemIsGoneAndAnotherMayFollow) {
    for (int round = 0; round < 5; ++round) {
        install();
        ASSERT_TRUE(shows({"🔒 Vantrel"}));
        host().onMain([this] { item.reset(); });
        EXPECT_TRUE(shows({}));
    }
}

TEST_F(StatusItemContract, AnEntryMayRemoveItsItem) {
    install();
    host().onMain([this] {
        Menu own;
        MenuItem end;
        end.title = "Termina sessione";
        end.target = [this] {
            computer().statusBar.removeStatusItem(*item);
            item.reset();
            note("end");
        };
        own.items = {end};
        item->setMenu(own);
    });
    displays().chooseFromStatusMenu("Termina sessione");
    ASSERT_TRUE(noted(1));
    EXPECT_TRUE(shows({}));
}

}  // namespace
}  // namespace vantrel::contracts
