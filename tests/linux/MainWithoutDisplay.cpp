#include <gtest/gtest.h>

#include <QCoreApplication>
#include <csignal>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const QCoreApplication application(argc, argv);
    std::signal(SIGPIPE, SIG_IGN);
    return RUN_ALL_TESTS();
}
