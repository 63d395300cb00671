#pragma once

#include <map>
#include <set>
#include <utility>
#include <vector>

#include "binding/CTYHandles.h"
#include "framework/IVXSwfIdGenerator.h"
#include "framework/IVXSwfTagHolder.h"
#include "platform/VXExport.h"
#include "platform/VXString.h"
#include "text/VXWinFontData.h"

class VXSwfDefineFont2Tag;

/// What a font is looked for by.
struct VXTYFontPropStruct {
    VXString m_FontName;  ///< as the type engine has it, exactly
    bool m_Bold = false;
    bool m_Italic = false;
    int m_Variant = 0;  ///< tells keys apart and nothing else

    friend bool operator==(const VXTYFontPropStruct&, const VXTYFontPropStruct&) = default;
};

/// Serves all that is published in one process, without objects. It shares font tags: every text that asks
/// for the same font gets the same tag, which collects the characters of all of them and is written once. And
/// it finds fonts in the type engine and keeps what it found.
///
/// It owns no tag: those that it hands out belong to the movie that they are in. One that is gone by the time
/// of the next request counts as never made. Without a type engine no font is found, every width is 0 and
/// every outline empty. For one thread at a time, process exit included, and so are font tags: to make, copy,
/// dump or delete one.
class VXSWF_API VXFontPublishManager {
public:
    VXFontPublishManager() = delete;

    /// A glyph font, shared among all who ask for it until it is written. A new one gets its ID from `ids`
    /// and, with `addToHolder`, goes to the end of `holder`, with its text settings behind it; else the
    /// caller owns it. Without `ids` the ID is 0, and a null `holder` gets nothing.
    ///
    /// Kept: a style that is there already answers with the first tag of that name, whatever its style.
    static VXSwfDefineFont2Tag* GetDefineFontTag(const VXString& name, short bold, short italic,
                                                 IVXSwfIdGenerator* ids, IVXSwfTagHolder* holder,
                                                 bool addToHolder);
    /// A glyph font that is not shared, with an ID from `ids`. The caller owns it.
    static VXSwfDefineFont2Tag* GetTemporaryDefineFontTag(const VXString& name, short bold, short italic,
                                                          IVXSwfIdGenerator* ids);
    /// Forgets the first tag of that name and style, so that the next request makes a new one.
    static void RemoveFontTag(const VXString& name, short bold, short italic);

    /// Finds a font: in the cache, else by a walk over all fonts of the system, whose result is kept. A bold
    /// or italic one that the family does not have is imitated, and the plain one stands in where that is
    /// impossible. False for a name that no font has, which is not remembered; `out` then stays as it was.
    static bool GetFontDict(const VXTYFontPropStruct& props, BND_NT_NMT::CTYFontDict& out);
    /// Puts a font into the cache. One that is there stays unless `replace` is true. An empty font or name
    /// does nothing.
    static void AddFontDict(const VXTYFontPropStruct& props, const BND_NT_NMT::CTYFontDict& dict,
                            bool replace);
    /// A font at 1024 units to the em, or at `size`. What a name that no font has gives is up to the engine.
    static BND_NT_NMT::CTYFontInstance GetFontInstance(const VXString& name, bool bold, bool italic);
    static BND_NT_NMT::CTYFontInstance GetFontInstance(const VXString& name, bool bold, bool italic,
                                                       float size);
    /// The advance of a character in the instance's units, rounded; 0 for an empty instance.
    static int CharWidth(unsigned short c, BND_NT_NMT::CTYFontInstance& instance);
    /// Appends the outline of a character, at 1024 units to the em times the scales, to `path`. `name` plays
    /// no part. True when the engine appended something: false for character 0, and for a space.
    static bool GetTextOutlines(const unsigned short& c, float scaleX, float scaleY,
                                BND_NT_NMT::CGFMSharedBezierPath& path, const BND_NT_NMT::CTYFontDict& dict,
                                VXString& name);

    /// The two metrics of a font in the built-in table, for an em of `size` units. False for a name that it
    /// does not have and for a size that is not above 0; both are then 0.
    static bool GetWinFontData(const VXString& name, float size, float& first, float& second);

    /// Forgets every tag, every font and the table; the tags stay.
    static void DoCleanUp();

private:
    using Font = std::pair<VXTYFontPropStruct, BND_NT_NMT::CTYFontDict>;

    // Never destroyed, so that calls during process exit are safe.
    static std::multimap<VXString, VXSwfDefineFont2Tag*>& m_FontMap;
    static std::map<VXString, std::vector<Font>>& m_CTYFontMap;
    static std::set<VXWinFontData>& g_winFontDataSet;

    static void PopulateWinFontData();
    static bool GetFontWithName(const VXTYFontPropStruct& props, BND_NT_NMT::CTYFontDict& out);
    static bool GetFontWithProperties(const BND_NT_NMT::CTYFamily& family, const VXTYFontPropStruct& props,
                                      BND_NT_NMT::CTYFontDict& out);
};
