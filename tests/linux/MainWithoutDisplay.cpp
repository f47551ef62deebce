#include <gtest/gtest.h>

#include <QCoreApplication>
#include <csignal>

#include "tests/linux/network/ProxyVariables.h"

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const QCoreApplication application(argc, argv);
    std::signal(SIGPIPE, SIG_IGN);
    // No request of a test goes to the proxy of whoever runs it.
    vantrel::linuxdesktop::ProxyVariables::clear();
    return RUN_ALL_TESTS();
}
