#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <vector>

#include "platform/system/CaptureAuthorization.h"
#include "platform/virtual/scheduler/Engine.h"

namespace vantrel::virtualmac {

/// Microphone and camera, both initially allowed. A request for an undecided one shows the system's prompt, which the
/// participant answers.
class VirtualCaptureAuthorization final : public CaptureAuthorization {
  public:
    explicit VirtualCaptureAuthorization(Engine& engine) : engine_(engine) {}

    AuthorizationStatus status(MediaType media) const override;
    void requestAccess(MediaType media, std::function<void(bool granted)> completion) override;

    /// Driver-facing, any thread.
    void setStatus(MediaType media, AuthorizationStatus status);
    /// Its prompts are answered automatically, this many seconds after they appear.
    void answerAutomatically(MediaType media, bool granted, double afterSeconds);
    /// Answers the oldest prompt, and all requests for the same medium. False if there is no prompt.
    bool answer(bool granted);
    /// The number of prompts shown.
    std::size_t prompts() const;

  private:
    using Completion = std::function<void(bool)>;
    struct Automatic {
        bool granted = false;
        double after = 0;
    };
    struct Prompt {
        MediaType media;
        std::vector<Completion> completions;
    };

    bool answer(std::optional<MediaType> media, bool granted);

    Engine& engine_;
    mutable std::mutex mutex_;
    std::map<MediaType, AuthorizationStatus> status_{{MediaType::audio, AuthorizationStatus::authorized},
                                                     {MediaType::video, AuthorizationStatus::authorized}};
    std::map<MediaType, Automatic> automatic_;
    std::vector<Prompt> prompts_;
};

}  // namespace vantrel::virtualmac
