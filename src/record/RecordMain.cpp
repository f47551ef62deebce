#include "record/RecordMain.h"

#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "record/RecordFile.h"
#include "record/Recorder.h"

namespace vantrel {

void record(const Computer& computer, const std::filesystem::path& path, LookWriter::Sink sink) {
    computer.log.print("vantrel-record writes to " + path.string() +
                       ", twice a second: the title, owner, place and size of every window, the displays, and the "
                       "application in front. Titles may hold names and addresses. Control-C ends it.");
    const auto recorder = std::make_shared<Recorder>(
        Recorder::Sources{.clock = computer.clock,
                          .frontmostApplication = computer.frontmostApplication,
                          .screens = computer.screens,
                          .spaces = computer.spaces,
                          .windowList = computer.windowList,
                          .runLoop = computer.mainRunLoop},
        LookWriter(computer.json, std::move(sink)), [&application = computer.application, &log = computer.log] {
            log.print("vantrel-record: the file takes nothing more, so the recording ends here.");
            application.terminate();
        });
    computer.application.setDelegate(recorder);
    computer.application.run();
}

int recordMain(const Computer& computer, const std::filesystem::path& path) {
    auto file = RecordFile::create(path);
    if (!file) {
        computer.log.print("vantrel-record: " + path.string() + " exists already or cannot be made.");
        return EXIT_FAILURE;
    }
    record(computer, path, [&file](std::string_view line) { return file->write(line); });
    return EXIT_SUCCESS;
}

}  // namespace vantrel
