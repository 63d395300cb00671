#include "support/Test.h"

namespace {

/// A frame: its header, and zeros up to `size` bytes in all.
Bytes Frame(std::string_view header, std::size_t size) {
    Bytes frame = Hex(header);
    frame.resize(size);
    return frame;
}

std::int64_t Find(const Bytes& data, std::int64_t start) {
    CVXStreamReadWrite stream(data.data(), data.size());
    VXSwfMP3FrameHeader header;
    return VXSwfMP3Info(&stream).FindFrameHeader(start, header);
}

unsigned int LengthOf(std::string_view bytes) {
    VXSwfMP3FrameHeader header;
    header.Unpack(Hex(bytes).data());
    return header.GetFrameLength();
}

unsigned int SizeOf(const Bytes& bytes) {
    return VXSwfMP3Info(nullptr).SizeFrame(bytes.data(), static_cast<unsigned int>(bytes.size()));
}

/// Samples by the quick way; 1 when it gives up.
unsigned int Quickly(const Bytes& data) {
    CVXStreamReadWrite stream(data.data(), data.size());
    unsigned int samples = 1;
    const bool isMeasured = VXSwfMP3Info(&stream).MeasureQuickly(samples);
    EXPECT_EQ(isMeasured, samples != 1);
    return samples;
}

unsigned int Slowly(const Bytes& data) {
    CVXStreamReadWrite stream(data.data(), data.size());
    return VXSwfMP3Info(&stream).MeasureSlowly();
}

TEST(VXSwfMP3FrameHeader, UnpacksFromTheTopBit) {
    VXSwfMP3FrameHeader header;
    header.Unpack(Bits("11111111111 10 01 0 1001 01 1 0  10 01 1 0 11").data());
    const std::vector<unsigned int> fields = {
        header.Sync,         header.VersionId,       header.LayerBits, header.Protection,
        header.BitrateIndex, header.SampleRateIndex, header.Padding,   header.Private,
        header.ChannelMode,  header.ModeExtension,   header.RightsBit, header.SourceBit,
        header.Emphasis};
    EXPECT_EQ(fields, (std::vector<unsigned int>{2047, 2, 1, 0, 9, 1, 1, 0, 2, 1, 1, 0, 3}));
}

TEST(VXSwfMP3Info, MeasuresAFrameInTwoWays) {
    const struct {
        const char* header;
        unsigned int length;  // the distance to the next frame
        unsigned int size;    // the bytes of this one, without its padding
    } rows[] = {
        {"FFFB9000", 417, 417},  // MPEG-1 III, 128 kbit/s, 44100 Hz
        {"FFFB9200", 418, 417},  // padded
        {"FFFD8000", 417, 417},  // MPEG-1 II, 128 kbit/s
        {"FFFF4200", 140, 136},  // MPEG-1 I, 128 kbit/s, four bytes of padding
        {"FFF38000", 417, 208},  // MPEG-2 III, 64 kbit/s, 22050 Hz. Kept: the length of two frames
        {"FFF58000", 417, 417},  // MPEG-2 II, 64 kbit/s
        {"FFF74000", 136, 136},  // MPEG-2 I, 64 kbit/s
        {"FFE34800", 576, 288},  // MPEG-2.5 III, 32 kbit/s, 8000 Hz
        {"FFFB0200", 1, 0},      // free format, padded
        {"FFFB9C00", 0, 0},      // no such sample rate
        {"FFF99000", 0, 0},      // no such layer
        {"FFEB9000", 0, 522},    // no such version. Kept: its size is that of MPEG-2.5
        {"FFFBF200", 0, 0},      // no such bit rate
    };
    for (const auto& row : rows) {
        EXPECT_EQ(LengthOf(row.header), row.length) << row.header;
        EXPECT_EQ(SizeOf(Hex(row.header)), row.size) << row.header;
    }
    for (const char* none : {"FFFB90", "FEFB9000", "FFDB9000"}) EXPECT_EQ(SizeOf(Hex(none)), 0u) << none;
}

TEST(VXSwfMP3Info, FindsTheFirstSync) {
    EXPECT_EQ(Find(Hex("FFFB9000 00"), 0), 0);
    EXPECT_EQ(Find(Hex("FFFB9000"), 0), -1) << "four bytes are too few";
    EXPECT_EQ(Find(Hex("FF00 FF FFE0 9000 00"), 0), 2) << "a byte that ends one pair may begin the next";
    EXPECT_EQ(Find(Hex("FFDF 00 FFE0 9000"), 0), -1) << "the last place is the fifth from the end";
    EXPECT_EQ(Find(Hex("FFDF 00 FFE0 9000 00"), 0), 3);
    EXPECT_EQ(Find({}, 0), -1);
    for (const std::size_t at : {65532u, 65533u, 65535u, 65536u}) {
        Bytes data = Repeat(70000, 0);
        data[at] = 0xFF;
        data[at + 1] = 0xE0;
        EXPECT_EQ(Find(data, 0), static_cast<std::int64_t>(at)) << "at a seam of the blocks";
    }
}

TEST(VXSwfMP3Info, FindsNothingFromBehindTheMiddle) {
    for (const std::int64_t start : {-1, 50, 103, 104, 105, 1000})
        EXPECT_EQ(Find(Repeat(104, 0xFF), start), -1);
    EXPECT_EQ(Find(Repeat(104, 0xFF), 49), 49);
    const Bytes late = Join({Repeat(60, 0), Hex("FFFF"), Repeat(42, 0)});
    EXPECT_EQ(Find(late, 39), 60);
    EXPECT_EQ(Find(late, 40), -1) << "60 bytes are left then";
}

TEST(VXSwfMP3Info, SizesTheFreeFormatByItsRepeats) {
    const Bytes frame = Frame("FFFB0000", 300);
    Bytes chance = Repeat(4, frame);
    chance[100] = 0xFF;
    chance[101] = 0xFB;
    const struct {
        const char* what;
        Bytes bytes;
        unsigned int size;
    } rows[] = {
        {"padded by turns", Repeat(3, Join({Frame("FFFB0200", 301), frame})), 300},
        {"the nearest", Repeat(2, Frame("FFFB0000", 24)), 24},
        {"too near, and the next repeat is none", Repeat(2, Frame("FFFB0000", 23)), 0},
        {"the farthest", Repeat(3, Frame("FFFB0000", 1999)), 1999},
        {"too far", Repeat(3, Frame("FFFB0000", 2000)), 0},
        {"a stop at the limit counts", Join({frame, Hex("FFFB00")}), 300},
        {"a chance match does not repeat", chance, 300},
        {"Layer I", Repeat(50, Frame("FFFF0000", 200)), 200},
        {"Kept: its padding of four bytes is taken off as one", Repeat(2, Frame("FFFF0200", 200)), 0},
    };
    for (const auto& row : rows) EXPECT_EQ(SizeOf(row.bytes), row.size) << row.what;
}

TEST(VXSwfMP3Info, MeasuresByTheFirstFrame) {
    const Bytes frame = Frame("FFFB9000", 417);
    EXPECT_EQ(Quickly(Repeat(10, frame)), 11510u) << "11520 less what whole milliseconds drop";
    EXPECT_EQ(Quickly(Repeat(20, Frame("FFE34800", 288))), 11520u) << "MPEG-2.5, 8000 Hz";
    EXPECT_EQ(Quickly(Repeat(100, Frame("FFFF4000", 136))), 115189u)
        << "Kept: Layer I counts 1152 samples too";
    EXPECT_EQ(Quickly(Join({Repeat(4170, 0), Repeat(10, frame)})), 23020u) << "Kept: what stands in front";
    EXPECT_EQ(Quickly(Join({frame, Repeat(10, Frame("FFFBE000", 1044))})), 29943u)
        << "Kept: a variable bit rate";
    EXPECT_EQ(Quickly(Repeat(10000, frame)), 11519978u) << "more than 97 seconds";
    EXPECT_EQ(Quickly(Repeat(10, Frame("FFFB0000", 300))), 11510u) << "the free format";
}

TEST(VXSwfMP3Info, SearchesBlocksOf1441Bytes) {
    const Bytes frames = Join({Frame("FFFBE000", 1044), Repeat(10, Frame("FFFB9000", 417))});
    const auto behind = [&frames](std::size_t at) { return Quickly(Join({Repeat(at, 0), frames})); };
    EXPECT_EQ(behind(1437), 6879u) << "the first frame";
    EXPECT_EQ(behind(1438), 17243u) << "its header is cut, so the second one counts";
    EXPECT_EQ(behind(1440), 6879u) << "its sync is cut, so it is looked at again";
    EXPECT_EQ(behind(1441), 6879u);
    EXPECT_EQ(behind(100000), 115189u) << "blocks without a sync are no attempts";
    EXPECT_EQ(Quickly(Repeat(100000, 0)), 1u);
    EXPECT_EQ(Quickly(Repeat(3, Frame("FFFB9000", 417))), 1u) << "shorter than a block";
}

TEST(VXSwfMP3Info, GivesUpBehind32BlocksWithoutAFrame) {
    const Bytes broken = Frame("FFFBF000", 1441);
    const Bytes block = Frame("FFFB9000", 1441);
    EXPECT_EQ(Quickly(Join({Repeat(31, broken), block})), 126699u);
    EXPECT_EQ(Quickly(Join({Repeat(32, broken), block})), 1u);
    const Bytes second = Frame("FFFBE000", 1000);
    EXPECT_EQ(Quickly(Join({Frame("FFFBF000", 441), second, block})), 6879u)
        << "nothing else of a block is tried";
    EXPECT_EQ(Quickly(Join({broken, second})), 1u) << "the next block is cut";
}

TEST(VXSwfMP3Info, MeasuresSlowlyToTheMiddle) {
    EXPECT_EQ(Slowly(Repeat(10, Frame("FFFB9000", 417))), 5 * 1152u);
    EXPECT_EQ(Slowly(Repeat(11, Frame("FFFB9000", 417))), 6 * 1152u);
    EXPECT_EQ(Slowly(Repeat(10, Frame("FFFF4000", 136))), 5 * 384u);
    EXPECT_EQ(Slowly(Repeat(12, Frame("FFF38000", 208))), 3 * 1152u)
        << "MPEG-2: each length spans two frames";
    EXPECT_EQ(Slowly(Repeat(3000, 0xFF)), 0u) << "no bit rate and no sample rate";
    EXPECT_EQ(Slowly(Join({Hex("FFEB9000 FFF99000"), Frame("FFFB9000", 417), Repeat(1000, 0)})), 1152u);
}

TEST(VXSwfMP3Info, ReadsTheXingHeader) {
    VXSwfMP3Info info(nullptr);
    const auto read = [&info](const Bytes& block) {
        return info.ReadXingInfo(block.data(), static_cast<unsigned int>(block.size())) != 0;
    };
    const Bytes whole = Join({Frame("FFFB9000", 36), Hex("58696E67 0000000F 00000102 00000304"),
                              Repeat(100, 0x55), Hex("0000004E")});
    for (std::size_t size = 0; size < whole.size(); ++size) EXPECT_FALSE(read(Head(whole, size))) << size;
    EXPECT_EQ(info.XingInfo, nullptr);
    ASSERT_TRUE(read(whole));
    EXPECT_EQ(info.XingInfo->Flags, 15u);
    EXPECT_EQ(info.XingInfo->Frames, 0x102u);
    EXPECT_EQ(info.XingInfo->Toc[99], 0x55);
    EXPECT_EQ(info.XingInfo->VbrScale, 78);
    EXPECT_EQ(info.XingInfo->IsMpeg1, 1);
    const struct {
        const char* header;
        std::size_t offset;
        unsigned int rate;
    } rows[] = {
        {"FFFB90C0", 21, 44100}, {"FFF39000", 21, 22050}, {"FFF398C0", 13, 16000}, {"FFFB9C00", 36, 0}};
    for (const auto& row : rows) {
        EXPECT_FALSE(read(Join({Frame(row.header, row.offset + 1), Hex("58696E67 00000000")}))) << row.header;
        ASSERT_TRUE(read(Join({Frame(row.header, row.offset), Hex("58696E67 00000002 00000304")})))
            << row.header;
        EXPECT_EQ(info.XingInfo->Frames, 0u);
        EXPECT_EQ(info.XingInfo->Bytes, 0x304u);
        EXPECT_EQ(info.XingInfo->VbrScale, -1);
        EXPECT_EQ(info.XingInfo->SampleRate, row.rate);
    }
}

}  // namespace
