#pragma once

#include <cstdint>

#include "platform/KVMPointType.h"

/// The type engine and its path buffer, as seen by name through `GetVXBndAddressProc`. The declarations below
/// give the types of the procedures; none of them can be linked against.
///
/// **Handles** are values, not addresses: a slot with the generation of what lives in it. A handle that has
/// gone stale, or is of another kind than the operation needs, is recognised and refused. 0 is no handle. A
/// *counted* result carries a reference that its receiver ends with `TYBaseReleaseProc`; paths are counted
/// the same way.
///
/// **Failure**: every operation answers null for good, or a static record that says what went wrong, unless
/// its declaration tells otherwise. On failure each output is written as well, with 0 or nothing. The address
/// of an output may be null where nobody wants it, but not that of a counted result. Nothing is thrown.
///
/// **Lengths**: an em is 1 in font space. A matrix takes (x, y) to (a x + c y + tx, b x + d y + ty), with y
/// growing downwards and the baseline at 0 on both sides.

/// What every handle converts to. Handles of one kind do not convert to those of another.
using TYHandle = std::uint64_t;
enum TYFontSet : TYHandle {};
enum TYFamilyList : TYHandle {};
enum TYFamily : TYHandle {};
enum TYFontDict : TYHandle {};
enum TYString : TYHandle {};
enum TYEncoding : TYHandle {};
enum TYFontInstance : TYHandle {};
enum TYText : TYHandle {};
enum GFMSharedBezierPath : TYHandle {};

/// Rank of a glyph in its font file; 0 is the glyph that stands for whatever is missing.
using TYGlyphID = std::uint32_t;

enum TYErrorCode : std::int32_t {
    kTYBadHandle = 1,     ///< none, stale, or of another kind
    kTYBadParameter = 2,  ///< an address that is null, an index or a number out of range
    kTYBadFont = 3,       ///< the file is gone, is no outline font, or has no such glyph
    kTYOutOfMemory = 4,
};

struct TYErrorRecord {
    TYErrorCode code;
    const char* message;
};
/// Null for success; a record is static and is never freed.
using TYError = const TYErrorRecord*;

/// 2 by 3, in the order a b c d tx ty.
struct TYMatrix {
    float a = 1.0F, b = 0.0F;
    float c = 0.0F, d = 1.0F;
    float tx = 0.0F, ty = 0.0F;
};

struct TYBox {
    float left = 0.0F, top = 0.0F, right = 0.0F, bottom = 0.0F;
};

/// Scale of styles: the sum of what holds.
enum TYStyle : std::int32_t {
    kTYPlain = 0,
    kTYItalic = 1,
    kTYBold = 2,
    kTYBoldItalic = 3,
};

/// Positions on the axes of a font that has such; the fonts of this engine have none.
struct TYDesignVector {
    std::int32_t count = 0;
    const float* values = nullptr;
};

/// Wishes for features of a font. Empty ones carry the kind 15.
struct TYDescriptor {
    std::int32_t kind = 15;
    std::int32_t count = 0;
    const void* entries = nullptr;
};

extern "C" {

// References.

/// Non-zero on success; 0 for a handle that is stale or none, which must then be treated as no handle.
std::int32_t TYBaseAddRefProc(TYHandle handle);
/// With the last reference goes what the handle stood for. A stale handle, or none, is left alone.
TYError TYBaseReleaseProc(TYHandle handle);

// The fonts of the system, by families. Nothing here opens a font file.

/// `out` counted. `system` is 1.
TYError TYFontSetNewProc(TYFontSet* out, std::int32_t system);
/// `out` counted. `flags` is 0.
TYError TYFamilyListNewListProc(TYFontSet set, std::int32_t flags, TYFamilyList* out);
TYError TYFamilyListGetNumFamsProc(TYFamilyList list, std::int32_t* out);
/// `out` counted.
TYError TYFamilyListGetNthFamilyProc(TYFamilyList list, std::int32_t index, TYFamily* out);
/// `flags` is 0.
TYError TYFamilyGetNumFontsProc(TYFamily family, std::int32_t* out, std::int32_t flags);
/// `out` counted.
TYError TYFamilyGetNthFontProc(TYFamily family, const std::int32_t* index, TYFontDict* out);

// Fonts.

/// `out` counted: the family's name for its plain member, for any other the family, a space and the style
/// name.
TYError TYFontDictGetFontNameProc(TYFontDict font, TYString* out);
/// The same. `script` and `language` are 0.
TYError TYFontDictGetFontNameProcV2(TYFontDict font, TYString* out, std::int32_t script,
                                    std::int32_t language);
/// UTF-8 up to a NUL, valid until the last reference to `string` ends.
TYError TYStringGetCharPtrProc(TYString string, const char** out);
/// Writes at most `*length` units of UTF-16 and a zero behind them, so that `buffer` takes `*length` + 1
/// units; `*length` becomes the number written, `out` the number that the whole name has. `encoding` is 1.
TYError TYFontDictGetStyleNameProc(TYFontDict font, std::int32_t* out, std::uint16_t* buffer,
                                   std::int32_t* length, std::int32_t encoding);
/// The same. `script` and `language` are 0.
TYError TYFontDictGetStyleNameProcV2(TYFontDict font, std::int32_t* out, std::uint16_t* buffer,
                                     std::int32_t* length, std::int32_t encoding, std::int32_t script,
                                     std::int32_t language);
/// On the scale of `TYStyle`.
TYError TYFontDictGetStyleProc(TYFontDict font, std::int32_t* out);
/// `out` counted: `base` with whatever of `style`, 1 to 3, it is not already, imitated. `strength` is
/// 0x40000000; it, `flags`, `options` and `vector` change nothing.
TYError TYFontDictNewSyntheticFontProc(TYFontDict* out, TYFontDict base, std::int32_t style,
                                       std::int32_t strength, std::int32_t flags, std::int32_t options,
                                       const TYDesignVector* vector);
/// In ems, by the font file: how far it rises above the baseline, how far it falls below as a positive
/// number, and the gap between two lines.
TYError TYFontDictGetHorizontalMetricsProc(TYFontDict font, float* first, float* second, float* third);

// Fonts at a size, in an encoding.

/// `out` counted. Number 13 is known: a character is one unit of UTF-16, two bytes in the machine's order.
/// Half a surrogate pair is a character that no font has.
TYError TYEncodingNewFromPreDefEncodingProc(TYEncoding* out, std::int32_t number);
/// `out` counted. The vector may be null; `direction` is 0, from left to right.
TYError TYFontInstanceNewFontInstanceProcV3(TYFontDict font, const TYMatrix* matrix, TYEncoding encoding,
                                            const TYDesignVector* vector, std::int32_t direction,
                                            TYFontInstance* out);
/// The same. The descriptor is empty.
TYError TYFontInstanceNewFontInstanceProcV4(TYFontDict font, const TYMatrix* matrix, TYEncoding encoding,
                                            const TYDesignVector* vector, std::int32_t direction,
                                            const TYDescriptor* features, TYFontInstance* out);
/// `out` counted.
TYError TYFontInstanceGetFontProc(TYFontInstance instance, TYFontDict* out);
/// As it was given.
TYError TYFontInstanceGetMatrixProc(TYFontInstance instance, TYMatrix* out);
/// Glyph of the one character in the `size` bytes at `character`, 0 when the font lacks it; `consumed`
/// becomes 2. `flags` is 0.
TYError TYFontInstanceGetGlyphIDProcV2(TYFontInstance instance, TYGlyphID* out, const void* character,
                                       std::int32_t size, std::int32_t* consumed, std::int32_t flags);
/// The horizontal advance through the instance's matrix, neither hinted nor rounded. `flags` is 0, `count` 1.
TYError TYFontInstanceGetWidthProc(TYFontInstance instance, float* out, TYGlyphID glyph, std::int32_t flags,
                                   std::int32_t count);

// Text of one character.

/// `out` counted. `size`, `flags` and `consumed` as for `TYFontInstanceGetGlyphIDProcV2`; `direction` is 0.
TYError TYNewTextFontInstanceCPProcV2(TYFontInstance instance, const void* characters, std::int32_t size,
                                      std::int32_t flags, std::int32_t* consumed, std::int32_t direction,
                                      TYText* out);
/// The same. The descriptor is empty.
TYError TYNewTextFontInstanceCPProcV3(TYFontInstance instance, const void* characters, std::int32_t size,
                                      std::int32_t flags, std::int32_t* consumed, std::int32_t direction,
                                      const TYDescriptor* features, TYText* out);
/// The box around all points of the outlines, controls included, through the instance's matrix and then
/// `matrix`.
TYError TYTextGetBoundingBox(TYText text, const TYMatrix* matrix, TYBox* out);
/// Appends the outlines, through the same matrices, and sets `ok` to 1, or to 0 when there are none to append.
/// For each contour: a move, its lines and curves, a line to the start, a close with the
/// start once more. All curves are cubics, and the inside lies to the right of the way round. `mode` is 2;
/// the box changes nothing.
TYError TYTextGetOutlines(TYText text, const TYMatrix* matrix, const TYBox* box, std::int32_t mode,
                          GFMSharedBezierPath path, std::int32_t* ok);

// The path buffer.

/// Answers the path itself, counted and empty, with room for `capacity` entries before it has to grow; 0 on
/// failure. `flags` is 0.
GFMSharedBezierPath GFMNewSharedBezierPathProc(std::int32_t capacity, std::int32_t flags);
/// The number of entries, and the addresses of 2 floats and 1 kind for each, never null. A cubic is three
/// entries of the kind `kKVMCurve`. The arrays are the path's and may be written to; they stay where they are
/// until the path is next appended to, or ends.
TYError GFMSharedBezierPathGetStateProc(GFMSharedBezierPath path, std::uint32_t* count, float** points,
                                        KVMPointType** kinds);

// The engine as a whole.

/// Ends everything that is alive, drops the list of fonts and closes every font file. Handles that are still
/// held become stale. The engine starts again with the next request.
void TYTerminateProc();
/// For tests: how many handles are alive.
std::int32_t TYTestLiveHandleCount();

}  // extern "C"

/// Every procedure above, for tables of them.
#define VX_TYPE_ENGINE_PROCEDURES(X)       \
    X(TYBaseAddRefProc)                    \
    X(TYBaseReleaseProc)                   \
    X(TYFontSetNewProc)                    \
    X(TYFamilyListNewListProc)             \
    X(TYFamilyListGetNumFamsProc)          \
    X(TYFamilyListGetNthFamilyProc)        \
    X(TYFamilyGetNumFontsProc)             \
    X(TYFamilyGetNthFontProc)              \
    X(TYFontDictGetFontNameProc)           \
    X(TYFontDictGetFontNameProcV2)         \
    X(TYStringGetCharPtrProc)              \
    X(TYFontDictGetStyleNameProc)          \
    X(TYFontDictGetStyleNameProcV2)        \
    X(TYFontDictGetStyleProc)              \
    X(TYFontDictNewSyntheticFontProc)      \
    X(TYFontDictGetHorizontalMetricsProc)  \
    X(TYEncodingNewFromPreDefEncodingProc) \
    X(TYFontInstanceNewFontInstanceProcV3) \
    X(TYFontInstanceNewFontInstanceProcV4) \
    X(TYFontInstanceGetFontProc)           \
    X(TYFontInstanceGetMatrixProc)         \
    X(TYFontInstanceGetGlyphIDProcV2)      \
    X(TYFontInstanceGetWidthProc)          \
    X(TYNewTextFontInstanceCPProcV2)       \
    X(TYNewTextFontInstanceCPProcV3)       \
    X(TYTextGetBoundingBox)                \
    X(TYTextGetOutlines)                   \
    X(GFMNewSharedBezierPathProc)          \
    X(GFMSharedBezierPathGetStateProc)     \
    X(TYTerminateProc)                     \
    X(TYTestLiveHandleCount)
