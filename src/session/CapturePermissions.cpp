#include "session/CapturePermissions.h"

#include <array>
#include <string>
#include <utility>

namespace vantrel {
namespace {

struct Medium {
    MediaType type;
    const char* decided;
    const char* granted;
    const char* refused;
};

constexpr std::array media = {
    Medium{MediaType::audio, "[TCC] Microfono: stato già definito (", "[TCC] Microfono: ✅ concesso",
           "[TCC] Microfono: ⚠️ negato"},
    Medium{MediaType::video, "[TCC] Camera: stato già definito (", "[TCC] Camera: ✅ concessa",
           "[TCC] Camera: ⚠️ negata"},
};

}  // namespace

void settleCapturePermissions(CaptureAuthorization& capture, Dispatch& dispatch, Log& log, Block continuation) {
    const auto group = dispatch.makeGroup();
    for (const auto& medium : media) {
        const auto status = capture.status(medium.type);
        if (status != AuthorizationStatus::notDetermined) {
            log.print(medium.decided + std::to_string(static_cast<int>(status)) + ")");
            continue;
        }
        group->enter();
        capture.requestAccess(medium.type, [group, &log, &medium](bool granted) {
            log.print(granted ? medium.granted : medium.refused);
            group->leave();
        });
    }
    group->notify(dispatch.mainQueue(), std::move(continuation));
}

}  // namespace vantrel
