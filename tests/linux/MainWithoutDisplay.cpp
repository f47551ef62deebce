#include <gtest/gtest.h>

#include <QCoreApplication>
#include <csignal>

#include "tests/linux/network/ProxyVariables.h"

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const QCoreApplication application(argc, argv);
    std::signal(SIGPIPE, SIG_IGN);
    // Tests must not send requests to the proxy of the user who runs them.
    vantrel::linuxdesktop::ProxyVariables::clear();
    return RUN_ALL_TESTS();
}
