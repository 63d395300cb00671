#pragma once

#include <map>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include "framework/IVXSwfIdGenerator.h"
#include "framework/VXFlintFile.h"
#include "kit/VXActionWriter.h"
#include "kit/VXTagClasses.h"
#include "platform/VXImage.h"
#include "timeline/VXKeyCodes.h"

/// How a text looks.
struct VXTextStyle {
    VXString font{};           ///< a name that `VXInstalledFonts` has
    unsigned short size = 16;  ///< pixels
    bool isBold = false;
    bool isItalic = false;
    VXFlintRGB color{};  ///< opaque black; its alpha counts with `UseAlpha`
};

/// A part of a text in one style. A line feed begins a new line.
struct VXTextRun {
    VXString text;
    VXTextStyle style;
};

enum class VXTextAlign : unsigned char { kLeft, kCenter, kRight };

/// Builds a movie, or goes on with one that is there, and sees to all that a player needs in order to show it:
///
///     const VXTypeEngineSession engine;  // for the text
///     VXFlintFile movie;
///     VXMovieBuilder builder(movie, 320, 240);
///     builder.Place(builder.DefineText("Hello", {.font = "DejaVu Sans", .size = 32}), 20, 20);
///     if (builder.Save("hello.swf") != kVXSuccess) std::cerr << builder.GetErrorText() << '\n';
///
/// Positions are in pixels. Characters go to the end of the movie under the next free ID; placements, labels,
/// scripts and frames to the end of its timeline, or of the sprite that was begun last. What cannot be made is
/// null, placing null does nothing, and the builder remembers the first reason: so one question at the end is
/// enough. All tags are the movie's, and stay in it until the movie is finished.
class VXSWF_API VXMovieBuilder {
public:
    /// For an empty movie. From version 8 on it gets file attributes.
    VXMovieBuilder(VXFlintFile& movie, unsigned int width, unsigned int height, unsigned short frameRate = 24,
                   unsigned char version = 9);
    /// Goes on behind the last tag of a movie, above all that it shows.
    explicit VXMovieBuilder(VXFlintFile& movie);
    ~VXMovieBuilder();
    VXMovieBuilder(const VXMovieBuilder&) = delete;
    VXMovieBuilder& operator=(const VXMovieBuilder&) = delete;

    VXFlintFile& GetMovie() { return m_Movie; }
    /// The free IDs of the movie, for merges and whoever else wants some.
    IVXSwfIdGenerator& GetIds() { return m_Ids; }

    // Tags by type: `Add<TAG_DOACTION>()` is a `VXSwfDoActionTag&`.

    /// A new tag at the end of the timeline.
    template <enuTagType Type>
    typename VXTagClass<Type>::Class& Add() {
        auto* tag = VXCreateTag<Type>();
        GetTimeline().IncludeTag(tag, -1);
        return *tag;
    }
    /// A new character.
    template <enuTagType Type>
    typename VXTagClass<Type>::Class& Define() {
        auto* tag = VXCreateTag<Type>();
        AddCharacter(tag);
        return *tag;
    }

    // Characters.

    /// Lines of text, their left top at the origin. Within `width`, or the widest line, they are aligned. The
    /// baseline of a line is as far below its top as its greatest size. At most
    /// 1450 pixels wide and high. Null for a font that is not installed; the reason names the nearest ones.
    VXSwfDefineTextTag* DefineText(const std::vector<VXTextRun>& runs, VXTextAlign align = VXTextAlign::kLeft,
                                   double width = 0);
    VXSwfDefineTextTag* DefineText(const VXString& text, const VXTextStyle& style,
                                   VXTextAlign align = VXTextAlign::kLeft, double width = 0) {
        return DefineText({{text, style}}, align, width);
    }
    /// How wide a line is, in pixels; 0 for a font that is not installed.
    static double MeasureText(const VXString& text, const VXTextStyle& style);
    /// The font of a style, which the movie gets at the first call. Who adds characters to it does so before the
    /// movie is finished.
    VXSwfDefineFont2Tag* GetFont(const VXTextStyle& style);
    /// A picture without loss, as a shape of its size.
    VXSwfDefineShapeTag* DefinePicture(const VXImage& image);
    /// `pixels` are rows of red, green, blue and alpha from the top.
    VXSwfDefineShapeTag* DefinePicture(const unsigned char* pixels, unsigned int width, unsigned int height) {
        return DefinePicture(VXImage(width, height, pixels));
    }
    /// The JPEG file that a stream holds, as a shape of its size. `alpha` is a byte a pixel.
    VXSwfDefineShapeTag* DefineJpeg(IVXStream& jpeg, const std::vector<unsigned char>& alpha = {});
    /// The MP3 file that a stream holds.
    VXSwfDefineSoundTag* DefineSound(IVXStream& mp3);
    /// A button that shows a character in each state and takes clicks where `up` has something.
    VXSwfDefineButton2Tag* DefineButton(const VXSwfTag* up, const VXSwfTag* over, const VXSwfTag* down);
    /// Rounded tiles of three colours with a text in the middle.
    VXSwfDefineButton2Tag* DefineTextButton(const VXString& text, const VXTextStyle& style, int width,
                                            int height, const VXFlintRGB& up, const VXFlintRGB& over,
                                            const VXFlintRGB& down);
    /// What a button does when it is released, and when a key of `VXKeyCodeEnum` is pressed; 0 for none.
    void AddAction(VXSwfDefineButton2Tag* button, const VXActionWriter& script, unsigned int key = 0);

    /// What is added next belongs to a new sprite, until `EndSprite`. Characters stay the movie's.
    VXSwfDefineSpriteTag& BeginSprite();
    /// Ends the frame that was begun, if any, and puts the sprite into the movie. Null without `BeginSprite`.
    VXSwfDefineSpriteTag* EndSprite();

    // The timeline.

    /// Puts a character on the stage; a depth of 0 is the next one above all. Null for null.
    VXSwfPlaceObject2Tag* Place(const VXSwfTag* character, double x, double y, const VXString& name = {},
                                unsigned short depth = 0, const std::vector<VXFlintFilter*>& filters = {});
    VXSwfPlaceObject2Tag* Place(const VXSwfTag& character, double x, double y, const VXString& name = {},
                                unsigned short depth = 0, const std::vector<VXFlintFilter*>& filters = {}) {
        return Place(&character, x, y, name, depth, filters);
    }
    /// What a placed sprite does at an event: `&VXFlintClipEventFlags::ClipEventEnterFrame`. `key` is for the
    /// event of a key press.
    void AddEvent(VXSwfPlaceObject2Tag* placement, short VXFlintClipEventFlags::*event,
                  const VXActionWriter& script, unsigned char key = 0);
    /// Runs when the frame is shown.
    void AddScript(const VXActionWriter& script);
    /// The movie or sprite stops at this frame.
    void Stop() { AddScript(VXActionWriter().Do(kVXActionStop)); }
    void AddLabel(const VXString& name);
    void StartSound(const VXSwfDefineSoundTag* sound, unsigned short loops = 1);
    void SetBackground(const VXFlintRGB& color);
    /// Ends a frame; what it shows stays for `count` frames.
    void ShowFrame(unsigned int count = 1);

    /// Ends the last frame, states the number of frames and settles the glyphs of all texts. More may be added
    /// afterwards, and the movie be finished again. 1 when something could not be made.
    VXErrorCodeEnum Finish();
    /// The same, and saves the movie as `VXMovieIO` does.
    VXErrorCodeEnum Save(const std::string& path);
    /// The first thing that could not be made, else why the last save failed; empty when all went well.
    const std::string& GetErrorText() const { return m_ErrorText; }

private:
    class Ids : public IVXSwfIdGenerator {
    public:
        Ids() : m_Taken(65536) {}
        unsigned short GetId(tVXSwfReservedIDEnum reserved) override;
        VXErrorCodeEnum GetId(unsigned short& id, tVXSwfReservedIDEnum reserved) override;
        void Take(unsigned short id) { m_Taken[id] = true; }

    private:
        std::vector<bool> m_Taken;
        unsigned int m_Next = 1;
    };
    struct Level;
    struct Text;

    VXSwfTagSet& GetTimeline();
    /// The same for a tag that makes a frame.
    VXSwfTagSet& OpenFrame();
    void AddCharacter(VXSwfTag* tag);
    void TakeOver();
    void SettleTexts();
    VXSwfDefineShapeTag* DefineShapeOf(const VXSwfDefinitionTag& bitmap, unsigned int width,
                                       unsigned int height);
    bool AddActions(const VXActionWriter& script, VXFlintActionRecords& actions);
    void Fail(std::string text);

    VXFlintFile& m_Movie;
    Ids m_Ids;
    std::vector<Level> m_Levels;  // the movie and the sprites that were begun
    std::vector<bool> m_TakenDepths;
    std::map<std::tuple<VXString, bool, bool>, VXSwfDefineFont2Tag*> m_Fonts;
    std::vector<Text> m_Texts;
    std::string m_ErrorText;
    bool m_HasFailed = false;  // and nothing can be saved any more
};
