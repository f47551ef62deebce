#include "platform/virtual/apps/VirtualProcessLauncher.h"

#include <algorithm>
#include <utility>

#include "platform/portable/UTF8Validity.h"

namespace vantrel::virtualmac {

namespace {

constexpr const char* executablesOfBundle = "/Contents/MacOS/";

std::string lastComponent(const std::string& path) {
    return path.substr(path.rfind('/') + 1);
}

/// Whether it can be passed on as it stands.
bool isExact(const std::string& text) {
    return text.find('\0') == std::string::npos && isValidUTF8(text);
}

/// The address that a browser shows when started with these arguments.
std::string addressIn(const std::vector<std::string>& arguments) {
    constexpr std::string_view app = "--app=";
    for (const std::string& argument : arguments) {
        if (argument.starts_with(app)) return argument.substr(app.size());
        if (!argument.starts_with("-") && argument.find(':') != std::string::npos) return argument;
    }
    return {};
}

}  // namespace

VirtualProcessLauncher::VirtualProcessLauncher(Engine& engine, VirtualFileManager& files, VirtualDesktop& desktop,
                                               Activations& activations, std::optional<std::string> ownIdentifier)
    : engine_(engine), files_(files), desktop_(desktop), activations_(activations) {
    ApplicationDescription own;
    own.name = "Vantrel";
    own.bundleIdentifier = std::move(ownIdentifier);
    const std::string path = "/Applications/Vantrel.app/Contents/MacOS/Vantrel";
    activations_.setClient(next_);
    processes_.push_back(std::make_shared<VirtualProcess>(engine_, desktop_, activations_,
                                                          VirtualProcess::Origin{next_++, path, {}}, std::move(own)));
    // No event: the creator of the Mac knows.
    processes_.front()->appearSilently();
    install(safariPath, safari());
    desktop_.onLastWindowClosed = [this](ProcessIdentifier process) {
        const auto found = find(process);
        if (found && found->description().exitsWithLastWindow) found->exitAfter(found->description().exitDelay);
    };
}

std::variant<ProcessIdentifier, PlatformError> VirtualProcessLauncher::launch(
    std::string_view executablePath, const std::vector<std::string>& arguments) {
    const std::string path(executablePath);
    const auto result = launchTask(path, arguments);
    if (std::holds_alternative<ProcessIdentifier>(result)) yieldTo(path);
    return result;
}

// An application that the client has started as a process is not brought to the front by the system, and may come by
// itself only if the client lets it. On the main thread, which is not waited for.
void VirtualProcessLauncher::yieldTo(const std::string& executablePath) {
    auto identifier = bundleIdentifier(executablePath.substr(0, executablePath.rfind(executablesOfBundle)));
    if (!activations_.isCooperative() || !identifier) return;
    engine_.mainLoop.postOwn([this, identifier = *std::move(identifier)] {
        if (activations_.isClientInFront()) activations_.yieldTo(identifier);
    });
}

std::variant<ProcessIdentifier, PlatformError> VirtualProcessLauncher::launchTask(
    const std::string& path, const std::vector<std::string>& arguments) {
    const std::string file = "“" + lastComponent(path) + "”";
    if (!isExact(path) || !std::all_of(arguments.begin(), arguments.end(), isExact)) {
        return PlatformError{"Argomento non valido"};
    }
    const auto kind = files_.kind(path);
    if (!kind || *kind == FileKind::brokenLink) return PlatformError{"Il file " + file + " non esiste."};
    if (*kind == FileKind::folder) return PlatformError{file + " è una cartella e non può essere avviata."};
    if (*kind != FileKind::executable) return PlatformError{"Non hai i permessi per eseguire il file " + file + "."};
    if (const auto failure = startFailure(path)) return PlatformError{repairedUTF8(*failure)};
    if (engine_.isOver()) return PlatformError{"Il processo è terminato."};
    return start(path, arguments, Starter::client);
}

std::optional<std::string> VirtualProcessLauncher::bundleIdentifier(const std::string& bundlePath) const {
    const std::string executables = bundlePath + executablesOfBundle;
    ApplicationFactory factory;
    {
        const std::lock_guard guard(mutex_);
        const auto found = installed_.lower_bound(executables);
        if (found == installed_.end() || !found->first.starts_with(executables)) return std::nullopt;
        factory = found->second;
    }
    return factory({}).application.bundleIdentifier;
}

bool VirtualProcessLauncher::sendSignal(ProcessIdentifier process, int signal) {
    if (engine_.isOver()) return false;
    const auto found = find(process);
    const bool sent = found && found->state() != VirtualProcess::State::gone;
    Fields fields{{Field::pid, std::to_string(process)}};
    if (!sent) fields.emplace_back(Field::error, "no such process");
    engine_.journal.emit({ProcessEvent::signal, std::to_string(signal), std::move(fields)});
    return sent && found->receive(signal);
}

void VirtualProcessLauncher::install(const std::string& executablePath, InstalledApplication application) {
    install(executablePath,
            [application = std::move(application)](const std::vector<std::string>&) { return application; });
}

void VirtualProcessLauncher::install(const std::string& executablePath, ApplicationFactory factory) {
    files_.add(executablePath, FileKind::executable);
    const std::lock_guard guard(mutex_);
    installed_[executablePath] = std::move(factory);
}

void VirtualProcessLauncher::uninstall(const std::string& executablePath) {
    constexpr std::string_view bundle = ".app/";
    const auto end = executablePath.find(bundle);
    files_.remove(end == std::string::npos ? executablePath : executablePath.substr(0, end + bundle.size() - 1));
    const std::lock_guard guard(mutex_);
    installed_.erase(executablePath);
}

void VirtualProcessLauncher::failLaunches(std::optional<std::string> text) {
    const std::lock_guard guard(mutex_);
    failure_ = std::move(text);
}

std::optional<std::string> VirtualProcessLauncher::startFailure(const std::string& executablePath) const {
    {
        const std::lock_guard guard(mutex_);
        if (failure_) return failure_;
    }
    return installedAt(executablePath, {}).startFailure;
}

InstalledApplication VirtualProcessLauncher::installedAt(const std::string& path,
                                                         const std::vector<std::string>& arguments) const {
    ApplicationFactory factory;
    {
        const std::lock_guard guard(mutex_);
        if (const auto found = installed_.find(path); found != installed_.end()) factory = found->second;
    }
    if (factory) return factory(arguments);
    InstalledApplication plain;
    plain.application.name = lastComponent(path);
    plain.application.isApplication = false;
    return plain;
}

std::shared_ptr<VirtualProcess> VirtualProcessLauncher::make(std::string path, std::vector<std::string> arguments,
                                                             const ApplicationDescription& description) {
    const std::lock_guard guard(mutex_);
    processes_.push_back(std::make_shared<VirtualProcess>(
        engine_, desktop_, activations_, VirtualProcess::Origin{next_++, std::move(path), std::move(arguments)},
        description));
    return processes_.back();
}

ProcessIdentifier VirtualProcessLauncher::start(const std::string& executablePath,
                                                const std::vector<std::string>& arguments) {
    return start(executablePath, arguments, Starter::participant);
}

ProcessIdentifier VirtualProcessLauncher::start(const std::string& executablePath,
                                                const std::vector<std::string>& arguments, Starter starter) {
    const InstalledApplication installed = installedAt(executablePath, arguments);
    std::shared_ptr<VirtualProcess> older;
    if (installed.handsOverIn && installed.application.bundleIdentifier) {
        older = running(*installed.application.bundleIdentifier);
    }
    const auto process = make(executablePath, arguments, installed.application);
    Fields fields{{Field::pid, std::to_string(process->processIdentifier())}};
    for (const std::string& argument : arguments) fields.emplace_back(Field::argument, argument);
    engine_.journal.emit({ProcessEvent::started, executablePath, std::move(fields)});
    if (older) {
        process->exitAfter(installed.handsOverIn.value_or(0));
        openWindows(older, installed, addressIn(arguments), 0, starter);
    } else {
        live(process, installed, starter);
    }
    return process->processIdentifier();
}

void VirtualProcessLauncher::live(const std::shared_ptr<VirtualProcess>& process, const InstalledApplication& installed,
                                  Starter starter) {
    const auto& [identifier, path, arguments] = process->origin();
    engine_.world.after(installed.appearsAfter, [process] { process->appear(); });
    if (installed.exitsAfter) process->exitAfter(*installed.exitsAfter);
    if (!installed.forks) {
        return openWindows(process, installed, addressIn(arguments), installed.appearsAfter, starter);
    }
    process->exitAfter(installed.forks->exitsAfter);
    engine_.world.after(installed.forks->goesOnAfter, [this, path = path, arguments = arguments, installed, starter] {
        const auto child = make(path, arguments, installed.application);
        child->appear();
        openWindows(child, installed, addressIn(arguments), 0, starter);
    });
}

void VirtualProcessLauncher::openWindows(const std::shared_ptr<VirtualProcess>& process,
                                         const InstalledApplication& installed, const std::string& address,
                                         double notBefore, Starter starter) {
    for (NewWindow window : installed.windows) {
        if (window.title.empty()) window.title = address.empty() ? "Nuova scheda" : address;
        engine_.world.after(std::max(window.after, notBefore), [this, process, window, starter]() mutable {
            if (starter == Starter::client) {
                window.activates = window.activates && activations_.mayComeByItself(process->processIdentifier(),
                                                                                    process->bundleIdentifier());
            }
            openWindow(process->processIdentifier(), window);
        });
    }
}

void VirtualProcessLauncher::openAddress(const std::shared_ptr<VirtualProcess>& process,
                                         const std::string& executablePath, const std::string& address) {
    openWindows(process, installedAt(executablePath, {address}), address, 0, Starter::participant);
}

std::int64_t VirtualProcessLauncher::openWindow(ProcessIdentifier process, const NewWindow& window) {
    const auto owner = find(process);
    if (!owner || owner->state() != VirtualProcess::State::running) return 0;
    return desktop_.open(process, owner->description().name, window);
}

ProcessIdentifier VirtualProcessLauncher::add(const ApplicationDescription& description) {
    const auto process = make({}, {}, description);
    process->appear();
    process->announce();
    return process->processIdentifier();
}

bool VirtualProcessLauncher::exit(ProcessIdentifier process) {
    const auto found = find(process);
    return found && found->exit();
}

std::vector<std::shared_ptr<VirtualProcess>> VirtualProcessLauncher::all() const {
    const std::lock_guard guard(mutex_);
    return processes_;
}

std::shared_ptr<VirtualProcess> VirtualProcessLauncher::find(ProcessIdentifier process) const {
    const std::lock_guard guard(mutex_);
    const auto found = std::find_if(processes_.begin(), processes_.end(),
                                    [process](const auto& each) { return each->processIdentifier() == process; });
    return found == processes_.end() ? nullptr : *found;
}

std::shared_ptr<VirtualProcess> VirtualProcessLauncher::running(std::string_view bundleIdentifier) const {
    for (const auto& process : all()) {
        if (process->isAlive() && process->description().bundleIdentifier == bundleIdentifier) return process;
    }
    return nullptr;
}

std::shared_ptr<VirtualProcess> VirtualProcessLauncher::runningFrom(const std::string& executablePath) const {
    const auto bundle = installedAt(executablePath, {}).application.bundleIdentifier;
    if (bundle) return running(*bundle);
    for (const auto& process : all()) {
        if (process->isAlive() && process->origin().path == executablePath) return process;
    }
    return nullptr;
}

}  // namespace vantrel::virtualmac
