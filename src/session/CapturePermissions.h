#pragma once

#include "platform/system/CaptureAuthorization.h"
#include "platform/system/Log.h"
#include "platform/threads/Block.h"
#include "platform/threads/Dispatch.h"

namespace vantrel {

/// Asks the participant for the microphone and then the camera, unless decided already, and then runs the continuation
/// once on the main queue. The answers are only logged. Main thread; returns at once.
void settleCapturePermissions(CaptureAuthorization& capture, Dispatch& dispatch, Log& log, Block continuation);

}  // namespace vantrel
