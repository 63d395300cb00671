#pragma once

#include <string>

#include "vxswf.h"

/// The movie that `vxswf demo` builds: two frames of 640 × 480 pixels, between which the button leads.
class DemoStage {
public:
    static constexpr unsigned char kStop = 0x07;  // an action

    DemoStage();

    VXFlintFile& GetMovie() { return m_Movie; }
    IVXSwfIdGenerator& GetIds() { return m_Ids; }

    /// A new tag of the class that code builds for the type, at the end of the movie, which owns it.
    template <typename Tag>
    Tag& Add(VXSwfTagFactory::enuTagType type, short limitedClasses = 0) {
        VXSwfTag* tag = VXSwfTagFactory::CreateTagOfType(type, limitedClasses, 0);
        m_Movie.IncludeTag(tag, -1);
        return dynamic_cast<Tag&>(*tag);
    }
    /// The same for a character, with an ID of its own.
    template <typename Tag>
    Tag& Define(VXSwfTagFactory::enuTagType type) {
        Tag& tag = Add<Tag>(type);
        tag.SetCharacterId(m_Ids.GetId(kVXSwfOrdinaryId));
        return tag;
    }
    /// Puts a character at the next depth, in pixels.
    void Place(VXSwfDefinitionTag& character, double x, double y,
               const std::vector<VXFlintFilter*>& filters = {});
    /// Actions without operands, run when the frame is entered.
    void AddScript(std::initializer_list<unsigned char> codes);
    void EndFrame();

private:
    /// IDs from 1 on, since the movie begins with none.
    class Ids : public IVXSwfIdGenerator {
    public:
        unsigned short GetId(tVXSwfReservedIDEnum) override { return ++m_LastId; }
        VXErrorCodeEnum GetId(unsigned short& id, tVXSwfReservedIDEnum reserved) override {
            id = GetId(reserved);
            return kVXSuccess;
        }

    private:
        unsigned short m_LastId = 0;
    };

    VXFlintFile m_Movie;
    Ids m_Ids;
};

// The parts of the movie, each in a source of its own.

/// Primitives, gradients, strokes of every style, curves, a drop shadow.
void AddDemoShapes(DemoStage& stage);
/// Pictures of every format, a sound, and a button that plays it and turns the page. Ends the first frame.
void AddDemoMedia(DemoStage& stage);
/// The second frame: text in two fonts, `fontName` plain, bold and italic among them, and a field to type in.
void AddDemoText(DemoStage& stage, const VXString& fontName);
