#pragma once

#include <string>
#include <utility>

#include "practice/messages/PracticeRequest.h"

namespace vantrel::practice {

/// The password of the trainer's page, as browsers send it (Basic, RFC 7617). The user name is ignored.
class TrainerPassword {
  public:
    enum class Given { right, wrong, none };

    /// Empty: no password is needed, and any is accepted.
    explicit TrainerPassword(std::string password) : password_(std::move(password)) {}

    /// The comparison takes the same time whether the first byte is wrong or the last.
    Given givenBy(const PracticeRequest& request) const;

  private:
    const std::string password_;
};

}  // namespace vantrel::practice
