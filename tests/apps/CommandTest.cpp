#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <set>
#include <string>

#include "support/Bytes.h"

namespace {

using ::testing::MatchesRegex;
namespace fs = std::filesystem;

template <typename Sequence = Bytes>
Sequence ReadFile(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file) << path;
    return Sequence(std::istreambuf_iterator<char>(file), {});
}

Bytes Movie() {
    return MovieBytes(8, Join({TagBytes(69, Hex("00 00 00 00")),   // file attributes
                               LongTagBytes(24, Hex("10 20 30")),  // a long header that need not be
                               LongTagBytes(39, Hex("07 00 01 00 40 00 00 00")),  // sprite 7: ShowFrame, End
                               TagBytes(777, Repeat(70, 0xAB)),                   // a type that nobody knows
                               TagBytes(1, {})}));                                // ShowFrame
}

/// A character, and a placement of it at a depth in the only frame.
Bytes MovieOfDepth(unsigned char depth) {
    const Bytes placement = Join({Hex("02"), Bytes{depth}, Hex("00 01 00")});
    return MovieBytes(8, Join({TagBytes(46, Hex("01 00 EE")), TagBytes(26, placement), TagBytes(1, {})}));
}

/// Leaves types and depths of a listing.
const std::string kTypes = " | grep -oE '\\([0-9]+\\)|wDepth=[0-9]+' | tr -d '\\n'";

/// Runs the built command in an empty directory.
class Command : public testing::Test {
protected:
    struct Result {
        int code;
        std::string out;
        std::string err;
    };
    struct Row {
        const char* line;
        int code = 0;
        const char* error = "";
    };

    Command() {
        std::string path = (fs::temp_directory_path() / "vxswf-test-XXXXXX").string();
        m_Directory = mkdtemp(path.data());
        fs::create_directory(m_Directory / "in");
        Write("a.swf", Movie());
    }
    ~Command() override { fs::remove_all(m_Directory); }

    fs::path At(const std::string& name) const { return m_Directory / "in" / name; }
    void Write(const std::string& name, const Bytes& bytes) const {
        std::ofstream file(At(name), std::ios::binary);
        file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    }
    std::set<std::string> Names() const {
        std::set<std::string> names;
        for (const auto& entry : fs::directory_iterator(At(".")))
            names.insert(entry.path().filename().string());
        return names;
    }
    /// `line` is for the shell; `vxswf` is the command.
    Result Run(const std::string& line) const {
        std::ofstream(m_Directory / "run") << "vxswf() { '" VXSWF_COMMAND "' \"$@\"; }\n" << line << '\n';
        const std::string in = "cd '" + At("").string() + "' && ";
        const int status = std::system((in + "bash ../run >../out 2>../err").c_str());
        return {WEXITSTATUS(status), ReadFile<std::string>(m_Directory / "out"),
                ReadFile<std::string>(m_Directory / "err")};
    }
    /// `error` is what stands between "vxswf: " and the end of the line, a regular expression.
    void ExpectRun(const std::string& line, int code = 0, const std::string& error = "") const {
        SCOPED_TRACE(line);
        const Result result = Run(line);
        EXPECT_EQ(result.code, code);
        EXPECT_THAT(result.err, MatchesRegex(error.empty() ? "" : "vxswf: (" + error + ")\n"));
    }
    void ExpectRuns(std::initializer_list<Row> rows) const {
        for (const auto& [line, code, error] : rows) ExpectRun(line, code, error);
    }
    void ExpectMovies(std::initializer_list<const char*> names) const {
        for (const char* name : names) EXPECT_EQ(ReadFile(At(name)), Movie()) << name;
    }

private:
    fs::path m_Directory;
};

TEST_F(Command, InfoListsHeaderAndTagsAndGoesOnAfterAFailure) {
    Write("bad.swf", Hex("47 57 53"));
    ExpectRun("vxswf info bad.swf gone.swf a.swf >out", 2,
              "bad.swf: load failed with 1\nvxswf: gone.swf: No such file or directory");
    EXPECT_EQ(ReadFile<std::string>(At("out")),
              "a.swf: FWS, version 8, length 128, frame (0, 0) to (100, 50) pixels, rate 12, frames 1\n"
              "     0 short          4  TAG_FILEATTRIBUTES(69)\n"
              "     1 long           3  TAG_PROTECT(24)\n"
              "     2 long           8  TAG_DEFINESPRITE(39) - Id=7\n"
              "         0 short          0  TAG_SHOWFRAME(1)\n"
              "     3 long          70  Unknown(777)\n"
              "     4 short          0  TAG_SHOWFRAME(1)\n");
}

TEST_F(Command, InfoWritesOneJsonObjectALine) {
    Write("b\n\xFF.swf", MovieBytes(6, {}));
    std::istringstream lines(Run("vxswf info --raw --json a.swf $'b\\n\\xff.swf'").out);
    std::string first, second, rest;
    ASSERT_TRUE(std::getline(lines, first) && std::getline(lines, second) && !std::getline(lines, rest));
    const auto a = nlohmann::ordered_json::parse(first);
    EXPECT_EQ(
        first.substr(0, first.find(",\"tags\"")),
        "{\"file\":\"a.swf\",\"signature\":\"FWS\",\"version\":8,\"length\":128,\"frame\":{\"xMin\":0.0,"
        "\"xMax\":100.0,\"yMin\":0.0,\"yMax\":50.0},\"frameRate\":12,\"frameCount\":1");
    EXPECT_EQ(a["tags"].size(), 5u);
    EXPECT_EQ(a["tags"][2]["tags"].dump(),
              "[{\"index\":0,\"type\":1,\"header\":\"short\",\"length\":0,\"text\":\"TAG_SHOWFRAME(1)\"}]");
    EXPECT_EQ(nlohmann::json::parse(second)["file"], "b\n\xEF\xBF\xBD.swf") << "a byte that is not UTF-8";
}

TEST_F(Command, CopyKeepsOrChangesTheSignatureAndWithRawTheRest) {
    const Bytes sounds = Repeat(10, 0);                                      // of a button, none
    Write("b.swf", MovieBytes(8, TagBytes(17, Join({sounds, Hex("FF")}))));  // a byte too many
    ExpectRuns({{"vxswf copy a.swf same.swf && vxswf copy --compress a.swf c.swf && vxswf copy c.swf c2.swf"},
                {"vxswf copy --raw --plain c.swf p.swf"},
                {"vxswf copy --raw b.swf raw.swf && cmp b.swf raw.swf && vxswf copy b.swf b.swf"}});
    ExpectMovies({"same.swf", "p.swf"});
    EXPECT_EQ(ReadFile(At("c.swf"))[0], 'C');
    EXPECT_LT(ReadFile(At("c.swf")).size(), Movie().size());
    EXPECT_EQ(ReadFile(At("c2.swf")), ReadFile(At("c.swf")));
    EXPECT_EQ(ReadFile(At("b.swf")), MovieBytes(8, TagBytes(17, sounds)));
}

TEST_F(Command, CopyFillsADirectory) {
    fs::create_directory(At("out"));
    ExpectRuns(
        {{"cp a.swf b.swf && vxswf copy --compress a.swf b.swf out && vxswf copy --plain out/* ."},
         {"vxswf copy a.swf gone.swf out/b.swf out", 2, "gone.swf: No such file or directory"},
         {"vxswf copy - ./a.swf a.swf out </dev/null", 2,
          "-: has no name to be copied under\nvxswf: a.swf: has the name of another one that was copied"},
         {"vxswf copy a.swf b.swf c.swf", 2, "c.swf: is no directory"}});
    ExpectMovies({"a.swf", "b.swf", "out/a.swf"});
    EXPECT_EQ(ReadFile(At("out/b.swf"))[0], 'C');
    EXPECT_EQ(Names(), (std::set<std::string>{"a.swf", "b.swf", "out"}));
}

TEST_F(Command, CopyKeepsModesAndWritesThroughLinks) {
    ExpectRuns(
        {{"chmod 640 a.swf; vxswf copy --compress a.swf a.swf && vxswf copy --plain a.swf a.swf"},
         {"umask 027; vxswf copy a.swf new.swf; [[ $(stat -c %a a.swf new.swf | xargs) == '640 640' ]]"},
         {"mkdir sub; echo >old.swf; ln -s ../old.swf sub/link; ln -s sub/link twice; ln -s sub/new "
          "dangling"},
         {"vxswf copy a.swf twice && vxswf copy a.swf dangling"},
         {"[[ -L twice && -L sub/link && -L dangling ]]"}});
    ExpectMovies({"a.swf", "new.swf", "old.swf", "sub/new"});
}

TEST_F(Command, StandardStreamsAndPipes) {
    ExpectRuns(
        {{"cat a.swf | vxswf copy --compress - - | vxswf copy --plain - b.swf"},
         {"vxswf copy <(cat a.swf) >(cat >c.swf); status=$?; wait $!; exit $status"},
         {"vxswf info - < /dev/null", 1, "-: load failed with 1"},
         {"vxswf copy a.swf /dev/full", 2, "/dev/full: No space left on device"},
         {"vxswf copy a.swf - >/dev/full", 2, "-: No space left on device"},
         {"vxswf info a.swf >/dev/full", 2, "-: No space left on device"},
         // The reader is gone: a listing has been seen, a movie has not arrived.
         {"{ sleep 0.2; vxswf info a.swf a.swf; exit $?; } | :; exit ${PIPESTATUS[0]}"},
         {"{ sleep 0.2; vxswf copy a.swf -; exit $?; } | :; exit ${PIPESTATUS[0]}", 2, "-: Broken pipe"}});
    ExpectMovies({"b.swf", "c.swf"});
    EXPECT_TRUE(fs::is_character_file("/dev/full")) << "a device is never replaced";
}

TEST_F(Command, ProgressIsShownOnATerminalAndErased) {
    const std::string slowly = "(sleep 1.2; cat a.swf) | '" VXSWF_COMMAND "' copy - ";
    const Result result = Run(slowly + "b.swf & script -qec \"" + slowly + "c.swf\" /dev/null; wait");
    EXPECT_THAT(result.out, MatchesRegex("\r(vxswf: (reading -|writing c.swf): 0 MiB\x1B\\[K\r)+\x1B\\[K"));
    EXPECT_EQ(result.err, "") << "no terminal";
    ExpectMovies({"b.swf", "c.swf"});
}

TEST_F(Command, WrongUsage) {
    for (const char* line :
         {"", "nonsense", "info", "info --nonsense a.swf", "copy a.swf", "demo",
          "copy --plain --compress a.swf b.swf", "merge d.swf o.swf", "merge --frame 0 d.swf d.swf o.swf",
          "merge --at 5 d.swf d.swf o.swf", "merge --at nan,0 d.swf d.swf o.swf"}) {
        ExpectRun("vxswf " + std::string(line), 2, ".+; --help tells more");
    }
    EXPECT_THAT(Run("vxswf --version").out, MatchesRegex("vxswf [0-9.]+\n"));
}

TEST_F(Command, AFailureLeavesTheOldFileAndNothingElse) {
    const Bytes old = Hex("01 02 03");
    Write("large.swf", MovieBytes(8, TagBytes(777, Repeat(300000, 7))));
    Write("cut.swf", Hex("43 57 53 08 FF FF 00 00 78 9C 00"));  // a body that does not inflate
    Write("d.swf", MovieOfDepth(5));
    Write("full.swf", MovieBytes(8, Join({TagBytes(26, Hex("02 FF FF 01 00")), TagBytes(1, {})})));
    Write("old.swf", old);
    const std::set<std::string> names = Names();
    ExpectRuns(
        {{"vxswf copy cut.swf old.swf", 1, "cut.swf: load failed with 1 \\(.+\\)"},
         {"vxswf copy gone.swf old.swf", 2, "gone.swf: No such file or directory"},
         {"vxswf copy . old.swf", 2, "\\.: Is a directory"},
         {"ulimit -f 100; vxswf copy large.swf old.swf", 2, "old.swf: cannot be written"},
         {"ulimit -f 100; vxswf copy large.swf new.swf", 2, "new.swf: cannot be written"},
         {"ulimit -f 100; vxswf copy --compress large.swf old.swf", 1, "old.swf: dump failed with .+"},
         {"TMPDIR=/nonexistent vxswf copy --compress a.swf old.swf", 1, "old.swf: dump failed with 44.*"},
         {"vxswf copy a.swf gone/new.swf", 2, "gone/new.swf: No such file or directory"},
         {"vxswf copy a.swf old.swf/new.swf", 2, "old.swf/new.swf: Not a directory"},
         {"vxswf merge --frame 2 d.swf d.swf old.swf", 2, "d.swf: has no frame 2"},
         {"vxswf merge full.swf d.swf old.swf", 2, "full.swf: has no depth left above its own"},
         {"vxswf merge d.swf d.swf cut.swf new.swf", 1, "cut.swf: load failed with 1 \\(.+\\)"}});
    EXPECT_EQ(ReadFile(At("old.swf")), old);
    EXPECT_EQ(Names(), names);
}

TEST_F(Command, MergePlacesEachSourceOnTop) {
    Write("d.swf", MovieOfDepth(5));
    Write("s.swf", MovieOfDepth(1));
    const char* once = "(46)(26)wDepth=5(46)(39)(26)wDepth=101(1)(26)wDepth=6(1)";
    for (const auto& [line, tags] :
         {std::pair("d.swf s.swf o.swf", once), std::pair("--raw d.swf s.swf o.swf", once),
          std::pair("--name n --at -5,10 d.swf s.swf d.swf o.swf",
                    "(46)(26)wDepth=5(46)(39)(26)wDepth=101(1)(26)wDepth=6(46)(39)(26)wDepth=105(1)(26)"
                    "wDepth=7(1)")}) {
        const Result result = Run("vxswf merge " + std::string(line) + " && vxswf info o.swf" + kTypes);
        EXPECT_EQ(result.out, tags) << result.err;
    }
    ExpectRun("vxswf copy --compress d.swf d.swf && vxswf merge d.swf s.swf d.swf");
    EXPECT_EQ(ReadFile(At("d.swf"))[0], 'C') << "compression follows the destination";
}

TEST_F(Command, DemoBuildsAMovieThatComesBackAsItIs) {
    ExpectRun("vxswf demo a.swf && vxswf copy --raw --plain a.swf b.swf && vxswf copy --raw b.swf c.swf");
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
    ExpectRun("'" + directory + "/build_movie' a.swf");
    EXPECT_EQ(ReadFile(At("a.swf"))[0], 'C');
    EXPECT_EQ(Run("'" + directory + "/load_and_list' a.swf").out.substr(0, 41),
              "320 x 240 pixels, 24 frames, 24 a second\n");
    ExpectRun("'" + directory + "/merge_movies' a.swf a.swf b.swf");
    EXPECT_EQ(Run("vxswf info b.swf" + kTypes).out.substr(0, 50),
              "(69)(9)(32)(26)wDepth=1(32)(39)(26)wDepth=101(1)(1");
}

}  // namespace
