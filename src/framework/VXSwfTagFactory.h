#pragma once

#include "platform/VXExport.h"

class VXSwfTag;

/// The upper ten bits of a tag's header. Types without a name here are legal and carried as they are.
enum enuTagType : unsigned int {
    TAG_END = 0,
    TAG_SHOWFRAME = 1,
    TAG_DEFINESHAPE = 2,
    TAG_FREECHARACTER = 3,
    TAG_PLACEOBJECT = 4,
    TAG_REMOVEOBJECT = 5,
    TAG_DEFINEBITS = 6,
    TAG_DEFINEBUTTON = 7,
    TAG_JPEGTABLES = 8,
    TAG_SETBACKGROUNDCOLOR = 9,
    TAG_DEFINEFONT = 10,
    TAG_DEFINETEXT = 11,
    TAG_DOACTION = 12,
    TAG_DEFINEFONTINFO = 13,
    TAG_DEFINESOUND = 14,
    TAG_STARTSOUND = 15,
    TAG_DEFINEBUTTONSOUND = 17,
    TAG_SOUNDSTREAMHEAD = 18,
    TAG_SOUNDSTREAMBLOCK = 19,
    TAG_DEFINEBITSLOSSLESS = 20,
    TAG_DEFINEBITSJPEG2 = 21,
    TAG_DEFINESHAPE2 = 22,
    TAG_DEFINEBUTTONCXFORM = 23,
    TAG_PROTECT = 24,
    TAG_PATHSAREPOSTSCRIPT = 25,
    TAG_PLACEOBJECT2 = 26,
    TAG_REMOVEOBJECT2 = 28,
    TAG_SYNCFRAME = 29,
    TAG_FREEALL = 31,
    TAG_DEFINESHAPE3 = 32,
    TAG_DEFINETEXT2 = 33,
    TAG_DEFINEBUTTON2 = 34,
    TAG_DEFINEBITSJPEG3 = 35,
    TAG_DEFINEBITSLOSSLESS2 = 36,
    TAG_DEFINEEDITTEXT = 37,
    TAG_DEFINEVIDEO = 38,
    TAG_DEFINESPRITE = 39,
    TAG_NAMECHARACTER = 40,
    TAG_SERIALNUMBER = 41,
    TAG_DEFINETEXTFORMAT = 42,
    TAG_FRAMELABEL = 43,
    TAG_SOUNDSTREAMHEAD2 = 45,
    TAG_DEFINEMORPHSHAPE = 46,
    TAG_FRAMETAG = 47,
    TAG_DEFINEFONT2 = 48,
    TAG_GENCOMMAND = 49,
    TAG_DEFINECOMMANDOBJ = 50,
    TAG_CHARACTERSET = 51,
    TAG_FONTREF = 52,
    TAG_EXPORTASSETS = 56,
    TAG_DOINITACTION = 59,
    TAG_DEFINEVIDEOSTREAM = 60,
    TAG_VIDEOFRAME = 61,
    TAG_DEFINEFONTINFO2 = 62,
    TAG_ENABLEDEBUGGER2 = 64,
    TAG_FILEATTRIBUTES = 69,
    TAG_PLACEOBJECT3 = 70,
    TAG_DEFINEFONTALIGNZONES = 73,
    TAG_CSMTEXTSETTINGS = 74,
    TAG_DEFINEFONT3 = 75,
    TAG_SYMBOLCLASS = 76,
    TAG_METADATA = 77,
    TAG_DEFINESCALINGGRID = 78,
    TAG_DOABC = 82,
    TAG_DEFINESHAPE4 = 83,
    TAG_DEFINESCENEANDFRAMELABELDATA = 86,
    TAG_DEFINEBINARYDATA = 87,
    TAG_DEFINEFONTNAME = 88,
    TAG_DEFINEFONT4 = 91,
    TAG_VXSPECIAL1 = 996,  ///< private to hosts of this library, as are the next three
    TAG_VXSPECIAL2 = 997,
    TAG_VXSPECIAL3 = 998,
    TAG_VXSPECIAL4 = 999,
    TAG_DEFINEBITSPTR = 1023,
    TAG_RESERVED = 1024,  ///< does not fit the ten bits
};

/// The only maker of tags. The types are its names too: `VXSwfTagFactory::TAG_SHOWFRAME` is `TAG_SHOWFRAME`.
class VXSWF_API VXSwfTagFactory {
public:
    using enuTagType = ::enuTagType;
    using enum ::enuTagType;

    /// Makes a tag, which the caller owns until a tag set takes it. A nonzero `parsingMode` gives classes to
    /// placements (26), sprites (39) and file attributes (69) alone and carries all else raw; otherwise a
    /// nonzero `limitedClasses`, as on every load and copy, gives the classes that are read from files, and 0
    /// those that are built by code. A type without a class is a plain `VXSwfTag`. Null for type 1024 built
    /// by code.
    static VXSwfTag* CreateTagOfType(enuTagType type, short limitedClasses, unsigned int parsingMode);
    /// Null is ignored.
    static void DeleteTag(VXSwfTag* tag);

private:
    friend class VXSwfTagSet;
    struct Row;
    using Maker = VXSwfTag* (*)(enuTagType);

    template <typename Tag>
    static VXSwfTag* Make(enuTagType type);
    static VXSwfTag* MakeRaw(enuTagType type);
    static VXSwfTag* MakeNone(enuTagType type);
    static const Row* FindRow(enuTagType type);

    static const Row kRows[];
};
