#include "support/Test.h"

namespace {

std::string Spaces(std::size_t count) { return std::string(count, ' '); }

Bytes Written(const VXActionWriter& script) {
    VXFlintActionRecords actions;
    EXPECT_EQ(script.AddTo(actions), kVXSuccess) << script.GetErrorText();
    return BytesOfRecord(actions);
}

TEST(VXActionWriterTest, WritesWhatPlayersRead) {
    EXPECT_EQ(Written(VXActionWriter().Push("hé", 1, -2, 4294967296, 1.5F, true, nullptr, VXUndefined{},
                                            VXRegister{3}, VXConstant{255}, VXConstant{256}, VXString("s"))),
              Hex("96 2F 00  00 68 C3 A9 00  07 01 00 00 00  07 FE FF FF FF  06 00 00 F0 41 00 00 00 00"
                  "06 00 00 F8 3F 00 00 00 00  05 01  02 03  04 03  08 FF  09 00 01  00 73 00  00"));
    EXPECT_EQ(Written(VXActionWriter().CallFunction("f", 1, 2).CallMethod("o", "m")),
              Hex("96 12 00  07 02 00 00 00  07 01 00 00 00  07 02 00 00 00  00 66 00  3D"
                  "96 08 00  07 00 00 00 00  00 6F 00  1C  96 03 00 00 6D 00  52  00"));
    EXPECT_EQ(Written(VXActionWriter()
                          .Label("back")
                          .SetConstants({"a"})
                          .Push(false)
                          .If("on")
                          .Jump("back")
                          .Label("on")
                          .DefineFunction("f", {"x"}, VXActionWriter().Label("on").Jump("on"))),
              Hex("88 04 00 01 00 61 00  96 02 00 05 00  9D 02 00 05 00  99 02 00 EA FF"
                  "9B 08 00 66 00 01 00 78 00 05 00  99 02 00 FB FF  00"));
}

TEST(VXActionWriterTest, SaysWhatCannotBeWritten) {
    const std::string longest(65533, 'x');
    EXPECT_EQ(VXActionWriter().Push(longest).GetErrorText(), "");  // with type and NUL 65535 bytes
    // A jump takes 5 bytes, and an action that pushes a text 5 bytes more than the text.
    EXPECT_EQ(VXActionWriter().Jump("on").Push(Spaces(32762)).Label("on").GetErrorText(), "");
    EXPECT_EQ(VXActionWriter().Label("back").Push(Spaces(32758)).Jump("back").GetErrorText(), "");
    const struct {
        VXActionWriter script;
        const char* error;
    } rows[] = {
        {VXActionWriter().Push(longest + "x"), "the payload of action 150 is longer than 65535 bytes"},
        {VXActionWriter().Do(kVXActionPlay, "x"), "action 6 has no payload"},
        {VXActionWriter().Do(kVXActionEnd), "the end of a script is not written as an action"},
        {VXActionWriter().If("x"), "there is no label \"x\""},
        {VXActionWriter().Label("x").Label("x"), "label \"x\" stands twice"},
        {VXActionWriter().Jump("on").Push(Spaces(32763)).Label("on"),
         "label \"on\" is 32768 bytes away, too far for a jump"},
        {VXActionWriter().Label("back").Push(Spaces(32759)).Jump("back"),
         "label \"back\" is -32769 bytes away, too far for a jump"},
        {VXActionWriter().With(VXActionWriter().Push(Spaces(65530)).Do(kVXActionPop)),
         "a body inside action 148 is longer than 65535 bytes"},
        {VXActionWriter().With(VXActionWriter().Jump("x")), "there is no label \"x\""},
    };
    for (const auto& [script, error] : rows) {
        VXFlintActionRecords actions;
        EXPECT_EQ(script.AddTo(actions), kVXFailure);
        EXPECT_EQ(script.GetErrorText(), error);
        EXPECT_TRUE(actions.empty());
    }
}

TEST(VXActionWriterTest, AnEventStatesItsSize) {
    VXFlintClipActionRecord event;
    event.EventFlags.ClipEventKeyPress = 1;
    EXPECT_EQ(VXActionWriter().Do(kVXActionStop).AddTo(event), kVXSuccess);
    EXPECT_EQ(event.ActionRecordSize, 3u);  // key, action, end
}

}  // namespace
