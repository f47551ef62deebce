#include "platform/virtual/network/VirtualURLSession.h"

#include <utility>

#include "platform/virtual/network/Exchange.h"

namespace vantrel::virtualmac {

namespace {

constexpr int maximumRedirects = 16;

Fields described(const URLRequest& request) {
    Fields fields;
    for (const auto& [name, value] : request.headers)
        fields.emplace_back(Field::header, std::string(name).append(": ").append(value));
    if (request.body && !request.body->empty()) fields.emplace_back(Field::body, *request.body);
    return fields;
}

Fields described(const URLReply& reply) {
    Fields fields;
    if (reply.error) fields.emplace_back(Field::error, reply.error->localizedDescription);
    if (reply.statusCode) fields.emplace_back(Field::status, std::to_string(*reply.statusCode));
    if (reply.data) fields.emplace_back(Field::body, *reply.data);
    return fields;
}

}  // namespace

void VirtualURLSession::dataTask(URLRequest request, Completion completion) {
    if (engine_.mainLoop.isOver()) return;
    auto task = std::make_shared<Task>();
    task->request = std::move(request);
    task->completion = std::move(completion);
    task->address = task->request.url.absoluteString;
    {
        const std::lock_guard guard(mutex_);
        sent_.push_back({toSeconds(engine_.scheduler.now()), task->request});
        ++underWay_;
    }
    engine_.journal.emit({NetworkEvent::request, task->request.method + " " + task->address, described(task->request)});
    if (!isSupported(task->request.url)) return deliver(task, 0, failure(unsupportedURLText));
    engine_.world.after(0, [this, task] { ask(task); });
}

void VirtualURLSession::setHandler(Handler handler) {
    const std::lock_guard guard(mutex_);
    handler_ = std::move(handler);
}

std::vector<VirtualURLSession::Sent> VirtualURLSession::sent() const {
    const std::lock_guard guard(mutex_);
    return sent_;
}

std::size_t VirtualURLSession::underWay() const {
    const std::lock_guard guard(mutex_);
    return underWay_;
}

void VirtualURLSession::ask(const TaskPointer& task) {
    Handler handler;
    {
        const std::lock_guard guard(mutex_);
        handler = handler_;
    }
    const NetworkAnswer answer =
        handler ? handler(task->request) : NetworkAnswer::failure(std::string(notConnectedText));
    if (const auto* http = std::get_if<HTTPAnswer>(&answer.answer);
        http && (http->status < 100 || http->status > 999)) {
        engine_.misuse("an HTTP status of " + std::to_string(http->status));
    }
    Outcome result = outcome(answer, task->request.timeoutInterval);
    auto next = result.reply.error ? std::nullopt : redirected(task->request, answer);
    if (next) {
        follow(task, std::move(*next), result.after);
    } else {
        deliver(task, result.after, std::move(result.reply));
    }
}

void VirtualURLSession::follow(const TaskPointer& task, URLRequest next, double after) {
    if (++task->redirects > maximumRedirects) return deliver(task, after, failure(tooManyRedirectsText));
    if (!isSupported(next.url)) return deliver(task, after, failure(unsupportedURLText));
    engine_.world.after(after, [this, task, next = std::move(next)]() mutable {
        engine_.journal.emit({NetworkEvent::redirect, next.method + " " + next.url.absoluteString});
        task->request = std::move(next);
        ask(task);
    });
}

void VirtualURLSession::deliver(const TaskPointer& task, double after, URLReply reply) {
    engine_.urlSession.after(after, [this, task, reply = std::move(reply)]() mutable {
        {
            const std::lock_guard guard(mutex_);
            --underWay_;
        }
        if (engine_.mainLoop.isOver()) return;
        engine_.journal.emit({NetworkEvent::reply, task->address, described(reply)});
        // The completion is destroyed as soon as it has been called, as with a real task.
        const Completion completion = std::move(task->completion);
        completion(std::move(reply));
    });
}

}  // namespace vantrel::virtualmac
