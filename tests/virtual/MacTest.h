#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "platform/virtual/VirtualMac.h"
#include "tests/virtual/EventPrinting.h"

namespace vantrel::virtualmac {

/// The options of a test's Mac: VANTREL_SEED=N and VANTREL_FREE_RUNNING=1 in the environment set its seed and mode.
Options optionsFromEnvironment();

/// Whether the environment asks for real threads without a baton.
bool isFreeRunning();

/// A test with a virtual Mac of its own. The test is the Mac's driver. Misuse fails the test. What a test hands in may
/// run at once in the free-running mode, so it looks at the effect only after a wait (runFor(0) is one).
///
/// What lives on the main thread is made there and dies there: see makeOnMain.
class MacTest : public testing::Test {
  protected:
    // For the tests of the rules, which are in another namespace.
    using ApplicationEvent = virtualmac::ApplicationEvent;
    using ClientEvent = virtualmac::ClientEvent;
    using ControlEvent = virtualmac::ControlEvent;
    using ElementEvent = virtualmac::ElementEvent;
    using EventKind = virtualmac::EventKind;
    using Field = virtualmac::Field;
    using KeyboardEvent = virtualmac::KeyboardEvent;
    using NetworkEvent = virtualmac::NetworkEvent;
    using OverlayEvent = virtualmac::OverlayEvent;
    using PermissionEvent = virtualmac::PermissionEvent;
    using ProcessEvent = virtualmac::ProcessEvent;
    using StatusItemEvent = virtualmac::StatusItemEvent;
    using SystemEvent = virtualmac::SystemEvent;
    using ViewEvent = virtualmac::ViewEvent;
    using WindowEvent = virtualmac::WindowEvent;

    MacTest() : MacTest(optionsFromEnvironment()) {}
    explicit MacTest(Options options);
    ~MacTest() override;

    /// Ends the Mac while the test's own members still live. Who overrides it calls it last.
    void TearDown() override;

    Computer& computer() { return mac().computer(); }
    VirtualMac& mac() { return *pointer_; }
    Participant& participant() { return mac().participant(); }

    /// Ends the Mac early: drains it and joins its threads.
    void end() { mac_.reset(); }

    /// Everything that has happened, in order.
    std::vector<Event> events() const;
    std::vector<Event> events(const EventKind& kind) const;
    /// The events of a family: events<Deed>().
    template <class Family>
    std::vector<Event> events() const {
        std::vector<Event> found = events();
        std::erase_if(found, [](const Event& event) { return !event.kind.isA<Family>(); });
        return found;
    }
    /// The texts of the events of that kind.
    std::vector<std::string> texts(const EventKind& kind) const;
    std::vector<std::string> logLines() const { return texts(ClientEvent::log); }
    /// Everything that has happened, in order, without the times.
    Happenings transcript() const;
    void forgetEvents();

    /// From now on misuse does not fail the test; expectedMisuse() hands out all there was, for the test to compare.
    void expectMisuse();
    std::vector<std::string> expectedMisuse() const;

    /// An object of the main thread. Its last reference is dropped there too, at the latest when the Mac ends.
    template <class T, class... Arguments>
    std::weak_ptr<T> makeOnMain(Arguments&&... arguments) {
        std::weak_ptr<T> weak;
        mac().onMain([&] {
            auto made = std::make_shared<T>(std::forward<Arguments>(arguments)...);
            weak = made;
            kept_.push_back(std::move(made));
        });
        return weak;
    }
    /// Drops what makeOnMain made, on the main thread, newest first.
    void dropOnMain();

  private:
    mutable std::mutex mutex_;
    std::vector<Event> events_;
    bool expectingMisuse_ = false;
    std::vector<std::string> misuse_;
    std::vector<std::shared_ptr<void>> kept_;
    std::unique_ptr<VirtualMac> mac_;
    /// Blocks that run while the Mac ends still ask for it.
    VirtualMac* pointer_ = nullptr;
};

}  // namespace vantrel::virtualmac
