#include <gmock/gmock.h>

#include "session/CapturePermissions.h"
#include "tests/doubles/SingleThreadComputer.h"

namespace vantrel {
namespace {

using testing::ElementsAre;

/// What happens, in order: log lines, and what the group is told.
using Diary = std::vector<std::string>;

class DiaryLog : public Log {
  public:
    explicit DiaryLog(Diary& diary) : diary_(diary) {}
    void print(std::string_view line) override { diary_.emplace_back(line); }

  private:
    Diary& diary_;
};

class DiaryGroup : public DispatchGroup {
  public:
    explicit DiaryGroup(Diary& diary) : diary_(diary) {}
    void enter() override { diary_.emplace_back("enter"); }
    void leave() override { diary_.emplace_back("leave"); }
    void notify(DispatchQueue&, Block) override { diary_.emplace_back("notify"); }

  private:
    Diary& diary_;
};

class DiaryDispatch : public Dispatch {
  public:
    explicit DiaryDispatch(Diary& diary) : diary_(diary) {}
    DispatchQueue& mainQueue() override { return queue_; }
    DispatchQueue& userInitiatedQueue() override { return queue_; }
    std::shared_ptr<Semaphore> makeSemaphore(int) override { return nullptr; }
    std::shared_ptr<DispatchGroup> makeGroup() override { return std::make_shared<DiaryGroup>(diary_); }

  private:
    Diary& diary_;
    singlethread::Queue queue_;
};

/// Answers inside the request, as it may on any thread.
class HastyCapture : public CaptureAuthorization {
  public:
    AuthorizationStatus status(MediaType) const override { return AuthorizationStatus::notDetermined; }
    void requestAccess(MediaType, std::function<void(bool)> completion) override { completion(true); }
};

TEST(CapturePermissions, CountsAnAnswerOnceItIsLoggedAndNoneBeforeItIsAwaited) {
    Diary diary;
    HastyCapture capture;
    DiaryDispatch dispatch(diary);
    DiaryLog log(diary);
    settleCapturePermissions(capture, dispatch, log, [] {});
    EXPECT_THAT(diary, ElementsAre("enter", "[TCC] Microfono: ✅ concesso", "leave", "enter", "[TCC] Camera: ✅ concessa",
                                   "leave", "notify"));
}

}  // namespace
}  // namespace vantrel
