#include "platform/linux/ui/LinuxApplication.h"

#include <unistd.h>

#include <QApplication>
#include <QWidget>
#include <algorithm>
#include <utility>

#include "platform/linux/threads/MainThread.h"
#include "platform/linux/ui/MenuBars.h"
#include "platform/linux/ui/WindowActivation.h"
#include "platform/linux/ui/WindowWidget.h"
#include "platform/linux/x11/X11Windows.h"

namespace vantrel::linuxdesktop {

namespace {

// A window that has just been shown is not in the window manager's list yet: nothing is in front of it.
QWidget* frontWindow(X11Windows& windows) {
    const auto managed = windows.ofProcess(getpid());
    QWidget* front = nullptr;
    auto frontPlace = managed.end();
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (!widget->isVisible() || dynamic_cast<WindowWidget*>(widget) == nullptr) continue;
        const auto place = std::find(managed.begin(), managed.end(), static_cast<xcb_window_t>(widget->winId()));
        if (place == managed.end()) return widget;
        if (front != nullptr && place > frontPlace) continue;
        front = widget;
        frontPlace = place;
    }
    return front;
}

}  // namespace

LinuxApplication::LinuxApplication(MainThread& mainThread, MenuBars& menuBars, X11Windows& windows, Block endProcess)
    : mainThread_(mainThread), menuBars_(menuBars), windows_(windows), endProcess_(std::move(endProcess)) {}

void LinuxApplication::setActivationPolicy(ActivationPolicy) {
    // Here an application with windows is always a regular one.
    MainThread::require("setActivationPolicy");
}

void LinuxApplication::setDelegate(std::weak_ptr<ApplicationDelegate> delegate) {
    MainThread::require("setDelegate");
    delegate_ = std::move(delegate);
}

void LinuxApplication::setMainMenu(const Menu& menu) {
    MainThread::require("setMainMenu");
    menuBars_.setMenu(menu);
}

void LinuxApplication::run() {
    MainThread::require("run");
    if (terminated_) return;
    mainThread_.post([this] {
        if (std::exchange(launched_, true)) return;
        if (const auto delegate = delegate_.lock()) delegate->applicationDidFinishLaunching();
    });
    QApplication::exec();
}

void LinuxApplication::activate() {
    MainThread::require("activate");
    QWidget* modal = QApplication::activeModalWidget();
    QWidget* widget = modal != nullptr ? modal : frontWindow(windows_);
    if (widget != nullptr) bringToFront(*widget, windows_);
}

void LinuxApplication::terminate() {
    MainThread::require("terminate");
    if (terminated_) return;
    const auto delegate = delegate_.lock();
    if (delegate && delegate->applicationShouldTerminate() == TerminateReply::cancel) return;
    terminated_ = true;
    if (endProcess_) endProcess_();
    // Ends every event loop, also those of modal alerts; quit() would first ask the windows to close.
    QCoreApplication::exit(0);
}

}  // namespace vantrel::linuxdesktop
