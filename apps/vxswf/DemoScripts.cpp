#include <iterator>

#include "DemoPages.h"

namespace {

/// An empty program of version 3: one method that returns, and a script that begins with it.
constexpr unsigned char kByteCode[] = {
    16, 0,    46, 0,           // version 46.16
    0,  0,    0,  0, 0, 0, 0,  // no constants
    1,  0,    0,  0, 0,        // a method without arguments, type, name and flags
    0,  0,                     // neither metadata nor classes
    1,  0,    0,               // the script: method 0, no traits
    1,  0,    1,  1, 0, 1,     // the body of method 0: stack, locals, scopes
    1,  0x47, 0,  0,           // one instruction, to return; no exceptions and traits
};

/// A line of text, and a field that shows a variable.
void AddVariable(DemoStage& stage, const char* caption, const char* variable, double top) {
    stage.Write(caption, 20, top + 4, {.size = 14, .widest = 190});
    VXSwfDefineEditTextTag& field = stage.DefineField(190, 26);
    field.SetVariable(variable);
    field.SetReadOnly(1);
    field.SetText("no script has run");
    stage.Place(field, 220, top);
}

VXActionWriter SetVariable(const char* name, const char* value) {
    return VXActionWriter().Push(name).Push(value).Do(kVXActionSetVariable);
}

/// Scripts of three kinds, each of which sets a variable.
void AddScripts(DemoStage& stage) {
    AddVariable(stage, "A script of this frame:", "fromFrame", 70);
    stage.GetBuilder().AddScript(SetVariable("fromFrame", "set by the frame"));

    AddVariable(stage, "A call that was inserted:", "fromCall", 116);
    const VXActionWriter body = VXActionWriter()
                                    .Push("fromCall")
                                    .Push("called with ")
                                    .Push("number")
                                    .Do(kVXActionGetVariable)
                                    .Do(kVXActionAdd2)
                                    .Do(kVXActionSetVariable);
    stage.GetBuilder().AddScript(
        VXActionWriter().DefineFunction("tell", {"number"}, body).CallFunction("tell", 8).Do(kVXActionPop));

    AddVariable(stage, "A sprite's first script:", "fromSprite", 162);
    auto& first = stage.GetBuilder().Add<TAG_DOINITACTION>();
    VXIgnore(first.SetSpriteReferenceID(stage.GetBadge().GetCharacterId()));               // always good
    VXIgnore(SetVariable("fromSprite", "set by the badge").AddTo(first.m_ActionRecords));  // short
}

/// A frame in which a script attaches what is known to it by its exported name alone.
void AddExport(DemoStage& stage) {
    VXIgnore(stage.GetBuilder().Add<TAG_EXPORTASSETS>().AddCharacterIdnName(stage.GetBadge().GetCharacterId(),
                                                                            "badge"));  // the first of few
    VXSwfDefineShapeTag& outline = stage.GetBuilder().Define<TAG_DEFINESHAPE4>();
    outline.SetLineStyle(Rgba(kNavy), 1, 0, kVXStrokeSolid, 1, kVXJoinMiter);
    outline.StartPath(-60, -40, 1);
    outline.AddStraightEdge(-60, -40, 60, -40);
    outline.AddStraightEdge(60, -40, 60, 40);
    outline.AddStraightEdge(60, 40, -60, 40);
    outline.EndPath();
    outline.EndShape();
    outline.SetBounds({-60, -40, 60, 40}, 1);
    auto& holder = stage.GetBuilder().Define<TAG_DEFINESPRITE>();
    holder.PlaceObject(&outline, -1, "", 0, 0, 0, {});
    holder.IncludeShowFrameTags(1, -1);
    stage.Place(holder, 530, 128, {}, "holder");
    stage.Write("The frame holds a badge,", 460, 180, {.widest = 160});
    stage.Write("attached by its export name", 460, 196, {.widest = 160});
    constexpr int kDepth = 1;
    constexpr int kNumArguments = 3;
    stage.GetBuilder().AddScript(VXActionWriter()
                                     .Push(kDepth)
                                     .Push("attached")
                                     .Push("badge")
                                     .Push(kNumArguments)
                                     .Push("holder")
                                     .Do(kVXActionGetVariable)
                                     .Push("attachMovie")
                                     .Do(kVXActionCallMethod)
                                     .Do(kVXActionPop));
}

template <enuTagType... Types>
void AddSpecials(DemoStage& stage) {
    const unsigned char content[] = {'d', 'e', 'm', 'o'};
    // There are bytes.
    (VXIgnore(stage.GetBuilder().Add<Types>().SetSpecificData(content, sizeof content)), ...);
}

/// What a player carries and does not show.
void AddUnseen(DemoStage& stage) {
    auto& data = stage.GetBuilder().Define<TAG_DEFINEBINARYDATA>();
    CVXStreamReadWrite bytes("any bytes", 9);
    VXIgnore(data.SetBinaryData(&bytes));  // there is a stream

    auto& code = stage.GetBuilder().Add<TAG_DOABC>();
    auto* copy = new unsigned char[std::size(kByteCode)];
    std::copy(std::begin(kByteCode), std::end(kByteCode), copy);
    code.SetABCData(copy, static_cast<unsigned int>(std::size(kByteCode)));
    code.m_Name = "nothing";
    stage.GetBuilder().Add<TAG_SYMBOLCLASS>().AddSymbol("Badge", stage.GetBadge().GetCharacterId());
    AddSpecials<TAG_VXSPECIAL1, TAG_VXSPECIAL2, TAG_VXSPECIAL3, TAG_VXSPECIAL4>(stage);

    const char* lines[] = {
        "Inside, and unseen:",
        "- a label at every page, to which the button of the last page goes",
        "- a block of scripts of version 3 and a table of classes, which this movie does not run",
        "- nine bytes of data for scripts, and the four private tags of hosts",
        "- the full names of the fonts, and how their glyphs are smoothed",
        "- the switch that admits a debugger",
        "- behind the last page: all that was placed is removed, and pictures are freed",
    };
    double top = 240;
    for (const char* line : lines) {
        stage.Write(line, 20, top, {.size = 14, .widest = 600});
        top += 24;
    }
}

}  // namespace

void AddDemoScripts(DemoStage& stage) {
    AddScripts(stage);
    AddExport(stage);
    AddUnseen(stage);
}
