#include "platform/linux/LinuxApplication.h"

#include <unistd.h>

#include <QApplication>
#include <QWidget>
#include <utility>

#include "platform/linux/MainThread.h"
#include "platform/linux/MenuBars.h"
#include "platform/linux/X11Windows.h"

namespace vantrel::linuxdesktop {

LinuxApplication::LinuxApplication(MainThread& mainThread, MenuBars& menuBars, X11Windows& windows, Block endProcess)
    : mainThread_(mainThread), menuBars_(menuBars), windows_(windows), endProcess_(std::move(endProcess)) {}

void LinuxApplication::setActivationPolicy(ActivationPolicy) {
    // An application with windows is a regular one here.
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
    QWidget* widget = QApplication::activeModalWidget();
    if (widget != nullptr) {
        widget->raise();
        windows_.activate(static_cast<xcb_window_t>(widget->winId()));
        return;
    }
    const auto own = windows_.ofProcess(getpid());
    if (!own.empty()) windows_.activate(own.front());
}

void LinuxApplication::terminate() {
    MainThread::require("terminate");
    if (terminated_) return;
    const auto delegate = delegate_.lock();
    if (delegate && delegate->applicationShouldTerminate() == TerminateReply::cancel) return;
    terminated_ = true;
    if (endProcess_) endProcess_();
    // Every event loop, also those of modal alerts; quit() would ask the windows to close first.
    QCoreApplication::exit(0);
}

}  // namespace vantrel::linuxdesktop
