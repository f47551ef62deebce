#include "tests/contracts/VirtualContractHost.h"

#include <algorithm>
#include <sstream>
#include <utility>

#include "platform/portable/URLComponents.h"
#include "tests/virtual/MacTest.h"

namespace vantrel::contracts {
namespace {

using virtualmac::NetworkAnswer;

std::string lowerCased(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return text;
}

ServedRequest served(const URLRequest& request) {
    ServedRequest made;
    made.method = request.method;
    made.target = requestTarget(request.url);
    for (const auto& [name, value] : request.headers) made.headers[lowerCased(name)] = value;
    made.body = request.body.value_or("");
    return made;
}

NetworkAnswer networkAnswer(const ServedAnswer& answer) {
    if (answer.stalls) return NetworkAnswer::stall(answer.status, answer.delay);
    virtualmac::HTTPAnswer http;
    http.status = answer.status;
    http.headers = answer.headers;
    for (const auto& [pause, bytes] : answer.body) http.body.push_back({pause, bytes});
    return {answer.delay, std::move(http)};
}

/// Reads "TITLE,X,Y,WIDTH,HEIGHT".
virtualmac::NewWindow windowOf(const std::string& text) {
    virtualmac::NewWindow window;
    std::istringstream numbers(text.substr(text.find(',') + 1));
    char comma = 0;
    numbers >> window.frame.origin.x >> comma >> window.frame.origin.y >> comma >> window.frame.size.width >> comma >>
        window.frame.size.height;
    EXPECT_FALSE(numbers.fail()) << text;
    window.title = text.substr(0, text.find(','));
    constexpr std::string_view byte = "%FF";
    const std::size_t at = window.title.find(byte);
    if (at != std::string::npos) window.title.replace(at, byte.size(), "\xff");
    window.after = 0.3;
    return window;
}

virtualmac::InstalledApplication peer(const std::vector<std::string>& arguments) {
    constexpr std::string_view window = "--window=";
    virtualmac::InstalledApplication made;
    made.application.name = "Google Chrome";
    made.application.bundleIdentifier = "com.google.Chrome";
    made.application.exitDelay = 0.05;
    for (const std::string& argument : arguments) {
        if (argument.starts_with(window)) made.windows.push_back(windowOf(argument.substr(window.size())));
        if (argument == "--exits-without-windows") made.application.exitsWithLastWindow = true;
        if (argument == "--ignores-terminate") made.application.ignoresTerminate = true;
        if (argument == "--exits-at-once") made.exitsAfter = 0;
    }
    return made;
}

bool contains(const Rect& frame, const Point& point) {
    return point.x >= frame.origin.x && point.x < frame.origin.x + frame.size.width && point.y >= frame.origin.y &&
           point.y < frame.origin.y + frame.size.height;
}

virtualmac::Options options() {
    auto made = virtualmac::optionsFromEnvironment();
    made.bundleIdentifier = "biz.quorrin.vantrel";
    made.onMisuse = [](const std::string& what) { ADD_FAILURE() << "misuse of the platform: " << what; };
    return made;
}

}  // namespace

VirtualContractHost::VirtualContractHost() : mac_(options()) {
    mac_.files().add(VirtualContractHost::plainFile(), virtualmac::FileKind::file);
    mac_.processes().install(VirtualContractHost::peerExecutable(), peer);
    mac_.network().setHandler(
        [](const URLRequest&) { return NetworkAnswer::failure("Impossibile connettersi al \xffserver.", 0.01); });
}

Computer& VirtualContractHost::computer() {
    return mac_.computer();
}

void VirtualContractHost::onMain(Block block) {
    mac_.onMain(std::move(block));
}

void VirtualContractHost::postToMain(Block block) {
    mac_.postToMain(std::move(block));
}

void VirtualContractHost::letTimePass(double seconds) {
    mac_.runFor(seconds);
}

void VirtualContractHost::pressAlertButton(const std::string& title) {
    for (int waited = 0; waited < 1000 && mac_.alerts().up().empty(); ++waited) mac_.runFor(0.01);
    mac_.participant().answerAlert(title);
}

std::string VirtualContractHost::serve(Server server) {
    mac_.network().setHandler(
        [server = std::move(server)](const URLRequest& request) { return networkAnswer(server(served(request))); });
    return "http://contract.example:8080";
}

std::string VirtualContractHost::refusingAddress() {
    return "http://refusing.example:9";
}

std::string VirtualContractHost::peerExecutable() {
    return virtualmac::chromePath;
}

// No Mac has such a file. It is the name that a Mac could only get wrong.
ContractHost::NamedPeer VirtualContractHost::peerWhoseNameIsNotUTF8() {
    const std::string path = "/Applications/Calcolo.app/Contents/MacOS/Calcolo";
    mac_.processes().install(path, [](const std::vector<std::string>& arguments) {
        virtualmac::InstalledApplication made = peer(arguments);
        made.application.name = "Calc\xffolo";
        return made;
    });
    return {path, "Calc\uFFFDolo"};
}

std::optional<std::vector<std::string>> VirtualContractHost::argumentsReceived(ProcessIdentifier peer) {
    const auto process = mac_.processes().find(peer);
    if (!process) return std::nullopt;
    return process->origin().arguments;
}

ProcessIdentifier VirtualContractHost::startPeerWithoutWaiting() {
    virtualmac::ApplicationDescription application = peer({}).application;
    application.leavesZombie = true;
    return mac_.processes().add(application);
}

std::string VirtualContractHost::plainFile() {
    return "/Users/partecipante/appunti.txt";
}

std::string VirtualContractHost::existingFile() {
    return "/Applications/Safari.app/Contents/MacOS/Safari";
}

std::string VirtualContractHost::existingFolder() {
    return "/Applications/Safari.app";
}

std::string VirtualContractHost::missingPath() {
    return "/Applications/Nessuno.app";
}

void VirtualContractHost::pressKey(std::int64_t macKeyCode, std::uint64_t flags) {
    if (typedInto_ == 0) {
        virtualmac::ApplicationDescription application{"Appunti", "com.apple.TextEdit"};
        application.ignoresTerminate = true;
        virtualmac::NewWindow window{"Appunti"};
        window.hasCloseButton = false;
        typedInto_ = mac_.processes().add(application);
        mac_.processes().openWindow(typedInto_, window);
    }
    mac_.participant().pressKey(macKeyCode, flags);
}

std::vector<std::int64_t> VirtualContractHost::keysReceived() {
    std::vector<std::int64_t> codes;
    for (const auto& [key, process] : mac_.keys().received()) {
        if (process == typedInto_) codes.push_back(key.keyCode);
    }
    return codes;
}

void VirtualContractHost::setDisplays(const std::vector<Screen>& displays) {
    auto next = mac_.screens().displays();
    next.screens = displays;
    mac_.screens().change(std::move(next));
}

std::vector<VirtualContractHost::SeenOverlay> VirtualContractHost::overlays() {
    std::vector<SeenOverlay> seen;
    for (const auto& overlay : mac_.overlays().all()) seen.push_back({overlay.description.frame, overlay.visible});
    return seen;
}

std::optional<WindowEntry> VirtualContractHost::topmostAt(const Point& point) {
    const auto screens = mac_.screens().displays().screens;
    const Point fromTop{point.x, screens.front().frame.size.height - point.y};
    const auto list = mac_.computer().windowList.copy(WindowListOption::onScreenOnly);
    const auto found = std::find_if(list->begin(), list->end(),
                                    [&](const WindowEntry& entry) { return contains(*entry.bounds, fromTop); });
    return found == list->end() ? std::nullopt : std::optional(*found);
}

bool VirtualContractHost::overlayIsInFrontAt(const Point& point) {
    const auto window = topmostAt(point);
    const auto overlays = mac_.overlays().all();
    return window && std::any_of(overlays.begin(), overlays.end(),
                                 [&](const auto& overlay) { return overlay.number == window->number; });
}

void VirtualContractHost::clickAt(const Point& point, Click) {
    const auto window = topmostAt(point);
    if (!window) return;
    // A cover absorbs the click. The client's own windows are not in the list.
    const auto process = mac_.processes().find(window->ownerPID.value_or(0));
    if (process && process->processIdentifier() != ownProcess()) process->comeToFront();
}

std::vector<std::string> VirtualContractHost::statusItems() {
    std::vector<std::string> titles;
    for (const auto& item : mac_.statusBar().items()) titles.push_back(item.title);
    return titles;
}

void VirtualContractHost::openStatusMenu() {
    mac_.participant().openStatusMenu();
    mac_.runFor(0.1);
    EXPECT_TRUE(statusMenuIsOpen());
}

bool VirtualContractHost::statusMenuIsOpen() {
    return mac_.menus().isOpen();
}

void VirtualContractHost::chooseFromStatusMenu(const std::string& title) {
    openStatusMenu();
    mac_.participant().chooseMenuItem(title);
    mac_.runFor(0.1);
}

void VirtualContractHost::showSpace(int place) {
    const auto wanted = static_cast<std::size_t>(place);
    while (mac_.spaces().count() <= wanted) mac_.spaces().addDesktop();
    EXPECT_TRUE(mac_.spaces().switchTo(wanted));
}

ProcessIdentifier VirtualContractHost::ownProcess() {
    return mac_.processes().ownProcess();
}

std::vector<std::string> VirtualContractHost::windowsShown() {
    std::vector<std::string> titles;
    for (const auto& window : mac_.windows().all()) {
        if (window.visible) titles.push_back(window.title);
    }
    return titles;
}

std::optional<VirtualContractHost::SeenControl> VirtualContractHost::controlShown(const std::string& id) {
    const auto window = mac_.windows().front();
    if (!window || !window->shows(id)) return std::nullopt;
    return SeenControl{window->text(id), window->isEnabled(id)};
}

std::string VirtualContractHost::accessibilityLabel(const std::string& id) {
    const auto window = mac_.windows().front();
    const Control* control = window ? window->control(id) : nullptr;
    return control == nullptr ? std::string() : control->accessibilityLabel;
}

std::vector<std::string> VirtualContractHost::tabOrder() {
    const auto window = mac_.windows().front();
    return window ? window->tabOrder() : std::vector<std::string>();
}

std::optional<std::vector<std::string>> VirtualContractHost::announcements() {
    return mac_.windows().announcements();
}

void VirtualContractHost::pressButton(const std::string& id) {
    mac_.participant().press(id);
}

void VirtualContractHost::pressReturn() {
    mac_.participant().pressReturn();
}

void VirtualContractHost::typeInto(const std::string& id, const std::string& text) {
    mac_.participant().type(id, text);
}

Block VirtualContractHost::heldPress(const std::string& id) {
    const auto window = mac_.windows().front();
    EXPECT_TRUE(window && window->shows(id)) << id;
    return [this, id, number = window ? window->number : 0] { mac_.windows().act(number, id); };
}

bool VirtualContractHost::isAvailableInMainMenu(const std::string& menu, const std::string& item) {
    const Menu mainMenu = mac_.application().mainMenu();
    return std::any_of(mainMenu.items.begin(), mainMenu.items.end(), [&](const MenuItem& each) {
        return each.submenu.title == menu && virtualmac::findItem(each.submenu, item) != nullptr;
    });
}

void VirtualContractHost::chooseFromMainMenu(const std::string& menu, const std::string& item) {
    mac_.participant().openMainMenu(menu);
    mac_.runFor(0.1);
    EXPECT_TRUE(mac_.menus().isOpen()) << menu;
    mac_.participant().chooseMenuItem(item);
    mac_.runFor(0.1);
    if (!mac_.menus().isOpen()) return;
    mac_.participant().closeMenu();
    mac_.runFor(0.1);
}

void VirtualContractHost::launch(std::function<void(Computer&)> main) {
    postToMain([this, main = std::move(main)] { main(computer()); });
}

bool VirtualContractHost::hasEnded() {
    return !mac_.isRunning();
}

void VirtualContractHost::setTrusted(bool trusted) {
    mac_.trust().setTrusted(trusted);
}

int VirtualContractHost::trustPrompts() {
    return mac_.trust().prompts();
}

void VirtualContractHost::setCaptureStatus(MediaType media, AuthorizationStatus status) {
    mac_.capture().setStatus(media, status);
}

std::size_t VirtualContractHost::capturePrompts() {
    return mac_.capture().prompts();
}

void VirtualContractHost::answerCapturePrompt(bool granted) {
    EXPECT_TRUE(mac_.capture().answer(granted)) << "no prompt is up";
}

void VirtualContractHost::stop(ProcessIdentifier peer) {
    mac_.accessibility().setUnresponsive(peer, true);
}

void VirtualContractHost::haveNoOpener() {
    mac_.workspace().setFailing(true);
}

std::vector<std::string> VirtualContractHost::addressesOpened() {
    return mac_.workspace().opened();
}

}  // namespace vantrel::contracts
