#include "platform/virtual/apps/VirtualApplicationOpener.h"

#include <utility>

#include "platform/portable/URLComponents.h"
#include "platform/portable/UTF8Validity.h"

namespace vantrel::virtualmac {

namespace {

/// "%20" becomes a space. What is not an escape does not change.
std::string unescaped(const std::string& text) {
    const auto digit = [](char c) {
        const std::string_view digits = "0123456789abcdef";
        return digits.find(static_cast<char>(c >= 'A' && c <= 'F' ? c - 'A' + 'a' : c));
    };
    std::string plain;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool escapes = text[at] == '%' && at + 2 < text.size() && digit(text[at + 1]) != std::string_view::npos &&
                             digit(text[at + 2]) != std::string_view::npos;
        plain += escapes ? static_cast<char>(digit(text[at + 1]) * 16 + digit(text[at + 2])) : text[at];
        if (escapes) at += 2;
    }
    return plain;
}

struct ApplicationFile {
    std::string name;
    std::string executable;
};

/// "file:///Applications/X.app" is the application X, whose executable has the same name.
ApplicationFile applicationFile(const URL& url) {
    std::string path = unescaped(URLComponents::split(url.absoluteString).path);
    while (path.size() > 1 && path.ends_with('/')) path.pop_back();
    std::string name = path.substr(path.rfind('/') + 1);
    if (name.ends_with(".app")) name.resize(name.size() - 4);
    return {name, path + "/Contents/MacOS/" + name};
}

}  // namespace

void VirtualApplicationOpener::open(const std::vector<URL>& urls, const URL& application, bool activates,
                                    Completion completion) {
    if (engine_.isOver()) return;
    engine_.journal.emit(
        {ApplicationEvent::opened,
         urls.empty() ? "" : urls.front().absoluteString,
         {{Field::application, application.absoluteString}, {Field::activates, activates ? "yes" : "no"}}});
    Behaviour behaviour;
    {
        const std::lock_guard guard(mutex_);
        behaviour = behaviour_;
    }
    Result result =
        behaviour.failure ? PlatformError{repairedUTF8(*behaviour.failure)} : openWith(application, urls, activates);
    if (behaviour.withoutApplication && !std::holds_alternative<PlatformError>(result)) {
        result = std::shared_ptr<RunningApplication>();
    }
    engine_.world.after(behaviour.delay, [this, result = std::move(result), completion = std::move(completion)] {
        engine_.workers.run([result, completion] { completion(result); });
    });
}

ApplicationOpener::Result VirtualApplicationOpener::openWith(const URL& application, const std::vector<URL>& urls,
                                                             bool activates) {
    const auto [name, executable] = applicationFile(application);
    if (!processes_.isExecutable(executable)) {
        return PlatformError{repairedUTF8("L’applicazione “" + name + "” non può essere aperta.")};
    }
    auto process = processes_.runningFrom(executable);
    if (!process) {
        if (const auto failure = processes_.startFailure(executable)) return PlatformError{repairedUTF8(*failure)};
        std::vector<std::string> arguments;
        arguments.reserve(urls.size());
        for (const URL& url : urls) arguments.push_back(url.absoluteString);
        return processes_.find(processes_.start(executable, arguments));
    }
    for (const URL& url : urls) processes_.openAddress(process, executable, url.absoluteString);
    if (activates) {
        engine_.world.after(process->description().activationDelay, [process] { process->comeToFront(); });
    }
    return process;
}

void VirtualApplicationOpener::setAnswerDelay(double seconds) {
    const std::lock_guard guard(mutex_);
    behaviour_.delay = seconds;
}

void VirtualApplicationOpener::answerWithoutApplication(bool without) {
    const std::lock_guard guard(mutex_);
    behaviour_.withoutApplication = without;
}

void VirtualApplicationOpener::failWith(std::optional<std::string> text) {
    const std::lock_guard guard(mutex_);
    behaviour_.failure = std::move(text);
}

}  // namespace vantrel::virtualmac
