#pragma once

#include "platform/network/URLSession.h"

namespace vantrel::macos {

/// The shared NSURLSession. Completions run on its own serial queue.
class MacURLSession final : public URLSession {
  public:
    void dataTask(URLRequest request, Completion completion) override;
};

}  // namespace vantrel::macos
