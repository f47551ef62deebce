#include "platform/portable/LostTap.h"

#include <poll.h>
#include <unistd.h>

#include <string>

namespace vantrel {

void sayThatTheTapIsLost(std::string_view moment, std::string_view why) {
    std::string text = "vantrel: ";
    text.append(moment).append(" the keyboard tap is lost, every key passes now: ").append(why).push_back('\n');
    pollfd errors{STDERR_FILENO, POLLOUT, 0};
    if (poll(&errors, 1, 0) <= 0) return;
    [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, text.data(), text.size());
}

}  // namespace vantrel
