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

/// The options of a test's Mac. VANTREL_SEED=N, VANTREL_FREE_RUNNING=1 and VANTREL_SYSTEM=N in the environment set its
/// seed, mode and macOS.
Options optionsFromEnvironment();

/// Whether the environment asks for real threads without a baton.
bool isFreeRunning();

/// A test with its own virtual Mac. The test is the Mac's driver. Misuse fails the test. In the free-running mode
/// submitted blocks may run at once, so a test checks the effect only after a wait (runFor(0) is one).
///
/// Objects of the main thread are created and destroyed there: see makeOnMain.
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

    /// Ends the Mac while the test's own members still exist. An override must call it last.
    void TearDown() override;

    Computer& computer() { return mac().computer(); }
    VirtualMac& mac() { return *pointer_; }
    Participant& participant() { return mac().participant(); }

    /// Ends the Mac early: drains it and joins its threads.
    void end() { mac_.reset(); }

    /// All events so far, in order.
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
    /// All events so far, in order, without the times.
    Happenings transcript() const;
    void forgetEvents();

    /// From now on misuse does not fail the test. expectedMisuse() returns all of it for the test to compare.
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
    /// Drops the objects of makeOnMain on the main thread, newest first.
    void dropOnMain();

  private:
    mutable std::mutex mutex_;
    std::vector<Event> events_;
    bool expectingMisuse_ = false;
    std::vector<std::string> misuse_;
    std::vector<std::shared_ptr<void>> kept_;
    std::unique_ptr<VirtualMac> mac_;
    /// Kept because blocks that run while the Mac ends still use it.
    VirtualMac* pointer_ = nullptr;
};

}  // namespace vantrel::virtualmac
