#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tests/simulation/model/world/World.h"

namespace vantrel::simulation {

/// A timer that repeats. When it comes late it fires once and keeps its grid.
struct Grid {
    bool on = false;
    std::int64_t next = 0;
    std::int64_t period = 0;

    void start(std::int64_t now, std::int64_t every) {
        on = true;
        next = now + every;
        period = every;
    }
    void fire(std::int64_t now) {
        while (next <= now) next += period;
    }
};

struct Launcher {
    std::string name;  // of the browser; empty while none is chosen
    std::optional<std::int64_t> pid;
    bool applicationKnown = false;
    bool unsure = false;  // that it is known; the first line that needs it tells
    bool preExisting = false;
    bool confirmed = false;
    std::int64_t confirmedAt = -1;
    int tries = 0;
    bool watched = false;  // a monitor is attached
    bool dropped = false;
    std::optional<std::int64_t> window;  // the one that full screen was last asked for
};

struct Monitor {
    bool active = false;
    Grid ticks;
    std::int64_t lastLook = -1;
    int invisible = 0;
    int grace = 0;
    bool unsure = false;  // a look may have been silent, and these two reset by it
    bool confirmed = false;
};

struct Violation {
    std::string_view type;
    std::string_view detail;
    std::int64_t at = 0;
    bool sure = true;  // false if a heartbeat that failed may have taken it along
};

struct Heartbeats {
    bool exist = false;
    bool running = false;
    Grid beats;
    std::int64_t perhapsSent = -1;  // one that was due when something began to hold the timers up
    int errors = 0;
    std::string base;
    std::string code;
    std::string token;
    std::vector<Violation> pending;
};

struct Blackout {
    bool active = false;
    bool shared = false;
    Grid raises;
    Display excluded;
    std::vector<Display> covers;
};

struct JoinResult {
    std::string link;
    std::string token;
    std::string title;
};

/// What the client holds, followed by its rules alone.
struct Client {
    bool started = false;
    bool quit = false;
    bool inLockdown = false;
    bool complete = false;               // of this lockdown all steps are done
    int activations = 0;                 // of this lockdown
    std::optional<bool> trusted = true;  // none while it is not known

    std::int64_t trustedAt = -1;  // when that changed

    bool closable = true;
    bool visible = false;
    bool joinShown = true;
    bool endShown = false;
    bool joinEnabled = true;
    std::string server, code, name, email;  // what the fields show
    std::string error, endMessage;
    std::optional<std::string> savedServer, savedName, savedEmail;

    std::int64_t questionClosedAt = -1000000;
    std::int64_t questionOver = 0;  // the application in front when it opened; 0 if it is not known
    std::int64_t givenBackAt = -1;  // when the browser was asked to the front after it
    bool menuOpen = false;
    bool tap = false;
    bool tapLost = false;  // the permission was taken away under it
    bool hook = false;
    bool statusItem = false;
    std::shared_ptr<Launcher> launcher;
    Monitor monitor;
    Heartbeats heartbeats;
    Blackout blackout;
    std::string sessionCode;                        // of the activation that is under way
    std::optional<std::string> microphone, camera;  // the permissions; none while they are not known
    JoinResult session;
};

}  // namespace vantrel::simulation
