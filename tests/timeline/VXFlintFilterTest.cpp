#include "support/Test.h"

namespace {

TEST(VXFlintFilterShadow, WritesEachField) {
    EXPECT_EQ(BytesOfRecord(VXFlintFilterShadow()), Hex("00 00 00 00 FF"           // black
                                                        "00 00 03 00 00 00 03 00"  // 3 pixels
                                                        "0F C9 00 00"              // 45° as radians
                                                        "00 00 0A 00 FF 00"        // 10 pixels, strength
                                                        "21"));                    // the object too, 1 pass
    const VXFlintFilterShadow filter(VXColor(0x80112233), 1, 2, -90, 4, 0x10006, true, true, false, 31);
    EXPECT_EQ(BytesOfRecord(filter), Hex("00 11 22 33 FF"           // the alpha of 0x80 does not come along
                                         "00 00 01 00 00 00 02 00"  //
                                         "00 00 FF FF"        // the fraction of a negative number is lost
                                         "00 00 04 00 06 00"  // strength cut to 16 bits
                                         "DF"));
    VXFlintFilterShadow tooMany;
    tooMany.Passes = 33;
    EXPECT_EQ(BytesOfRecord(tooMany).back(), 0x41) << "what does not fit spoils the flags";
    for (std::size_t room = 0; room < 5; ++room) {
        Bytes buffer(room);
        VXBitStream out = StreamOver(buffer);
        EXPECT_NE(filter.DumpToStream(out), kVXSuccess) << room;
    }
}

TEST(VXFlintFilterShadow, LivesInAHostsStream) {
    VXFlintFilterShadow filter(VXColor(0x80112233), 1, 2, 3, 4, 5, true, false, true, 6);
    CVXStreamReadWrite stream;
    stream.SetMode(IVXStream::kWrite);
    EXPECT_EQ(filter.WriteToStream(&stream), kVXSuccess);
    EXPECT_EQ(BytesOf(stream),
              Hex("33 22 11 80  01 00 00 00  02 00 00 00  03 00 00 00  04 00 00 00  05 00 00 00"
                  "01 00 01  06 00 00 00"));
    EXPECT_EQ(filter.GetStreamTransferSize(), 38) << "whatever the transfers take";
    stream.SetMode(IVXStream::kRead);
    stream.Seek(0, kVXSeekFromStart);
    VXFlintFilterShadow read;
    EXPECT_EQ(read.ReadFromStream(&stream), kVXSuccess);
    EXPECT_EQ(read.Color.GetColorAsUI(), 0x80112233u);
    EXPECT_EQ(BytesOfRecord(read), BytesOfRecord(filter));
    EXPECT_EQ(read.ReadFromStream(&stream), kVXSuccess) << "at the end";
    EXPECT_EQ(BytesOfRecord(read), BytesOfRecord(filter)) << "nothing was read";
    EXPECT_EQ(filter.WriteToStream(nullptr), kVXFailure);
    EXPECT_EQ(filter.ReadFromStream(nullptr), kVXFailure);
}

}  // namespace
