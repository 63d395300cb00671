#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <set>
#include <string>

#include "support/Bytes.h"
#include "vxswf.h"

namespace {

using ::testing::MatchesRegex;
namespace fs = std::filesystem;

Bytes ReadFile(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file) << path;
    return Bytes(std::istreambuf_iterator<char>(file), {});
}

std::string ReadText(const fs::path& path) {
    const Bytes bytes = ReadFile(path);
    return std::string(bytes.begin(), bytes.end());
}

Bytes Tags() {
    return Join({TagBytes(69, Hex("00 00 00 00")),                  // file attributes
                 LongTagBytes(24, Hex("10 20 30")),                 // a long header that need not be
                 LongTagBytes(39, Hex("07 00 01 00 40 00 00 00")),  // sprite 7: 1 frame, ShowFrame, End
                 TagBytes(777, Repeat(70, 0xAB)),                   // a type that nobody knows
                 TagBytes(1, {})});                                 // ShowFrame
}

Bytes Movie() { return MovieBytes(8, Tags()); }

/// Runs the built command in an empty directory.
class Command : public testing::Test {
protected:
    struct Result {
        int code;
        std::string out;
        std::string err;
    };

    Command() {
        std::string path = (fs::temp_directory_path() / "vxswf-test-XXXXXX").string();
        m_Directory = mkdtemp(path.data());
        fs::create_directory(m_Directory / "in");
    }
    ~Command() override { fs::remove_all(m_Directory); }

    fs::path At(const std::string& name) const { return m_Directory / "in" / name; }
    void Write(const std::string& name, const Bytes& bytes) const {
        std::ofstream file(At(name), std::ios::binary);
        file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    }
    std::set<std::string> Names() const {
        std::set<std::string> names;
        for (const auto& entry : fs::directory_iterator(m_Directory / "in")) {
            names.insert(entry.path().filename().string());
        }
        return names;
    }
    /// `line` is for the shell; `vxswf` is the command.
    Result Run(const std::string& line) const {
        std::ofstream(m_Directory / "run") << "vxswf() { '" VXSWF_COMMAND "' \"$@\"; }\n" << line << '\n';
        const std::string in = "cd '" + (m_Directory / "in").string() + "' && ";
        const int status = std::system((in + "bash ../run >../out 2>../err").c_str());
        return {WEXITSTATUS(status), ReadText(m_Directory / "out"), ReadText(m_Directory / "err")};
    }
    void ExpectRun(const std::string& line, int code, const std::string& error) const {
        SCOPED_TRACE(line);
        const Result result = Run(line);
        EXPECT_EQ(result.code, code);
        EXPECT_THAT(result.err, MatchesRegex(error));
    }

private:
    fs::path m_Directory;
};

TEST_F(Command, InfoListsHeaderAndTags) {
    Write("a.swf", Movie());
    const Result result = Run("vxswf info a.swf");
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out,
              "a.swf: FWS, version 8, length 128, frame (0, 0) to (100, 50) pixels, rate 12, frames 1\n"
              "     0 short          4  TAG_FILEATTRIBUTES(69)\n"
              "     1 long           3  TAG_PROTECT(24)\n"
              "     2 long           8  TAG_DEFINESPRITE(39) - Id=7\n"
              "         0 short          0  TAG_SHOWFRAME(1)\n"
              "     3 long          70  Unknown(777)\n"
              "     4 short          0  TAG_SHOWFRAME(1)\n");
}

TEST_F(Command, InfoWritesOneJsonObjectALine) {
    Write("a.swf", Movie());
    Write("b\n\xFF.swf", MovieBytes(6, {}));
    const Result result = Run("vxswf info --raw --json a.swf $'b\\n\\xff.swf'");
    EXPECT_EQ(result.code, 0);
    std::istringstream lines(result.out);
    std::string line;
    ASSERT_TRUE(std::getline(lines, line));
    const auto a = nlohmann::ordered_json::parse(line);
    EXPECT_EQ(a["signature"], "FWS");
    EXPECT_EQ(a["length"], 128);
    EXPECT_EQ(a["frame"]["xMax"], 100);
    EXPECT_EQ(a["tags"].size(), 5u);
    EXPECT_EQ(a["tags"][2]["tags"][0]["type"], 1);
    EXPECT_EQ(a["tags"][3].dump(),
              "{\"index\":3,\"type\":777,\"header\":\"long\",\"length\":70,\"text\":\"Unknown(777)\"}");
    ASSERT_TRUE(std::getline(lines, line));
    EXPECT_EQ(nlohmann::json::parse(line)["file"], "b\n\xEF\xBF\xBD.swf") << "a byte that is not UTF-8";
    EXPECT_FALSE(std::getline(lines, line));
}

TEST_F(Command, InfoGoesOnAfterAFailureAndAnswersTheWorst) {
    Write("a.swf", Movie());
    Write("bad.swf", Hex("47 57 53"));
    const Result result = Run("vxswf info bad.swf gone.swf bad.swf a.swf");
    EXPECT_EQ(result.code, 2);
    EXPECT_EQ(result.out.substr(0, 11), "a.swf: FWS,");
    EXPECT_EQ(result.err,
              "vxswf: bad.swf: load failed with 1\n"
              "vxswf: gone.swf: No such file or directory\n"
              "vxswf: bad.swf: load failed with 1\n");
}

TEST_F(Command, CopyKeepsOrChangesTheSignature) {
    Write("a.swf", Movie());
    ExpectRun("vxswf copy a.swf same.swf", 0, "");
    EXPECT_EQ(ReadFile(At("same.swf")), Movie());
    ExpectRun("vxswf copy --raw --compress a.swf c.swf && vxswf copy c.swf c2.swf", 0, "");
    EXPECT_EQ(ReadFile(At("c.swf"))[0], 'C');
    EXPECT_LT(ReadFile(At("c.swf")).size(), Movie().size());
    EXPECT_EQ(ReadFile(At("c2.swf")), ReadFile(At("c.swf")));
    ExpectRun("vxswf copy --plain c.swf p.swf", 0, "");
    EXPECT_EQ(ReadFile(At("p.swf")), Movie());
    EXPECT_EQ(Names(), (std::set<std::string>{"a.swf", "c.swf", "c2.swf", "p.swf", "same.swf"}));
}

TEST_F(Command, RawCopyCarriesWhatAParsedCopyRewrites) {
    const Bytes buttonSound =
        Hex("07 00"
            "00 00 00 00 00 00 00 00");
    Write("a.swf", MovieBytes(8, TagBytes(17, Join({buttonSound, Hex("FF")}))));  // a byte too many
    ExpectRun("vxswf copy --raw a.swf raw.swf && vxswf copy a.swf parsed.swf", 0, "");
    EXPECT_EQ(ReadFile(At("raw.swf")), ReadFile(At("a.swf")));
    EXPECT_EQ(ReadFile(At("parsed.swf")), MovieBytes(8, TagBytes(17, buttonSound)));
}

TEST_F(Command, CopyOntoItselfKeepsTheMode) {
    Write("a.swf", Movie());
    chmod(At("a.swf").c_str(), 0640);
    ExpectRun("vxswf copy --compress a.swf a.swf && vxswf copy --plain a.swf a.swf", 0, "");
    EXPECT_EQ(ReadFile(At("a.swf")), Movie());
    struct stat status = {};
    ASSERT_EQ(stat(At("a.swf").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777u, 0640u);
    ExpectRun("umask 027; vxswf copy a.swf new.swf", 0, "");
    ASSERT_EQ(stat(At("new.swf").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777u, 0640u);
    EXPECT_EQ(Names(), (std::set<std::string>{"a.swf", "new.swf"}));
}

TEST_F(Command, CopyWritesThroughLinks) {
    Write("a.swf", Movie());
    Write("old.swf", Hex("00"));
    fs::create_directory(At("sub"));
    ExpectRun("ln -s ../old.swf sub/link; ln -s sub/link twice; ln -s sub/new.swf dangling", 0, "");
    ExpectRun("vxswf copy a.swf twice && vxswf copy a.swf dangling", 0, "");
    EXPECT_TRUE(fs::is_symlink(At("twice")) && fs::is_symlink(At("sub/link")) &&
                fs::is_symlink(At("dangling")));
    EXPECT_EQ(ReadFile(At("old.swf")), Movie());
    EXPECT_EQ(ReadFile(At("sub/new.swf")), Movie());
}

TEST_F(Command, StandardStreamsAndPipes) {
    Write("a.swf", Movie());
    ExpectRun("cat a.swf | vxswf copy --compress - - | vxswf copy --plain - b.swf", 0, "");
    EXPECT_EQ(ReadFile(At("b.swf")), Movie());
    ExpectRun("vxswf copy <(cat a.swf) >(cat >c.swf); status=$?; wait $!; exit $status", 0, "");
    EXPECT_EQ(ReadFile(At("c.swf")), Movie());
    ExpectRun("vxswf info - < /dev/null", 1, "vxswf: -: load failed with 1\n");
}

TEST_F(Command, WrongUsage) {
    for (const char* line :
         {"vxswf", "vxswf nonsense", "vxswf info", "vxswf info --nonsense a.swf", "vxswf copy a.swf",
          "vxswf copy a.swf b.swf c.swf", "vxswf copy --plain --compress a.swf b.swf"}) {
        ExpectRun(line, 2, "vxswf: .+; --help tells more\n");
    }
    ExpectRun("vxswf --help && vxswf copy --help && vxswf --version", 0, "");
}

TEST_F(Command, AFailureLeavesTheOldFileAndNothingElse) {
    const Bytes old = Hex("01 02 03");
    Write("a.swf", MovieBytes(8, TagBytes(777, Repeat(300000, 7))));
    Write("cut.swf", Hex("43 57 53 08 FF FF 00 00 78 9C 00"));  // a body that does not inflate
    Write("old.swf", old);
    const std::set<std::string> names = Names();
    ExpectRun("vxswf copy cut.swf old.swf", 1, "vxswf: cut.swf: load failed with 1 \\(.+\\)\n");
    ExpectRun("vxswf copy gone.swf old.swf", 2, "vxswf: gone.swf: No such file or directory\n");
    ExpectRun("vxswf copy . old.swf", 2, "vxswf: \\.: Is a directory\n");
    ExpectRun("ulimit -f 100; vxswf copy a.swf old.swf", 2, "vxswf: old.swf: cannot be written\n");
    ExpectRun("ulimit -f 100; vxswf copy a.swf new.swf", 2, "vxswf: new.swf: cannot be written\n");
    ExpectRun("ulimit -f 100; vxswf copy --compress a.swf old.swf", 1,
              "vxswf: old.swf: dump failed with .+\n");
    ExpectRun("TMPDIR=/nonexistent vxswf copy --compress a.swf old.swf", 1,
              "vxswf: old.swf: dump failed with 44.*\n");
    ExpectRun("vxswf copy a.swf .", 2, "vxswf: \\.: Is a directory\n");
    ExpectRun("vxswf copy a.swf gone/new.swf", 2, "vxswf: gone/new.swf: No such file or directory\n");
    ExpectRun("vxswf copy a.swf old.swf/new.swf", 2, "vxswf: old.swf/new.swf: Not a directory\n");
    EXPECT_EQ(ReadFile(At("old.swf")), old);
    EXPECT_EQ(Names(), names);
}

TEST_F(Command, AFullDiskIsReported) {
    Write("a.swf", Movie());
    ExpectRun("vxswf copy a.swf /dev/full", 2, "vxswf: /dev/full: No space left on device\n");
    ExpectRun("vxswf copy a.swf - >/dev/full", 2, "vxswf: -: No space left on device\n");
    ExpectRun("vxswf info a.swf >/dev/full", 2, "vxswf: -: cannot be written\n");
    EXPECT_TRUE(fs::is_character_file("/dev/full")) << "a device is never replaced";
}

/// A character, and a placement of it at a depth in the only frame.
Bytes MovieOfDepth(unsigned char depth) {
    const Bytes placement = Join({Hex("02"), Bytes{depth}, Hex("00 01 00")});
    return MovieBytes(8, Join({TagBytes(46, Hex("01 00 EE")), TagBytes(26, placement), TagBytes(1, {})}));
}

/// The tags of a movie or sprite as `type`, and `type@depth` for placements of type 26.
std::string Describe(const VXSwfTagSet& tags) {
    std::string text;
    for (VXSwfTag* tag : tags) {
        text += (text.empty() ? "" : " ") + std::to_string(static_cast<unsigned int>(tag->GetTagType()));
        if (tag->GetTagType() == 26) text += "@" + std::to_string(tag->GetData()[1] | tag->GetData()[2] << 8);
        if (const auto* sprite = dynamic_cast<VXSwfDefineSpriteTag*>(tag))
            text += "(" + Describe(*sprite) + ")";
    }
    return text;
}

std::string DescribeFile(const fs::path& path) {
    const Bytes bytes = ReadFile(path);
    VXBitStream in = StreamOver(bytes);
    VXFlintFile movie;
    EXPECT_EQ(movie.LoadFromStream(in), kVXSuccess);
    return Describe(movie);
}

TEST_F(Command, MergePlacesEachSourceOnTop) {
    Write("d.swf", MovieOfDepth(5));
    Write("s.swf", MovieOfDepth(1));
    for (const std::string raw : {"", "--raw "}) {
        ExpectRun("vxswf merge " + raw + "d.swf s.swf o.swf", 0, "");
        EXPECT_EQ(DescribeFile(At("o.swf")), "46 26@5 46 39(26@101 1) 26@6 1");
    }
    ExpectRun("vxswf merge --name n --at -5,10 d.swf s.swf d.swf o.swf", 0, "");
    EXPECT_EQ(DescribeFile(At("o.swf")), "46 26@5 46 39(26@101 1) 26@6 46 39(26@105 1) 26@7 1");
    ExpectRun("vxswf copy --compress d.swf d.swf && vxswf merge d.swf s.swf d.swf", 0, "");
    EXPECT_EQ(ReadFile(At("d.swf"))[0], 'C') << "compression follows the destination";
}

TEST_F(Command, MergeFailuresLeaveNothing) {
    Write("d.swf", MovieOfDepth(5));
    Write("full.swf", MovieBytes(8, Join({TagBytes(26, Hex("02 FF FF 01 00")), TagBytes(1, {})})));
    Write("bad.swf", Hex("00"));
    const std::set<std::string> names = Names();
    ExpectRun("vxswf merge --frame 2 d.swf d.swf o.swf", 2, "vxswf: d.swf: has no frame 2\n");
    ExpectRun("vxswf merge full.swf d.swf o.swf", 2, "vxswf: full.swf: has no depth left above its own\n");
    ExpectRun("vxswf merge d.swf d.swf bad.swf o.swf", 1, "vxswf: bad.swf: load failed with 1\n");
    for (const char* line : {"d.swf o.swf", "--frame 0 d.swf d.swf o.swf", "--at 5 d.swf d.swf o.swf",
                             "--at nan,0 d.swf d.swf o.swf"}) {
        ExpectRun("vxswf merge " + std::string(line), 2, "vxswf: .+; --help tells more\n");
    }
    EXPECT_EQ(Names(), names);
}

TEST_F(Command, DemoBuildsAMovieThatComesBackAsItIs) {
    ExpectRun("vxswf demo a.swf && vxswf copy --raw --plain a.swf b.swf && vxswf copy --raw b.swf c.swf", 0,
              "");
    EXPECT_EQ(ReadFile(At("a.swf"))[0], 'C');
    EXPECT_EQ(ReadFile(At("b.swf")), ReadFile(At("c.swf")));
    // Parsed, everything but the button keeps its bytes too: what this library writes is what it would write again.
    ExpectRun("vxswf copy b.swf c.swf", 0, "");
    const auto plain = ReadFile(At("b.swf"));
    const auto copied = ReadFile(At("c.swf"));
    ASSERT_EQ(plain.size(), copied.size());
    std::size_t numDifferent = 0;
    for (std::size_t i = 0; i < plain.size(); ++i) numDifferent += plain[i] != copied[i] ? 1 : 0;
    EXPECT_EQ(numDifferent, 1u) << "the low byte of the offset to the button's conditions";
    ExpectRun("vxswf demo --font 'No Such Font' d.swf", 0, "");
    EXPECT_LT(ReadFile(At("d.swf")).size(), ReadFile(At("a.swf")).size()) << "glyphs without outlines";
}

TEST_F(Command, ExamplesRun) {
    const std::string directory = VXSWF_EXAMPLES;
    ExpectRun("'" + directory + "/build_movie' a.swf", 0, "");
    EXPECT_EQ(ReadFile(At("a.swf"))[0], 'C');
    EXPECT_EQ(Run("'" + directory + "/load_and_list' a.swf").out.substr(0, 41),
              "320 x 240 pixels, 24 frames, 24 a second\n");
    ExpectRun("'" + directory + "/merge_movies' a.swf a.swf b.swf", 0, "");
    EXPECT_EQ(DescribeFile(At("b.swf")).substr(0, 29), "69 9 32 26@1 32 39(26@101 1 1");
}

}  // namespace
