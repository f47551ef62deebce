#include <gtest/gtest.h>
#include <sys/stat.h>

#include <atomic>
#include <regex>
#include <thread>

#include "platform/linux/system/LinuxUserDefaults.h"
#include "platform/portable/PortableJSONSerialization.h"
#include "tests/linux/support/TemporaryFolder.h"

namespace vantrel::linuxdesktop {
namespace {

class LinuxUserDefaultsTest : public testing::Test {
  protected:
    std::filesystem::path file() const { return folder.path() / "vantrel" / "defaults.json"; }

    LinuxUserDefaults open() const { return LinuxUserDefaults(file(), json); }

    void put(const std::string& contents) const {
        std::filesystem::create_directories(file().parent_path());
        writeContents(file(), contents);
    }

    std::vector<std::string> files() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(file().parent_path())) {
            names.push_back(entry.path().filename().string());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    TemporaryFolder folder;
    PortableJSONSerialization json;
};

TEST_F(LinuxUserDefaultsTest, IsEmptyWithoutAFileAndMakesNoneByReading) {
    const auto defaults = open();
    EXPECT_EQ(defaults.string("vt_email"), std::nullopt);
    EXPECT_FALSE(std::filesystem::exists(file()));
}

TEST_F(LinuxUserDefaultsTest, KeepsValuesAcrossLaunches) {
    open().set("vt_fullName", "Niccolò Perù");
    open().set("vt_email", "");
    const auto defaults = open();
    EXPECT_EQ(defaults.string("vt_fullName"), "Niccolò Perù");
    EXPECT_EQ(defaults.string("vt_email"), "");
    EXPECT_EQ(contentsOf(file()), "{\"vt_email\":\"\",\"vt_fullName\":\"Niccolò Perù\"}\n");
}

TEST_F(LinuxUserDefaultsTest, BelongsToTheUserAloneAndLeavesNoTemporaryFileBehind) {
    open().set("a", "b");
    struct stat status {};
    ASSERT_EQ(stat(file().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600u);
    ASSERT_EQ(stat(file().parent_path().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0700u);
    EXPECT_EQ(files(), std::vector<std::string>{"defaults.json"});
}

TEST_F(LinuxUserDefaultsTest, CountsWhatIsNoStringAsAbsentAndKeepsIt) {
    put(R"({"number":7,"flag":true,"list":[1,{"x":null}],"text":"t"})");
    auto defaults = open();
    EXPECT_EQ(defaults.string("number"), std::nullopt);
    EXPECT_EQ(defaults.string("flag"), std::nullopt);
    EXPECT_EQ(defaults.string("list"), std::nullopt);
    EXPECT_EQ(defaults.string("text"), "t");
    defaults.set("text", "u");
    const auto kept = json.parse(contentsOf(file()));
    ASSERT_TRUE(kept && kept->object());
    EXPECT_EQ(*kept, *json.parse(R"({"number":7,"flag":true,"list":[1,{"x":null}],"text":"u"})"));
}

class DamagedDefaults : public LinuxUserDefaultsTest, public testing::WithParamInterface<std::string> {};

TEST_P(DamagedDefaults, AreSetAsideUntouchedToldOfAndTreatedAsEmpty) {
    put(GetParam());
    testing::internal::CaptureStderr();
    auto defaults = open();
    const std::string complaint = testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::count(complaint.begin(), complaint.end(), '\n'), 1) << complaint;
    EXPECT_NE(complaint.find("damaged"), std::string::npos) << complaint;
    EXPECT_EQ(defaults.string("vt_email"), std::nullopt);

    const auto names = files();
    ASSERT_EQ(names.size(), 1u);
    EXPECT_TRUE(std::regex_match(names.front(), std::regex(R"(defaults\.json\.damaged-\d{8}T\d{6}Z)")))
        << names.front();
    EXPECT_EQ(contentsOf(file().parent_path() / names.front()), GetParam());

    defaults.set("vt_email", "n@x.it");
    EXPECT_EQ(open().string("vt_email"), "n@x.it");
}

INSTANTIATE_TEST_SUITE_P(Contents, DamagedDefaults,
                         testing::Values("", "{", "[]", "\"text\"", "{\"a\":\"b\"} x", "{\"a\":\"\xff\"}",
                                         std::string("\0\0\0\0", 4), std::string(2000, '[')));

TEST_F(LinuxUserDefaultsTest, TakesAFileOfMoreThanAMiBForADamagedOne) {
    put("{\"a\":\"" + std::string(std::size_t{1} << 20, 'x') + "\"}");
    const auto size = std::filesystem::file_size(file());
    testing::internal::CaptureStderr();
    auto defaults = open();
    EXPECT_NE(testing::internal::GetCapturedStderr().find("damaged"), std::string::npos);
    EXPECT_EQ(defaults.string("a"), std::nullopt);
    ASSERT_EQ(files().size(), 1u);
    EXPECT_EQ(std::filesystem::file_size(file().parent_path() / files().front()), size);
    defaults.set("a", "b");
    EXPECT_EQ(open().string("a"), "b");
}

TEST_F(LinuxUserDefaultsTest, GoesOnInMemoryWhenTheFileCannotBeRead) {
    std::filesystem::create_directories(file());
    testing::internal::CaptureStderr();
    auto defaults = open();
    defaults.set("a", "b");
    const std::string complaint = testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::count(complaint.begin(), complaint.end(), '\n'), 1) << complaint;
    EXPECT_EQ(defaults.string("a"), "b");
    EXPECT_TRUE(std::filesystem::is_directory(file()));
}

TEST_F(LinuxUserDefaultsTest, GoesOnInMemoryWhenTheFolderCannotBeMade) {
    writeContents(folder.path() / "vantrel", "a file where the folder should be");
    testing::internal::CaptureStderr();
    auto defaults = open();
    defaults.set("a", "b");
    const std::string complaint = testing::internal::GetCapturedStderr();
    EXPECT_NE(complaint.find("vantrel: "), std::string::npos);
    EXPECT_EQ(defaults.string("a"), "b");
    EXPECT_EQ(contentsOf(folder.path() / "vantrel"), "a file where the folder should be");
}

TEST_F(LinuxUserDefaultsTest, FollowsALinkAndLeavesItInPlace) {
    std::filesystem::create_directories(file().parent_path());
    writeContents(folder.path() / "kept.json", "{}");
    std::filesystem::create_symlink(folder.path() / "kept.json", file());
    open().set("a", "b");
    EXPECT_TRUE(std::filesystem::is_symlink(file()));
    EXPECT_EQ(contentsOf(folder.path() / "kept.json"), "{\"a\":\"b\"}\n");
}

TEST_F(LinuxUserDefaultsTest, IsWholeAtEveryMomentWhileManyThreadsWrite) {
    auto defaults = open();
    defaults.set("key0", "first");
    std::atomic<bool> writing = true;
    std::atomic<int> looks = 0;
    std::atomic<int> broken = 0;
    std::thread reader([&] {
        while (writing) {
            const auto parsed = json.parse(contentsOf(file()));
            if (!parsed || parsed->object() == nullptr || parsed->object()->count("key0") == 0) ++broken;
            ++looks;
        }
    });
    std::vector<std::thread> writers;
    for (int writer = 0; writer < 4; ++writer) {
        writers.emplace_back([&, writer] {
            for (int round = 0; round < 25; ++round) {
                defaults.set("key" + std::to_string(writer), std::string(5000, static_cast<char>('a' + writer)));
                defaults.string("key0");
            }
        });
    }
    for (auto& writer : writers) writer.join();
    writing = false;
    reader.join();
    EXPECT_GT(looks, 0);
    EXPECT_EQ(broken, 0);
    const auto after = open();
    for (int writer = 0; writer < 4; ++writer) {
        EXPECT_EQ(after.string("key" + std::to_string(writer)), std::string(5000, static_cast<char>('a' + writer)));
    }
}

}  // namespace
}  // namespace vantrel::linuxdesktop
