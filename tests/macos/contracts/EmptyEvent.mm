#include "tests/macos/contracts/EmptyEvent.h"

namespace vantrel::macos {

NSEvent* emptyEvent() {
    return [NSEvent otherEventWithType:NSEventTypeApplicationDefined
                              location:NSMakePoint(0, 0)
                         modifierFlags:0
                             timestamp:0
                          windowNumber:0
                               context:nil
                               subtype:0
                                 data1:0
                                 data2:0];
}

}  // namespace vantrel::macos
