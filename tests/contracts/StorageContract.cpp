#include "tests/contracts/ContractTest.h"

namespace vantrel::contracts {
namespace {

class DefaultsContract : public ContractTest {};
class FileContract : public ContractTest {};

TEST_F(DefaultsContract, ReturnTheLastValueThatWasSet) {
    EXPECT_EQ(std::nullopt, computer().userDefaults.string("contract_absent"));
    computer().userDefaults.set("contract_key", "uno");
    computer().userDefaults.set("contract_key", "due è \"🔒\"\n");
    EXPECT_EQ("due è \"🔒\"\n", computer().userDefaults.string("contract_key"));
    computer().userDefaults.set("contract_key", "");
    EXPECT_EQ("", computer().userDefaults.string("contract_key"));
}

TEST_F(DefaultsContract, MayBeUsedFromSeveralThreads) {
    const auto group = computer().dispatch.makeGroup();
    for (int worker = 0; worker < 4; ++worker) {
        group->enter();
        computer().dispatch.userInitiatedQueue().async([this, worker, group] {
            const std::string key = "contract_" + std::to_string(worker);
            for (int turn = 0; turn < 20; ++turn) computer().userDefaults.set(key, std::to_string(turn));
            group->leave();
        });
    }
    group->notify(computer().dispatch.mainQueue(), [this] { note("done"); });
    ASSERT_TRUE(noted(1));
    for (int worker = 0; worker < 4; ++worker) {
        EXPECT_EQ("19", computer().userDefaults.string("contract_" + std::to_string(worker)));
    }
}

TEST_F(FileContract, KnowsFilesAndFolders) {
    EXPECT_TRUE(computer().files.fileExists(host().existingFile()));
    EXPECT_TRUE(computer().files.fileExists(host().existingFolder()));
    EXPECT_FALSE(computer().files.fileExists(host().missingPath()));
    EXPECT_FALSE(computer().files.fileExists(""));
}

// The kernel's paths end at a zero byte.
TEST_F(FileContract, NoPathHoldsAZeroByte) {
    EXPECT_FALSE(computer().files.fileExists(host().existingFile() + std::string(1, '\0')));
    EXPECT_FALSE(computer().files.fileExists(host().existingFolder() + std::string("\0/x", 3)));
    EXPECT_FALSE(computer().files.fileExists(std::string(1, '\0')));
}

TEST_F(FileContract, TheHomeDirectoryExistsAndHasNoSlashAtItsEnd) {
    const std::string home = computer().files.homeDirectory();
    ASSERT_FALSE(home.empty());
    EXPECT_EQ('/', home.front());
    EXPECT_FALSE(home.ends_with('/'));
    EXPECT_TRUE(computer().files.fileExists(home));
}

}  // namespace
}  // namespace vantrel::contracts
