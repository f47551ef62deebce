#include "platform/macos/threads/MainThreadWatch.h"

#import <Foundation/Foundation.h>
#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <atomic>

#include "platform/macos/threads/MacClock.h"
#include "platform/portable/HangWatch.h"

namespace vantrel::macos {

namespace {

constexpr int millisecondsPerSecond = 1000;

std::atomic<int> lineToWatcher = -1;
std::atomic<int> begun = 0;
// Main thread.
NSTimer* answers;
double lastAnswer = 0;

// A watcher that is gone, or has not read for long, is no reason to wait.
void say(char what) {
    const int line = lineToWatcher;
    [[maybe_unused]] const ssize_t written = write(line, &what, 1);
}

void answer() {
    lastAnswer = MacClock().uptime();
    say(watchedAnswer);
}

// Only calls that are safe between fork() and exec().
[[noreturn]] void live(int line, int clientsEnd, pid_t client) {
    close(clientsEnd);
    close(STDIN_FILENO);
    close(STDOUT_FILENO);
    // What stops the client from its terminal does not stop its watcher.
    setpgid(0, 0);
    watchClient(line, client, MainThreadWatch::patienceSeconds * millisecondsPerSecond / 2);
    _exit(0);
}

// Main thread. Answers come under an alert and while a menu is open, too.
void answerAsLongAsBegun() {
    if (begun > 0 && answers == nil) {
        answer();
        answers = [NSTimer timerWithTimeInterval:MainThreadWatch::answersEvery
                                         repeats:YES
                                           block:^(NSTimer*) {
                                             answer();
                                           }];
        [NSRunLoop.mainRunLoop addTimer:answers forMode:NSRunLoopCommonModes];
    } else if (begun <= 0) {
        [answers invalidate];
        answers = nil;
        // Also after another thread has said so: an answer may have come in between.
        say(watchedRest);
    }
}

void followOnTheMainThread() {
    if (NSThread.isMainThread) return answerAsLongAsBegun();
    CFRunLoopPerformBlock(CFRunLoopGetMain(), kCFRunLoopCommonModes, ^{
      answerAsLongAsBegun();
    });
    CFRunLoopWakeUp(CFRunLoopGetMain());
}

}  // namespace

bool MainThreadWatch::start() {
    if (const int old = lineToWatcher.exchange(-1); old >= 0) close(old);
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) return false;
    const auto [watchersEnd, clientsEnd] = ends;
    const pid_t client = getpid();
    const pid_t watcher = fork();
    if (watcher == 0) live(watchersEnd, clientsEnd, client);
    close(watchersEnd);
    if (watcher < 0) {
        close(clientsEnd);
        return false;
    }
    // A browser that inherited it would keep the watcher alive.
    fcntl(clientsEnd, F_SETFD, FD_CLOEXEC);
    fcntl(clientsEnd, F_SETFL, O_NONBLOCK);
    fcntl(clientsEnd, F_SETNOSIGPIPE, 1);
    lineToWatcher = clientsEnd;
    return true;
}

void MainThreadWatch::begin() {
    if (lineToWatcher >= 0 && begun++ == 0) followOnTheMainThread();
}

void MainThreadWatch::end() {
    if (lineToWatcher < 0 || --begun > 0) return;
    if (!NSThread.isMainThread) say(watchedRest);
    followOnTheMainThread();
}

void MainThreadWatch::noteReturn() {
    constexpr double seldom = 1;
    if (begun <= 0 || !NSThread.isMainThread || MacClock().uptime() < lastAnswer + seldom) return;
    answer();
}

}  // namespace vantrel::macos
