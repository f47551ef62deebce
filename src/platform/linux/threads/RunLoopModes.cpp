#include "platform/linux/threads/RunLoopModes.h"

#include <utility>

namespace vantrel::linuxdesktop {

RunLoopModes::Stay::Stay(RunLoopModes& modes) : modes_(modes) {
    ++modes_.stays_;
}

RunLoopModes::Stay::~Stay() {
    if (--modes_.stays_ == 0 && modes_.onDefault_) modes_.onDefault_();
}

void RunLoopModes::stayDefault() {
    staysDefault_ = true;
    if (onDefault_) onDefault_();
}

void RunLoopModes::setOnDefault(Block block) {
    onDefault_ = std::move(block);
}

}  // namespace vantrel::linuxdesktop
