// What the product's objects must not do, for the check of their symbols. Never linked.
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

void escape() {
    std::ofstream("file") << "text";
    std::filesystem::remove("file");
    // NOLINTNEXTLINE(bugprone-command-processor)
    if (std::system("true") == 0) unlink("file");
}
