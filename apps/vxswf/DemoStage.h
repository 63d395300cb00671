#pragma once

#include <string>
#include <vector>

#include "DemoAssets.h"
#include "vxswf.h"

// Colours of the pages, as 0xRRGGBB.
inline constexpr unsigned int kInk = 0x222222;
inline constexpr unsigned int kPaper = 0xF4F1E8;
inline constexpr unsigned int kRed = 0xC44E3A;
inline constexpr unsigned int kBlue = 0x3A7CA5;
inline constexpr unsigned int kGreen = 0x6A994E;
inline constexpr unsigned int kAmber = 0xF2B134;
inline constexpr unsigned int kNavy = 0x1D3557;

/// For tags whose colours have no alpha byte.
VXFlintRGB Rgb(unsigned int color);
/// For the others.
VXFlintRGB Rgba(unsigned int color, unsigned char alpha = 255);
VXFlintFillStyle SolidFill(unsigned int color, unsigned char alpha = 255);

/// How a line of text looks.
struct DemoTextStyle {
    unsigned short size = 12;  ///< pixels
    double widest = 144;       ///< pixels, into which a longer line is made to fit by a smaller size
    short isBold = 0;
    short isItalic = 0;
    unsigned int color = kInk;
    unsigned char alpha = 255;
    const char* font = nullptr;  ///< null for the movie's own
    /// Lets the library measure, in whole pixels and with a run for each character. Otherwise one run is laid
    /// out here, to the twip.
    bool isMeasuredByLibrary = false;
};

/// The movie that `vxswf demo` builds: pages of 640 × 480 pixels, each a frame at which the movie stops, with
/// buttons that lead to its neighbours. The pages use the part between `kTop` and `kBottom`. Positions are in
/// pixels from the left top of the stage.
class DemoStage {
public:
    static constexpr int kWidth = 640;
    static constexpr int kHeight = 480;
    static constexpr double kTop = 64;
    static constexpr double kBottom = 430;
    // A grid that most pages use: cells of 120 × 80 pixels with room for a caption below.
    static constexpr int kCellWidth = 120;
    static constexpr int kCellHeight = 80;
    static constexpr double CellLeft(int column) { return 20 + 152 * column; }
    static constexpr double CellTop(int row) { return kTop + 122 * row; }

    DemoStage(const DemoAssets& assets, unsigned int numPages);

    const DemoAssets& GetAssets() const { return m_Assets; }
    VXMovieBuilder& GetBuilder() { return m_Builder; }

    /// Takes away what the page before has placed, and places the title and the buttons.
    void BeginPage(const char* title);
    void EndPage();
    /// Settles the glyphs of all texts and closes the movie.
    void Finish();

    /// A line of static text, its left top at the origin.
    VXSwfDefineTextTag& DefineLine(const std::string& text, const DemoTextStyle& style = {});
    /// All advances together, in pixels.
    static double WidthOf(const VXSwfDefineTextTag& line);
    /// A button with a line of text, of another colour in each state. It does nothing yet.
    VXSwfDefineButton2Tag& DefineButton(const char* text, int width, int height);
    /// A field to type in, in a font of the player's and with a border.
    VXSwfDefineEditTextTag& DefineField(int width, int height);
    /// A rounded tile with a triangle on it, its middle at the origin, as a sprite.
    VXSwfDefineSpriteTag& GetBadge();
    /// Tiles of two greys, in the size given, to be seen through what lies on them.
    VXSwfDefineShapeTag& DefineChecks(int width, int height);

    /// Puts a character on the page, at a depth above all that is there.
    VXSwfPlaceObject2Tag& Place(const VXSwfDefinitionTag& character, double x, double y,
                                const std::vector<VXFlintFilter*>& filters = {}, const char* name = "");
    void Write(const std::string& text, double x, double y, const DemoTextStyle& style = {}) {
        Place(DefineLine(text, style), x, y);
    }
    /// A character in a cell of the grid, and a caption below. `dx` and `dy` move it within the cell.
    VXSwfPlaceObject2Tag& PlaceInCell(const VXSwfDefinitionTag& character, int column, int row,
                                      const std::string& caption,
                                      const std::vector<VXFlintFilter*>& filters = {}, double dx = 0,
                                      double dy = 0);

private:
    VXTextStyle StyleOf(const std::string& text, const DemoTextStyle& style) const;
    VXSwfDefineTextTag& DefineMeasuredLine(const std::string& text, const VXTextStyle& style);
    VXSwfDefineButton2Tag& DefineTurn(const char* text, unsigned int key, const VXActionWriter& script);

    const DemoAssets& m_Assets;
    const unsigned int m_NumPages;
    VXFlintFile m_Movie;
    VXMovieBuilder m_Builder;
    std::vector<VXSwfDefineTextTag*> m_MeasuredLines;
    std::vector<unsigned short> m_PageDepths;
    VXSwfDefinitionTag* m_Back = nullptr;
    VXSwfDefinitionTag* m_Next = nullptr;
    VXSwfDefinitionTag* m_First = nullptr;
    VXSwfDefinitionTag* m_Rule = nullptr;
    VXSwfDefinitionTag* m_Tile = nullptr;
    VXSwfDefineSpriteTag* m_Badge = nullptr;
    VXSwfDefinitionTag* m_FieldFont = nullptr;
};
