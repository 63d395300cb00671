#include <png.h>
#include <sys/wait.h>
#include <unistd.h>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "support/Test.h"

namespace {

using ::testing::HasSubstr;
using ::testing::MatchesRegex;
namespace fs = std::filesystem;

template <typename Sequence = Bytes>
Sequence ReadFile(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file) << path;
    return Sequence(std::istreambuf_iterator<char>(file), {});
}

Bytes Asset(const char* name) { return ReadFile(fs::path(VXSWF_ASSETS) / name); }

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
    return MovieBytes(8, Join({TagBytes(60, Hex("01 00 EE")), TagBytes(26, placement), TagBytes(1, {})}));
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
    /// `line` is for the shell; `vxswf` is the command, `$A` the directory of its assets.
    Result Run(const std::string& line) const {
        std::ofstream(m_Directory / "run")
            << "A='" VXSWF_ASSETS "'; vxswf() { '" VXSWF_COMMAND "' \"$@\"; }\n"
            << line << '\n';
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
              "bad.swf: is not an SWF movie\nvxswf: gone.swf: No such file or directory");
    EXPECT_EQ(ReadFile<std::string>(At("out")),
              "a.swf: FWS, version 8, length 128, frame (0, 0) to (100, 50) pixels, rate 12, frames 1\n"
              "     0 short          4  TAG_FILEATTRIBUTES(69)\n"
              "     1 long           3  TAG_PROTECT(24)\n"
              "     2 long           8  TAG_DEFINESPRITE(39) - Id=7\n"
              "         0 short          0  TAG_SHOWFRAME(1)\n"
              "     3 long          70  Unknown(777)\n"
              "     4 short          0  TAG_SHOWFRAME(1)\n"
              "a.swf: 1 frames, 1 characters, 107 bytes of tags: control 95, sprites 12\n");
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
        "\"xMax\":100.0,\"yMin\":0.0,\"yMax\":50.0},\"frameRate\":12,\"frameCount\":1,\"summary\":{"
        "\"frames\":1,\"characters\":1,\"bytes\":{\"control\":95,\"sprites\":12}}");
    EXPECT_EQ(a["tags"].size(), 5u);
    EXPECT_EQ(a["tags"][2]["tags"].dump(),
              "[{\"index\":0,\"type\":1,\"header\":\"short\",\"length\":0,\"text\":\"TAG_SHOWFRAME(1)\","
              "\"frame\":1,\"typeName\":\"ShowFrame\"}]");
    EXPECT_EQ(nlohmann::json::parse(second)["file"], "b\n\xEF\xBF\xBD.swf") << "a byte that is not UTF-8";
}

TEST_F(Command, InfoTellsFieldsAndTheTree) {
    const Bytes place = TagBytes(26, Hex("66 05 00 07 00 00 6E 00 09 00"));  // sprite 7 as n, clips up to 9
    const Bytes exports = TagBytes(56, Hex("01 00 07 00 65 00"));
    const Bytes shape = TagBytes(2, Hex("02 00 48 01 EC 00 00 00 00 00 00"));  // from 0 to 4.92 and 0
    const Bytes sprite = LongTagBytes(
        39, Join({Hex("07 00 01 00"), TagBytes(4, Hex("02 00 01 00")), TagBytes(1, {}), TagBytes(0, {})}));
    Write("t.swf", MovieBytes(8, Join({shape, sprite, exports, TagBytes(43, Hex("6C 00")), place, place,
                                       TagBytes(1, {}), TagBytes(87, Hex("03 00 00 00 00 00"))})));
    const auto tags = nlohmann::ordered_json::parse(Run("vxswf info --raw --json t.swf").out)["tags"];
    EXPECT_EQ(tags[0]["id"], 2);
    EXPECT_EQ(tags[1]["tags"][0]["character"], 2);
    EXPECT_EQ(tags[2]["exports"].dump(), "[{\"id\":7,\"name\":\"e\"}]");
    EXPECT_EQ(tags[3]["label"], "l");
    EXPECT_THAT(tags[4].dump(), HasSubstr("\"depth\":5,\"character\":7,\"name\":\"n\",\"clipDepth\":9}"));
    EXPECT_EQ(tags[7]["frame"], 2);
    EXPECT_THAT(Run("vxswf info --raw --tree t.swf").out,
                HasSubstr("\nframe 1 \"l\"\n"
                          "  depth 5 \"n\": DefineSprite(39) 7 \"e\", used by frame 1 of the movie\n"
                          "    frame 1\n"
                          "      depth 1: DefineShape(2) 2, used by frame 1 of DefineSprite(39) 7\n"
                          "  depth 5 \"n\": DefineSprite(39) 7, see above\n"
                          "not on the timeline\n"
                          "  DefineBinaryData(87) 3\n"));
}

TEST_F(Command, ErrorsSayWhatIsWrongAndWhere) {
    Write("short.swf", Head(Movie(), 60));
    Write("z.swf", Hex("5A 57 53 0D"));
    Write("bad.swf", MovieBytes(8, Join({TagBytes(1, {}), TagBytes(2, Hex("02 00"))})));
    ExpectRuns({{"vxswf copy --compress a.swf c.swf && head -c 50 c.swf >cut.swf"},
                {"vxswf info short.swf >out", 0, "short.swf: ends at byte 60 of the 128 that .+"},
                {"vxswf copy short.swf o.swf", 1, "short.swf: ends at byte 60 of the 128 that .+"},
                {"vxswf copy --keep-going short.swf o.swf; cmp short.swf o.swf", 0, "short.swf: ends .+"},
                {"vxswf copy --parsed --keep-going short.swf o.swf", 0, "short.swf: ends .+"},
                {"vxswf copy --keep-going cut.swf p.swf", 0, "cut.swf: ends at byte .+"},
                {"vxswf copy --parsed --keep-going p.swf p.swf", 0, "p.swf: ends at byte .+"},
                {"vxswf info o.swf p.swf | grep -c SPRITE | grep -q 2"},
                {"vxswf info z.swf", 1, "z.swf: is compressed with LZMA \\(ZWS\\), which .+"},
                {"vxswf info bad.swf", 1, "bad.swf: is damaged inside tag 1, DefineShape\\(2\\), at byte 21"},
                {"vxswf extrat", 2, "extrat is no command, the nearest is extract; .+"}});
}

TEST_F(Command, ExtractTakesOutWhatMoviesHold) {
    const auto deflated = [](const char* digits) { return Deflated(Hex(digits), 6); };
    const Bytes alpha = Deflated(Repeat(96 * 64, 128), 9), photo = Asset("photo.jpg");
    // A pool with "a", a jump over a stop, f(x) that pops, "a" and −2.
    const Bytes actions =
        Hex("88 0400 0100 6100 99 0200 0100 07 9B 0800 6600 0100 7800 0100 17"
            "96 0700 0800 07 FEFFFFFF 00");
    const char* const listing =
        "    ConstantPool \"a\"\n    Jump L13\n    Stop\nL13:\n    DefineFunction \"f\" (\"x\")\n"
        "        Pop\n    end\n    Push \"a\" -2\n";
    const Bytes stream = Join({TagBytes(18, Hex("00 20 02 00 00 00")), TagBytes(19, Hex("02 00 00 00 FF FB")),
                               TagBytes(19, Hex("02 00 00 00 12"))});
    const Bytes tags = Join({
        TagBytes(8, Hex("FFD8 FFDB0003AA FFD9")),
        TagBytes(6, Hex("0100 FFD9FFD8 FFC00003BB FFDA0003CC 11FF00FFD033 FFD9 99")),
        TagBytes(20, Join({Hex("0200 03 0200 0200 01"), deflated("0A0B0C 0D0E0F 0001 0000 0101 0000")})),
        TagBytes(20, Join({Hex("0300 04 0100 0100"), deflated("7C1F 0000")})),
        TagBytes(36, Join({Hex("0400 05 0100 0200"), deflated("80402010 00000000")})),
        LongTagBytes(35, Join({Hex("0500"), Word(static_cast<unsigned int>(photo.size())), Hex("0000"), photo,
                               alpha})),
        TagBytes(21, Hex("0600 474946383961 01")), TagBytes(14, Hex("0700 2E 01000000 0000 FFFB90")),
        TagBytes(14, Hex("0800 12 03000000 000000 60")),
        LongTagBytes(39, Join({Hex("0A00 0100"), stream, TagBytes(0, {})})),
        TagBytes(48, Hex("0B00 04 00 01 46 0200 0600 0600 0600 4100 AC20")),
        TagBytes(11, Hex("0C00 00 00 01 08 88 0B00 1400 02 80 00 00 00")),  // glyphs of one bit
        TagBytes(87, Hex("0D00 00000000 ABCD")), TagBytes(12, actions),
        TagBytes(56, Hex("0100 0D00 2E2E2F2E2E2F78 00")),  // "../../x"
    });
    Write("e.swf", MovieBytes(8, tags));
    ExpectRun("vxswf extract e.swf d");
    const std::pair<const char*, Bytes> files[] = {
        {"pictures/1.jpg", Hex("FFD8 FFDB0003AA FFC00003BB FFDA0003CC 11FF00FFD033 FFD9")},
        {"pictures/6.gif", Hex("474946383961 01")},
        {"sounds/7.mp3", Hex("FFFB90")},
        {"sounds/stream-sprite-10.mp3", Hex("FFFB 12")},
        {"texts/12.txt", Hex("E282AC 41")},
        {"binary/13-x.bin", Hex("ABCD")},
        {"scripts/main-frame-1.txt", Bytes(listing, listing + std::strlen(listing))}};
    for (const auto& [name, bytes] : files) EXPECT_EQ(ReadFile(At("d") / name), bytes) << name;
    const Bytes wave = ReadFile(At("d/sounds/8.wav"));
    EXPECT_EQ(Bytes(wave.begin() + 40, wave.end()), Hex("06000000 0000 0A00 0600"));
    const std::pair<const char*, Bytes> pictures[] = {{"2.png", Hex("0A0B0CFF 0D0E0FFF 0D0E0FFF 0D0E0FFF")},
                                                      {"3.png", Hex("FF00FFFF")},
                                                      {"4.png", Hex("80402080 00000000")},
                                                      {"5.png", {128}}};
    for (const auto& [name, pixels] : pictures) {
        png_image image = {};
        image.version = PNG_IMAGE_VERSION;
        ASSERT_NE(png_image_begin_read_from_file(&image, (At("d/pictures") / name).c_str()), 0) << name;
        image.format = PNG_FORMAT_RGBA;
        Bytes read(PNG_IMAGE_SIZE(image));
        ASSERT_NE(png_image_finish_read(&image, nullptr, read.data(), 0, nullptr), 0) << name;
        if (read.size() > 16) read = {read.back()};  // an alpha for all
        EXPECT_EQ(read, pixels) << name;
    }
    EXPECT_EQ(nlohmann::json::parse(ReadFile<std::string>(At("d/index.json")))["items"].size(), 13u);
    EXPECT_THAT(ReadFile<std::string>(At("d/index.html")), HasSubstr("src=\"sounds/7.mp3\""));
    ExpectRuns(
        {{"vxswf extract --only texts,fonts e.swf t && [[ $(ls t) == $'index.html\\nindex.json\\ntexts' ]]"},
         {"mkdir l; ln -s .. l/binary; vxswf extract --only binary e.swf l", 2,
          "l/binary/.+: Not a directory"}});
}

TEST_F(Command, CopyKeepsOrChangesTheSignatureAndParsedTheRest) {
    const Bytes sounds = Repeat(10, 0);                                      // of a button, none
    Write("b.swf", MovieBytes(8, TagBytes(17, Join({sounds, Hex("FF")}))));  // a byte too many
    ExpectRuns({{"vxswf copy a.swf same.swf && vxswf copy --compress a.swf c.swf && vxswf copy c.swf c2.swf"},
                {"vxswf copy --level 0 --compress a.swf 0.swf && vxswf copy --parsed --plain 0.swf p.swf"},
                {"vxswf copy b.swf w.swf && cmp b.swf w.swf && vxswf copy --parsed b.swf b.swf"}});
    if (VXWholeMovie::HasLzma()) {
        ExpectRuns(
            {{"vxswf copy --lzma c.swf z.swf && vxswf copy z.swf z2.swf && cmp z.swf z2.swf"},
             {"vxswf copy --parsed z.swf o.swf", 1, "z.swf: is compressed with LZMA \\(ZWS\\), which .+"},
             {"vxswf copy --plain z2.swf p.swf"}});
    }
    ExpectMovies({"same.swf", "p.swf"});
    EXPECT_GT(ReadFile(At("0.swf")).size(), Movie().size());
    EXPECT_EQ(ReadFile(At("c.swf"))[0], 'C');
    EXPECT_LT(ReadFile(At("c.swf")).size(), Movie().size());
    EXPECT_EQ(ReadFile(At("c2.swf")), ReadFile(At("c.swf")));
    EXPECT_EQ(ReadFile(At("b.swf")), MovieBytes(8, TagBytes(17, sounds)));
}

TEST_F(Command, CopyFillsADirectory) {
    fs::create_directory(At("out"));
    ExpectRuns({{"cp a.swf b.swf && vxswf copy --compress a.swf b.swf out && vxswf copy --plain out/* ."},
                {"vxswf copy a.swf gone.swf out/b.swf out", 2, "gone.swf: No such file or directory"},
                {"vxswf copy - ./a.swf a.swf out </dev/null", 2,
                 "-: has no name for its result\nvxswf: a.swf: has the name of another one in front of it"},
                {"vxswf copy a.swf b.swf c.swf", 2, "c.swf: is no directory"}});
    ExpectMovies({"a.swf", "b.swf", "out/a.swf"});
    EXPECT_EQ(ReadFile(At("out/b.swf"))[0], 'C');
    EXPECT_EQ(Names(), (std::set<std::string>{"a.swf", "b.swf", "out"}));
}

TEST_F(Command, CopyKeepsModesAndWritesThroughLinks) {
    ExpectRuns(
        {{"chmod 640 a.swf; vxswf copy --compress a.swf a.swf && vxswf copy --plain a.swf a.swf"},
         {"TMPDIR=/nonexistent vxswf copy --compress a.swf c.swf && vxswf copy --plain c.swf c.swf"},
         {"umask 027; vxswf copy a.swf new.swf; [[ $(stat -c %a a.swf new.swf | xargs) == '640 640' ]]"},
         {"mkdir sub; echo >old.swf; ln -s ../old.swf sub/link; ln -s sub/link twice; ln -s sub/new "
          "dangling"},
         {"vxswf copy a.swf twice && vxswf copy a.swf dangling"},
         {"[[ -L twice && -L sub/link && -L dangling ]]"}});
    ExpectMovies({"a.swf", "c.swf", "new.swf", "old.swf", "sub/new"});
}

TEST_F(Command, NamesOfOthersOwnersAndDevicesAreKept) {
    ExpectRuns({{"ln a.swf b.swf; vxswf copy --plain a.swf b.swf", 0, "b.swf: has other names, .+"},
                {"for n in stdout fd/1 ../proc/self/fd/1; do vxswf copy a.swf /dev/$n; done >>all.swf"},
                {"cat a.swf a.swf a.swf | cmp - all.swf >&2"},
                {"ln -s /dev/stdout out; vxswf copy a.swf out >c.swf && [[ -L out ]]"}});
    ExpectMovies({"a.swf", "b.swf", "c.swf"});
    if (geteuid() == 0) {
        ExpectRun(
            "chown nobody:nogroup a.swf; chmod 4640 a.swf; vxswf copy a.swf a.swf;"
            "[[ $(stat -c %U:%G:%a a.swf) == nobody:nogroup:4640 ]]");
    }
}

TEST_F(Command, ASignalLeavesNoTemporaryFile) {
    Write("large.swf", MovieBytes(8, LongTagBytes(777, Noise(1 << 24))));
    ExpectRun(R"(set -m; exec 3>&2 2>/dev/null
        for signal in INT TERM HUP; do
            ')" VXSWF_COMMAND R"(' copy --compress large.swf out.swf &
            until compgen -G '.vxswf-*' >/dev/null || ! kill -0 $!; do sleep 0.01; done
            kill -$signal $!; wait $!
            (($? > 128)) || echo "not ended by $signal" >&3
        done)");
    EXPECT_EQ(Names(), (std::set<std::string>{"a.swf", "large.swf"}));
}

TEST_F(Command, TextOfOthersDoesNotReachTheTerminal) {
    Write("b.swf", MovieBytes(8, TagBytes(26, Hex("22 01 00 00 00 6E C2 9B 7F E2 80 AE C3 A4 00"))));
    EXPECT_THAT(Run("vxswf info b.swf").out, HasSubstr("n\\u009B\\x7F\\u202Eä"));
    EXPECT_THAT(Run("vxswf info --json b.swf").out, HasSubstr("n\\u009b\\u007f\\u202e\\u00e4"));
    EXPECT_THAT(Run("vxswf info $'\\x9B\\u2066ä\\xE0\\x80'").err,
                HasSubstr(": \\x9B\\u2066ä\\xE0\\x80: No such file"));
    EXPECT_THAT(Run("vxswf info $'--\\x1B]0;' a.swf").err, HasSubstr("--\\x1B]0;"));
}

TEST_F(Command, StandardStreamsAndPipes) {
    ExpectRuns(
        {{"cat a.swf | vxswf copy --compress - - | vxswf copy --plain - b.swf"},
         {"vxswf copy <(cat a.swf) >(cat >c.swf); status=$?; wait $!; exit $status"},
         {"vxswf info - < /dev/null", 1, "-: is not an SWF movie"},
         {"vxswf info /dev/zero", 1, "/dev/zero: is not an SWF movie"},
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

TEST_F(Command, HelpManualAndCompletionKnowTheSameOptions) {
    // What one of them lacks is written to standard error.
    ExpectRun(R"(. "$A/../completion/vxswf.bash"
        for c in '' info extract copy merge demo; do
            COMP_WORDS=(vxswf $c --) COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _vxswf
            help=$(vxswf $c --help | sed -En 's/^  (-h,)?(--[a-z0-9-]+).*/\2/p')
            diff <(sort <<<"$help") <(printf '%s\n' "${COMPREPLY[@]}" | sort) >&2
            for o in $help; do grep -qF -- "${o//-/\\-}" "$A/../vxswf.1" || echo "$c $o" >&2; done
            [[ -z $c ]] || vxswf $c --help | grep -q '^Examples:' || echo "$c has no examples" >&2
        done)");
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
        {{"vxswf copy cut.swf old.swf", 1, "cut.swf: ends at byte 8 of the 65535 .+"},
         {"vxswf copy . old.swf", 2, "\\.: Is a directory"},
         {"ulimit -f 100; vxswf copy large.swf old.swf", 2, "old.swf: File too large"},
         {"ulimit -f 100; vxswf copy --parsed --compress large.swf old.swf", 2,
          "old.swf: .+: File too large"},
         {"vxswf copy a.swf gone/new.swf", 2, "gone/new.swf: No such file or directory"},
         {"vxswf merge --frame 2 d.swf d.swf old.swf", 2, "d.swf: has no frame 2"},
         {"vxswf merge --depth 5 d.swf d.swf old.swf", 2, "d.swf: has something at depth 5"},
         {"vxswf merge full.swf d.swf old.swf", 1, "d.swf: no depth is left above all others"},
         {"vxswf merge --parsed full.swf d.swf old.swf", 2, "full.swf: has no depth left above its own"},
         {"vxswf merge d.swf d.swf cut.swf new.swf", 1, "cut.swf: ends at byte 8 of the 65535 .+"},
         {"vxswf demo --png old.swf old.swf", 2, "old.swf: is no PNG: .+"}});
    EXPECT_EQ(ReadFile(At("old.swf")), old);
    EXPECT_EQ(Names(), names);
}

TEST_F(Command, MergePlacesEachSourceOnTop) {
    Write("d.swf", MovieOfDepth(5));
    Write("s.swf", MovieOfDepth(1));
    for (const auto& [line, tags] :
         {std::pair("d.swf s.swf o.swf", "(60)(39)(26)wDepth=1(1)(26)wDepth=6(60)(26)wDepth=5(1)"),
          std::pair("--depth 9 d.swf s.swf:n@1,2 o.swf",
                    "(60)(39)(26)wDepth=1(1)(26)wDepth=9(60)(26)wDepth=5(1)"),
          std::pair("--parsed --name n --at -5,10 d.swf s.swf d.swf o.swf",
                    "(60)(26)wDepth=5(60)(39)(26)wDepth=101(1)(26)wDepth=6(60)(39)(26)wDepth=105(1)(26)"
                    "wDepth=7(1)")}) {
        const Result result = Run("vxswf merge " + std::string(line) + " && vxswf info o.swf" + kTypes);
        EXPECT_EQ(result.out, tags) << result.err;
    }
    ExpectRun("vxswf copy --compress d.swf d.swf && vxswf merge d.swf s.swf d.swf");
    EXPECT_EQ(ReadFile(At("d.swf"))[0], 'C') << "compression follows the destination";
}

#ifdef VX_HAVE_TYPE_ENGINE  // without fonts there is no such movie

TEST_F(Command, DemoHasATagOfEveryClassAndComesBackAsItIs) {
    ExpectRun("vxswf demo - >d.swf && vxswf copy --plain d.swf r.swf && vxswf copy --parsed r.swf p.swf");
    EXPECT_EQ(ReadFile(At("d.swf"))[0], 'C');
    // What this library writes is what it would write again, but for where five buttons have their
    // conditions.
    EXPECT_EQ(Run("cmp -l r.swf p.swf | wc -l").out, "5\n");
    const std::string info = Run("vxswf info d.swf" + kTypes).out;
    for (const int type : {1,  2,  3,  9,  11, 12, 14, 15, 17, 21, 22, 26, 28, 32, 33,  34,  35,  36, 37,
                           39, 43, 56, 59, 64, 69, 70, 74, 75, 76, 82, 83, 87, 88, 996, 997, 998, 999})
        EXPECT_NE(info.find("(" + std::to_string(type) + ")"), std::string::npos) << type;
}

TEST_F(Command, DemoTakesOtherAssets) {
    ExpectRun("vxswf demo built-in.swf");
    const Bytes builtIn = ReadFile(At("built-in.swf"));
    const Bytes id3 = Hex("49 44 33 03 00 00 00 00 00 04 FF E0 FF FB");  // four bytes that look like frames
    Write("id3.mp3", Join({id3, Asset("chime.mp3")}));
    ExpectRun("vxswf demo --jpeg \"$A\"/photo.jpg --png \"$A\"/rings.png --mp3 id3.mp3 d.swf");
    EXPECT_EQ(ReadFile(At("d.swf")), builtIn);

    Bytes tall = Asset("photo.jpg");
    tall[164] = 96;  // lines, as the header has it
    Write("tall.jpg", tall);
    Write("dot.png",
          Hex("89504E470D0A1A0A 0000000D 49484452 00000001 00000001 08 00 00 00 00 3A7E9B55"  // 1 × 1, grey
              "0000000A 49444154 789C6368000000820081 77CD72B6 00000000 49454E44 AE426082"));
    for (const char* option : {"--jpeg tall.jpg", "--png dot.png", "--font 'DejaVu Sans Mono'"}) {
        ExpectRun("vxswf demo " + std::string(option) + " d.swf && vxswf info d.swf >/dev/null");
        EXPECT_NE(ReadFile(At("d.swf")), builtIn) << option;
    }
}

#endif

TEST_F(Command, DemoRefusesWhatIsNotWhatItClaims) {
    const Bytes jpeg = Asset("photo.jpg"), png = Asset("rings.png"), mp3 = Asset("chime.mp3");
    const auto patch = [](Bytes bytes, std::size_t offset, const char* digits) {
        const Bytes inserted = Hex(digits);
        std::copy(inserted.begin(), inserted.end(), bytes.begin() + static_cast<std::ptrdiff_t>(offset));
        return bytes;
    };
    const struct {
        const char* option;
        Bytes bytes;
        const char* error;
    } rows[] = {
        {"png", {}, "is empty"},
        {"png", jpeg, "is no PNG: .+"},
        {"png", Head(png, 600), "is a damaged PNG: .+"},
        {"png", patch(png, 18, "20 00 00 00 00 01 08 00 00 00 00 53 20 7F BC"), "has 8192 x 1 pixels, .+"},
        {"jpeg", Head(jpeg, 160), "is no JPEG: .+"},
        {"jpeg", patch(jpeg, 163, "10 00 10 00"), "has 4096 x 4096 pixels, .+"},
        {"jpeg", patch(jpeg, 159, "C9"), "is a JPEG that players do not show: .+"},
        {"mp3", Head(mp3, 4), "is no MP3: .+"},
        {"mp3", Hex("49 44 33 03 00 00 7F 7F 7F 7F"), "is no MP3: .+"},
        {"mp3", patch(mp3, 1, "FB 94"), "has 48000 samples a second, .+"},
    };
    for (const auto& [option, bytes, error] : rows) {
        Write("x", bytes);
        ExpectRun("vxswf demo --" + std::string(option) + " x d.swf", 2, "x: (" + std::string(error) + ")");
    }
    ExpectRuns({{"vxswf demo --jpeg /dev/zero d.swf", 2, "/dev/zero: is larger than 67108864 bytes"},
                {"vxswf demo --mp3 gone d.swf", 2, "gone: No such file or directory"},
                {"vxswf demo --font 'No Such Font' d.swf", 2, "No Such Font: no font has this name; .+"}});
    EXPECT_EQ(Names(), (std::set<std::string>{"a.swf", "x"}));
}

#ifdef VX_HAVE_TYPE_ENGINE
TEST_F(Command, ExamplesRun) {
    const std::string at = "PATH='" VXSWF_EXAMPLES "'; ";
    ExpectRun(at + "build_movie a.swf && merge_movies a.swf a.swf b.swf");
    EXPECT_EQ(Run(at + "load_and_list a.swf").out.substr(0, 40), "320 x 240 pixels, 2 frames, 24 a second\n");
    ExpectRun(at + "load_and_list b.swf | /bin/grep -q 'TAG_DEFINESPRITE(39) - Id=11'");
}
#endif

}  // namespace
