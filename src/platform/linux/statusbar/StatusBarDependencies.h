#pragma once

namespace vantrel::linuxdesktop {

class FrontWindows;
class LinuxScreens;
class MenuBuilder;
class X11Connection;
class X11Watcher;
class X11WindowSurvey;

/// What a status item needs.
struct StatusBarDependencies {
    const MenuBuilder& menuBuilder;
    LinuxScreens& screens;
    X11Connection& connection;
    X11Watcher& watcher;
    X11WindowSurvey& survey;
    FrontWindows& front;
};

}  // namespace vantrel::linuxdesktop
