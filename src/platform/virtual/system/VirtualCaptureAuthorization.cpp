#include "platform/virtual/system/VirtualCaptureAuthorization.h"

#include <algorithm>
#include <utility>

namespace vantrel::virtualmac {

namespace {

std::string name(MediaType media) {
    return media == MediaType::audio ? "microphone" : "camera";
}

}  // namespace

AuthorizationStatus VirtualCaptureAuthorization::status(MediaType media) const {
    const std::lock_guard guard(mutex_);
    return status_.at(media);
}

void VirtualCaptureAuthorization::requestAccess(MediaType media, std::function<void(bool granted)> completion) {
    if (engine_.isOver()) return;
    engine_.journal.emit({PermissionEvent::requested, name(media)});
    std::optional<Automatic> automatic;
    {
        const std::lock_guard guard(mutex_);
        const AuthorizationStatus status = status_.at(media);
        if (status != AuthorizationStatus::notDetermined) {
            const bool granted = status == AuthorizationStatus::authorized;
            return engine_.workers.run([completion = std::move(completion), granted] { completion(granted); });
        }
        const auto up = std::find_if(prompts_.begin(), prompts_.end(),
                                     [media](const Prompt& prompt) { return prompt.media == media; });
        if (up != prompts_.end()) return up->completions.push_back(std::move(completion));
        prompts_.push_back({media, {}});
        prompts_.back().completions.push_back(std::move(completion));
        if (const auto found = automatic_.find(media); found != automatic_.end()) automatic = found->second;
    }
    engine_.journal.emit({PermissionEvent::prompt, name(media)});
    if (!automatic) return;
    engine_.world.after(automatic->after, [this, media, granted = automatic->granted] { answer(media, granted); });
}

void VirtualCaptureAuthorization::setStatus(MediaType media, AuthorizationStatus status) {
    const std::lock_guard guard(mutex_);
    status_[media] = status;
}

void VirtualCaptureAuthorization::answerAutomatically(MediaType media, bool granted, double afterSeconds) {
    const std::lock_guard guard(mutex_);
    automatic_[media] = {granted, afterSeconds};
}

bool VirtualCaptureAuthorization::answer(bool granted) {
    return answer(std::nullopt, granted);
}

std::size_t VirtualCaptureAuthorization::prompts() const {
    const std::lock_guard guard(mutex_);
    return prompts_.size();
}

bool VirtualCaptureAuthorization::answer(std::optional<MediaType> media, bool granted) {
    Prompt prompt;
    {
        const std::lock_guard guard(mutex_);
        const auto up = std::find_if(prompts_.begin(), prompts_.end(),
                                     [media](const Prompt& each) { return !media || each.media == *media; });
        if (up == prompts_.end()) return false;
        prompt = std::move(*up);
        prompts_.erase(up);
        status_[prompt.media] = granted ? AuthorizationStatus::authorized : AuthorizationStatus::denied;
    }
    engine_.journal.emit({PermissionEvent::answered, name(prompt.media), {{Field::granted, granted ? "yes" : "no"}}});
    for (auto& completion : prompt.completions) {
        engine_.workers.run([completion = std::move(completion), granted] { completion(granted); });
    }
    return true;
}

}  // namespace vantrel::virtualmac
