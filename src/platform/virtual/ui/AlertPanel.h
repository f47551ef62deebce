#pragma once

namespace vantrel::virtualmac {

/// How the system lets an alert of a client without a window over another application's full screen, if the alert asks
/// for being let in at all (its collection behaviour).
enum class AlertsLetIn {
    atOnce,
    /// Only once it is ordered to the front.
    orderedFront,
    /// Only once it may join all applications.
    joiningAll,
    /// Only while the client is in front.
    withClient,
    never,
};

/// The window of an alert, as the client has prepared it. The alerts guard it while it is up.
struct AlertPanel {
    static constexpr unsigned canJoinAllSpaces = 0x1;
    static constexpr unsigned fullScreenAuxiliary = 0x100;
    static constexpr unsigned canJoinAllApplications = 0x40000;
    static constexpr unsigned everywhere = canJoinAllSpaces | fullScreenAuxiliary;

    unsigned collectionBehavior = 0;
    /// A click on it is to leave the application in front where it is.
    bool asksNotToActivate = false;
    bool isOrderedFront = false;

    /// Over another application's full screen.
    bool isLetIn(AlertsLetIn system, bool isClientInFront) const {
        if ((collectionBehavior & everywhere) != everywhere) return false;
        if (system == AlertsLetIn::orderedFront) return isOrderedFront;
        if (system == AlertsLetIn::joiningAll) return (collectionBehavior & canJoinAllApplications) != 0;
        if (system == AlertsLetIn::withClient) return isClientInFront;
        return system == AlertsLetIn::atOnce;
    }
};

}  // namespace vantrel::virtualmac
