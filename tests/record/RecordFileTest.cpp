#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "record/RecordFile.h"

namespace vantrel {
namespace {

class RecordFileTest : public testing::Test {
  protected:
    void SetUp() override {
        std::string pattern = (std::filesystem::temp_directory_path() / "vantrel-record-XXXXXX").string();
        ASSERT_NE(mkdtemp(pattern.data()), nullptr);
        folder = pattern;
    }
    void TearDown() override { std::filesystem::remove_all(folder); }

    std::string contents() const {
        std::ifstream stream(folder / "recording");
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    std::filesystem::path folder;
};

TEST_F(RecordFileTest, HasEachLineAsSoonAsItIsWritten) {
    auto file = RecordFile::create(folder / "recording");
    ASSERT_TRUE(file);
    EXPECT_TRUE(file->write("{\"line\":1}"));
    EXPECT_EQ(contents(), "{\"line\":1}\n");
    const std::string longLine(100'000, 'x');
    EXPECT_TRUE(file->write(longLine));
    EXPECT_EQ(contents(), "{\"line\":1}\n" + longLine + "\n");
}

TEST_F(RecordFileTest, IsForItsOwnerOnly) {
    ASSERT_TRUE(RecordFile::create(folder / "recording"));
    using std::filesystem::perms;
    EXPECT_EQ(std::filesystem::status(folder / "recording").permissions(), perms::owner_read | perms::owner_write);
}

TEST_F(RecordFileTest, ReplacesNoOther) {
    std::ofstream(folder / "recording") << "kept";
    EXPECT_FALSE(RecordFile::create(folder / "recording"));
    EXPECT_EQ(contents(), "kept");
    EXPECT_FALSE(RecordFile::create(folder / "missing" / "recording"));
}

}  // namespace
}  // namespace vantrel
