#pragma once

#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "tests/simulation/model/acts/Part.h"
#include "tests/simulation/model/acts/Stage.h"
#include "tests/simulation/model/reading/JsonObject.h"

namespace vantrel::simulation {

/// What the client does besides its main thread: the join, the launch and the kill of the browser, replies as they
/// come, and what is due when a moment is over.
class Background final : public Backstage {
  public:
    explicit Background(Stage& stage) : stage_(stage) { stage_.setBackstage(*this); }

    void see(const Entry& entry) override;
    void momentEnds(std::int64_t at, std::int64_t next) override;

    bool claims(const Entry& entry) const override;
    void sent(const Entry& request) override;
    void joinBegins() override;
    void joinIsOver() override;
    void launchBegins(int prompts) override;
    void killBegins() override;

  private:
    struct Request {
        std::string_view address;
        std::int64_t at = 0;
        bool notice = false;
        std::string_view body{};
        bool mixed = false;  // with others there, of which one was answered
    };
    bool isOfService(const Request& request) const;
    enum class JoinStep { none, probe, waitsForProbe, post, waitsForReply, ok };
    enum class LaunchStep { none, prompts, reset, address, browser, windows, route, start, settle, open, window };
    enum class KillStep { none, cancel, look, signal, confirm };

    // Causes.
    void seeParticipant(const Entry& entry);
    void seeSystem(const Entry& entry);
    void seePrelude();
    void seeKey(const Entry& entry);
    void seeEnd(const Entry& entry);
    void seeTap(const Entry& entry);

    // Replies, and the lines that follow them at once.
    void seeReply(const Entry& entry);
    void seeCompletion(const Entry& entry);
    void seeAmbiguous(const Entry& entry);
    void follow(std::string text) { following_.push_back(std::move(text)); }
    bool isLatencyKnown() const;
    void replyToVersion(const Entry& entry, std::string_view status);
    void replyToProbe(const Entry& entry, std::string_view status);
    void replyToJoin(const Entry& entry, std::string_view status);
    void replyToHeartbeat(const Entry& entry, std::string_view status);

    // The join.
    void seeJoin(const Entry& entry);
    void failJoin(std::int64_t at, std::string message);
    void judgeProbe(std::int64_t at, std::string_view told);
    void stepJoin(JoinStep step, std::int64_t at);
    bool isAtStep(JoinStep step, std::int64_t at);

    // The launch.
    void seeLaunch(const Entry& entry);
    void seeLaunchLog(const Entry& entry);
    void seeRoute(const Entry& entry);
    void seeStart(const Entry& entry);
    void seePermission(const Entry& entry);
    void launchIsOver(std::int64_t at, bool attempts);
    void settleProcess(const Entry& entry);
    void seeNewWindow(const Entry& entry);

    void seeKill(const Entry& entry);
    void seeKilled(const Entry& entry, const std::string& said);

    // When a moment is over.
    void endDues(std::int64_t at, std::int64_t next);
    void endLooks(std::int64_t at, std::int64_t next);
    void endBeats(std::int64_t at, std::int64_t next);
    bool areTimersHeld() const;
    void endLaunch(std::int64_t at, std::int64_t next);
    void endThreads(std::int64_t at, std::int64_t next);
    bool mayComeToNothing(const Due& due);
    void comeToNothing(const Due& due);
    void perhapsTry(std::size_t index, std::int64_t at);
    void object(std::string_view rule, std::size_t line, std::string why);

    Stage& stage_;
    std::vector<Request> requests_;
    std::deque<std::string> following_;
    std::int64_t followingAt_ = 0;
    std::size_t followingLine_ = 0;

    std::int64_t ambiguousAt_ = -1;  // a reply to a heartbeat or to a notice
    int ambiguousErrors_ = 0;        // as they were counted before it
    std::optional<std::int64_t> latency_;
    bool repliesChange_ = false;  // by a step

    JoinStep join_ = JoinStep::none;
    std::int64_t joinAt_ = 0;
    std::string joinBase_, joinCode_, typedCode_;
    bool perhapsOther_ = false;  // the reply that is read may be an earlier join's
    bool surelyOther_ = false;   // or is
    JoinStep perhapsStep_ = JoinStep::none;
    std::int64_t perhapsAt_ = 0;
    JoinResult joined_;

    LaunchStep launch_ = LaunchStep::none;
    std::int64_t launchAt_ = 0;
    std::int64_t launchBegunAt_ = 0;
    int prompts_ = 0;
    std::deque<std::string_view> answers_;  // to permission prompts, as they have to be logged
    std::int64_t answeredAt_ = 0;
    std::shared_ptr<Launcher> launcher_;
    std::string meeting_;
    std::int64_t startedPid_ = 0;
    std::int64_t before_ = 0;
    bool safariAsked_ = false;

    KillStep kill_ = KillStep::none;
    bool killSeen_ = false;
    std::int64_t killAt_ = 0;
    std::int64_t killPid_ = 0;

    std::string_view blocked_;  // the combination that the tap has told of
    std::size_t blockedLine_ = 0;
    bool wasStrange_ = false;
    bool looked_ = false;        // a silent look was possible in this moment
    bool lookedBefore_ = false;  // or in the one in which an alert or a menu began to hold it up
    int allowedKeys_ = 0;
    int pressedKeys_ = 0;       // that have gone nowhere yet
    bool tries_ = false;        // a second tap, for a moment
    bool secureInput_ = false;  // a password field has the keyboard
    int notices_ = 1;           // of each change of the displays
    std::int64_t noticesEvery_ = 0;
};

}  // namespace vantrel::simulation
