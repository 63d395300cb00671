#include "platform/CVXTempFileStreamReadWrite.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>

namespace {

/// Points TMPDIR somewhere for the length of a test.
class TemporaryDirectory {
public:
    explicit TemporaryDirectory(const char* value) {
        if (const char* old = std::getenv("TMPDIR")) m_Old = old, m_WasSet = true;
        setenv("TMPDIR", value, 1);
    }
    ~TemporaryDirectory() { m_WasSet ? setenv("TMPDIR", m_Old.c_str(), 1) : unsetenv("TMPDIR"); }
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

private:
    std::string m_Old;
    bool m_WasSet = false;
};

/// The descriptor that the next open in this process will get.
int NextDescriptor() {
    const int next = dup(0);
    close(next);
    return next;
}

}  // namespace

TEST(CVXTempFileStreamReadWrite, IsPrivateAndLeavesNothingBehind) {
    std::string directory = testing::TempDir() + "vxtempdirXXXXXX";
    ASSERT_NE(mkdtemp(directory.data()), nullptr);
    const TemporaryDirectory chosen(directory.c_str());
    const int descriptor = NextDescriptor();
    {
        CVXTempFileStreamReadWrite stream;
        ASSERT_EQ(stream.Open(), 1);
        stream.SetMode(IVXStream::kWrite);
        std::uint32_t value = 1;
        ASSERT_EQ(stream.XferInt32(value), 1);
        stream.Flush();

        struct stat file = {}, place = {};
        ASSERT_EQ(fstat(descriptor, &file), 0);
        ASSERT_EQ(stat(directory.c_str(), &place), 0);
        EXPECT_EQ(file.st_dev, place.st_dev);
        EXPECT_TRUE(S_ISREG(file.st_mode));
        EXPECT_EQ(file.st_mode & 07777, 0600U);
        EXPECT_EQ(file.st_size, 4);
        EXPECT_EQ(file.st_nlink, 0U) << "nobody else can reach it";
        EXPECT_NE(fcntl(descriptor, F_GETFD) & FD_CLOEXEC, 0);
        EXPECT_TRUE(std::filesystem::is_empty(directory));
    }
    EXPECT_EQ(fcntl(descriptor, F_GETFD), -1);
    EXPECT_TRUE(std::filesystem::is_empty(directory));
    EXPECT_EQ(rmdir(directory.c_str()), 0);
}

TEST(CVXTempFileStreamReadWrite, AnswersThatNoFileCouldBeMade) {
    const TemporaryDirectory chosen("/no/such/directory");
    CVXTempFileStreamReadWrite stream;
    EXPECT_EQ(stream.Open(), 0) << "a directory that the user chose is not replaced by another";
}

TEST(CVXTempFileStreamReadWrite, AnEmptyChoiceIsNone) {
    const TemporaryDirectory chosen("");
    CVXTempFileStreamReadWrite stream;
    EXPECT_EQ(stream.Open(), 1);
}
