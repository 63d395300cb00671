#pragma once

#include <cstdint>

#include "binding/CTYHandles.h"
#include "platform/VXString.h"

/// The operations of the type engine as the movie library calls them: one function for each, by the engine's
/// name without `Proc`. Where the engine has two generations of one, the newer is called if the binding found
/// it, else the older; to the caller they are the same.
///
/// The engine's errors are dropped, and the flow goes on with whatever the outputs hold: an empty handle, 0,
/// an empty string, a box without extent. That is also what everything answers before `BNDInitialize`, after
/// `BNDTerminate` and where the engine lacks an operation. Wrappers that come back own the reference that the
/// engine counted.
namespace BND_NT_NMT {

/// The system's fonts.
VXSWF_API CTYFontSet TYFontSetNew();
VXSWF_API CTYFamilyList TYFamilyListNewList(const CTYFontSet& set);
VXSWF_API std::int32_t TYFamilyListGetNumFams(const CTYFamilyList& list);
VXSWF_API CTYFamily TYFamilyListGetNthFamily(const CTYFamilyList& list, std::int32_t index);
VXSWF_API std::int32_t TYFamilyGetNumFonts(const CTYFamily& family);
VXSWF_API CTYFontDict TYFamilyGetNthFont(const CTYFamily& family, std::int32_t index);

VXSWF_API VXString TYFontDictGetFontName(const CTYFontDict& font);
/// At most 255 units.
VXSWF_API VXString TYFontDictGetStyleName(const CTYFontDict& font);
/// 0 plain, 1 italic, 2 bold, 3 both.
VXSWF_API std::int32_t TYFontDictGetStyle(const CTYFontDict& font);
/// Imitates `style`, 1 to 3, from `base`.
VXSWF_API CTYFontDict TYFontDictNewSyntheticFont(const CTYFontDict& base, std::int32_t style);
/// In fractions of the em.
VXSWF_API void TYFontDictGetHorizontalMetrics(const CTYFontDict& font, float& first, float& second,
                                              float& third);

VXSWF_API CTYEncoding TYEncodingNewFromPreDefEncoding(std::int32_t number);
VXSWF_API CTYFontInstance TYFontInstanceNewFontInstance(const CTYFontDict& font, const TYMatrix& matrix,
                                                        const CTYEncoding& encoding);
VXSWF_API CTYFontDict TYFontInstanceGetFont(const CTYFontInstance& instance);
/// All zeros for an empty instance.
VXSWF_API TYMatrix TYFontInstanceGetMatrix(const CTYFontInstance& instance);
VXSWF_API TYGlyphID TYFontInstanceGetGlyphID(const CTYFontInstance& instance, unsigned short character);
/// In the instance's units.
VXSWF_API float TYFontInstanceGetWidth(const CTYFontInstance& instance, TYGlyphID glyph);

VXSWF_API CTYText TYNewTextFontInstanceCP(const CTYFontInstance& instance, unsigned short character);
VXSWF_API TYBox TYTextGetBoundingBox(const CTYText& text, const TYMatrix& matrix);
/// Appends to `path`; true when the engine says that it did.
VXSWF_API bool TYTextGetOutlines(const CTYText& text, const TYMatrix& matrix, const TYBox& box,
                                 CGFMSharedBezierPath& path);

VXSWF_API CGFMSharedBezierPath GFMNewSharedBezierPath(std::int32_t capacity);
/// The number of entries, with two floats and one kind each; 0 and nulls without a path. The arrays belong to
/// the path, may be written to, and must be asked for again after anything was appended.
VXSWF_API void GFMSharedBezierPathGetState(const CGFMSharedBezierPath& path, unsigned int& count,
                                           float*& points, KVMPointType*& kinds);

}  // namespace BND_NT_NMT
