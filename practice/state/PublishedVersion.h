#pragma once

#include <mutex>
#include <utility>

#include "practice/configuration/PracticeConfiguration.h"

namespace vantrel::practice {

/// What is answered about client versions. Any thread.
class PublishedVersion {
  public:
    explicit PublishedVersion(VersionConfiguration version) : version_(std::move(version)) {}

    VersionConfiguration current() const {
        const std::lock_guard lock(mutex_);
        return version_;
    }

    void set(VersionConfiguration version) {
        const std::lock_guard lock(mutex_);
        version_ = std::move(version);
    }

  private:
    mutable std::mutex mutex_;
    VersionConfiguration version_;
};

}  // namespace vantrel::practice
