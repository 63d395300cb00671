#include <stdlib.h>
#include <unistd.h>
#include <filesystem>

#include "support/Test.h"

namespace {

namespace fs = std::filesystem;

/// A directory that goes with all that is in it.
class VXMovieIOTest : public testing::Test {
protected:
    VXMovieIOTest() {
        char name[] = "/tmp/vxswf-kit-XXXXXX";
        m_Directory = mkdtemp(name);
    }
    ~VXMovieIOTest() override { fs::remove_all(m_Directory); }
    std::string PathOf(const char* name) const { return (m_Directory / name).string(); }
    std::string Write(const char* name, const Bytes& bytes) const {
        std::ofstream(PathOf(name), std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        return PathOf(name);
    }
    static Bytes Read(const std::string& path) {
        std::ifstream in(path, std::ios::binary);
        return Bytes(std::istreambuf_iterator<char>(in), {});
    }

    fs::path m_Directory;
    VXMovieIO m_Files;
};

TEST_F(VXMovieIOTest, SaysWhyAMovieDoesNotLoad) {
    const SilentAsserts silence;
    const Bytes movie = MovieBytes(8, Join({TagBytes(9, Hex("01 02 03")), TagBytes(26, Hex("06"))}));
    Bytes packed = movie;
    packed[0] = 'C';
    const struct {
        std::string path;
        const char* error;
        bool isWhole;
    } rows[] = {
        {PathOf("none"), "cannot be opened: No such file or directory", false},
        {PathOf(""), "is a directory", true},
        {Write("text", Text("hello")), "cannot be loaded: not an SWF movie", false},
        {Write("packed", packed), "cannot be loaded: what is compressed does not inflate", true},
        {Write("damaged", movie),
         "cannot be loaded: damaged inside tag 2, TAG_PLACEOBJECT2(26): data ended early, a write did not "
         "fit, or "
         "memory ran out",
         false},
    };
    for (const auto& [path, error, isWhole] : rows) {
        VXFlintFile parsed;
        VXWholeMovie whole;
        EXPECT_EQ(m_Files.Load(isWhole ? whole : parsed, path), kVXFailure);
        EXPECT_EQ(m_Files.GetErrorText(), path + ": " + error);
    }
    VXWholeMovie whole;
    VXMovieCombiner combiner(whole);
    EXPECT_EQ(m_Files.Combine(combiner, PathOf("text")), kVXFailure);
    EXPECT_EQ(m_Files.GetErrorText(), PathOf("text") + ": cannot be combined: " + combiner.GetErrorText());
}

TEST_F(VXMovieIOTest, AFileIsReplacedWholeOrNotAtAll) {
    // What a movie of bytes alone keeps: bytes behind the end tag.
    const Bytes bytes = Join({MovieBytes(8, kShowFrame), Hex("AA")});
    VXWholeMovie movie;
    ASSERT_EQ(m_Files.Load(movie, Write("movie", bytes)), kVXSuccess) << m_Files.GetErrorText();
    const std::string path = Write("old", Text("old"));
    fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write);
    fs::create_symlink("old", PathOf("link"));
    ASSERT_EQ(m_Files.Save(movie, PathOf("link")), kVXSuccess) << m_Files.GetErrorText();
    EXPECT_EQ(Read(path), bytes);
    EXPECT_TRUE(fs::is_symlink(PathOf("link")));
    EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_read | fs::perms::owner_write);

    m_Files.SetProgress([](std::uint64_t, std::uint64_t) { return false; });
    EXPECT_EQ(m_Files.Save(movie, path), kVXFailure);
    EXPECT_EQ(m_Files.GetErrorText(), path + ": the save was stopped");
    VXFlintFile none;
    EXPECT_EQ(m_Files.Load(none, path), kVXFailure);
    EXPECT_EQ(m_Files.GetErrorText(), path + ": the load was stopped");
    m_Files.SetProgress({});
    EXPECT_EQ(Read(path), bytes);
    EXPECT_EQ(std::distance(fs::directory_iterator(m_Directory), {}), 3);

    EXPECT_EQ(m_Files.Save(movie, PathOf("none/movie")), kVXFailure);
    EXPECT_EQ(m_Files.GetErrorText(),
              PathOf("none/movie") + ": cannot be written: No such file or directory");
    if (fs::exists("/dev/full")) {
        EXPECT_EQ(m_Files.Save(movie, "/dev/full"), kVXFailure);
        EXPECT_EQ(m_Files.GetErrorText(), "/dev/full: cannot be written: No space left on device");
    }
}

TEST_F(VXMovieIOTest, ReportsHowFarItIs) {
    const Bytes bytes = MovieBytes(8, LongTagBytes(900, Noise(200000)));
    const std::string path = Write("movie", bytes);
    std::vector<std::uint64_t> places;
    m_Files.SetProgress([&](std::uint64_t done, std::uint64_t all) {
        EXPECT_TRUE(all == bytes.size() || all == 0);
        places.push_back(done);
        return done < 150000;
    });
    VXWholeMovie movie;
    EXPECT_EQ(m_Files.Load(movie, path), kVXFailure);
    EXPECT_EQ(places, (std::vector<std::uint64_t>{0, 65536, 131072, 196608}));
}

TEST(VXVersionTest, TextAndNumberAgree) {
    int parts[3] = {};
    ASSERT_EQ(std::sscanf(VXGetVersionText(), "%d.%d.%d", &parts[0], &parts[1], &parts[2]), 3);
    EXPECT_EQ(VXGetVersion(), parts[0] * 10000 + parts[1] * 100 + parts[2]);
}

}  // namespace
