#pragma once

#include <string>

#include "vxswf.h"

/// The movie that `vxswf demo` builds: two frames of 640 × 480 pixels, between which the button leads.
class DemoStage {
public:
    DemoStage();

    VXFlintFile& GetMovie() { return m_Movie; }

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
        tag.SetCharacterId(m_NextId++);
        return tag;
    }
    /// Puts a character at the next depth, in pixels.
    void Place(VXSwfDefinitionTag& character, double x, double y,
               const std::vector<VXFlintFilter*>& filters = {});
    /// Actions without operands, run when the frame is entered.
    void AddScript(std::initializer_list<unsigned char> codes);
    void EndFrame();

private:
    VXFlintFile m_Movie;
    unsigned short m_NextId = 1;
};

// The parts of the movie, each in a source of its own.

/// Primitives, gradients, strokes of every style, curves, a drop shadow.
void AddDemoShapes(DemoStage& stage);
/// Pictures of every format, a sound, and a button that plays it and turns the page.
void AddDemoMedia(DemoStage& stage);
