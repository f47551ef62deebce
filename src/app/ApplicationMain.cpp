#include "app/ApplicationMain.h"

#include <cstdlib>
#include <iostream>
#include <memory>

#include "app/AppDelegate.h"
#include "app/MainMenu.h"

namespace vantrel {

void applicationMain(const Computer& computer) {
    if (!computer.threads.isMainThread()) {
        std::cerr << "Fatal error: Incorrect actor executor assumption; Expected same executor as MainActor.\n";
        std::abort();
    }
    computer.application.setActivationPolicy(ActivationPolicy::regular);
    const auto delegate = std::make_shared<AppDelegate>(computer);
    computer.application.setDelegate(delegate);
    computer.application.setMainMenu(mainMenu());
    computer.application.run();
}

}  // namespace vantrel
