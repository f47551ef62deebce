#pragma once

#include <functional>
#include <mutex>
#include <string_view>

#include "platform/portable/PortableURLs.h"

namespace vantrel::virtualmac {

/// URLs whose forming can be made to fail.
class VirtualURLs final : public URLs {
  public:
    using Predicate = std::function<bool(std::string_view)>;

    std::optional<URL> form(std::string_view text) const override;
    std::optional<std::string> addingPercentEncodingForQuery(std::string_view text) const override;

    /// Driver-facing, any thread: texts that match the predicate form no URL; null for none. Called on the calling
    /// thread.
    void failFormingWhere(Predicate predicate);
    /// The same for percent-encoding.
    void failEncodingWhere(Predicate predicate);

  private:
    bool fails(const Predicate& predicate, std::string_view text) const;

    PortableURLs urls_;
    mutable std::mutex mutex_;
    Predicate forming_;
    Predicate encoding_;
};

}  // namespace vantrel::virtualmac
