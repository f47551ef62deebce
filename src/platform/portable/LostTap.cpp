#include "platform/portable/LostTap.h"

#include <string>

#include "platform/portable/StandardError.h"

namespace vantrel {

void sayThatTheTapIsLost(std::string_view moment, std::string_view why) {
    std::string text = "vantrel: ";
    text.append(moment).append(" the keyboard tap is lost, every key passes now: ").append(why).push_back('\n');
    sayOnStandardError(text);
}

}  // namespace vantrel
