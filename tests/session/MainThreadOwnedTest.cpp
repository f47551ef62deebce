#include <gtest/gtest.h>

#include "session/MainThreadOwned.h"
#include "tests/virtual/MacTest.h"

namespace vantrel {
namespace {

class MainThreadOwnedTest : public virtualmac::MacTest {};

/// Records the thread of its destruction.
struct Mortal {
    Mortal(Threads& theThreads, int& theOnMain, int& theElsewhere)
        : threads(theThreads), onMain(theOnMain), elsewhere(theElsewhere) {}
    ~Mortal() { ++(threads.isMainThread() ? onMain : elsewhere); }

    Threads& threads;
    int& onMain;
    int& elsewhere;
};

TEST_F(MainThreadOwnedTest, DiesOnTheMainThreadThoughTheLastReferenceIsDroppedElsewhere) {
    int onMain = 0;
    int elsewhere = 0;
    auto& computer = this->computer();
    std::shared_ptr<Mortal> kept;
    mac().onMain([&] {
        kept = makeMainThreadOwned<Mortal>(computer.dispatch, computer.threads, computer.threads, onMain, elsewhere);
    });
    mac().inBackground([&computer, held = std::move(kept)]() mutable {
        computer.threads.sleep(1);
        held.reset();
    });
    mac().runFor(2);
    EXPECT_EQ(onMain, 1);
    EXPECT_EQ(elsewhere, 0);
}

TEST_F(MainThreadOwnedTest, DiesAtOnceWhenDroppedOnTheMainThread) {
    int onMain = 0;
    int elsewhere = 0;
    mac().onMain([&] {
        auto& computer = this->computer();
        makeMainThreadOwned<Mortal>(computer.dispatch, computer.threads, computer.threads, onMain, elsewhere).reset();
        EXPECT_EQ(onMain, 1);
    });
    EXPECT_EQ(elsewhere, 0);
}

}  // namespace
}  // namespace vantrel
