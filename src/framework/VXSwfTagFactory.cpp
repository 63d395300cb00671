#include "framework/VXSwfTagFactory.h"

#include <array>
#include <cstdint>
#include <iterator>

#include "framework/VXSwfDefinitionTag.h"
#include "framework/VXSwfTag.h"
#include "media/VXSwfDefineBitsJpegTag.h"
#include "media/VXSwfDefineBitsLossless2Tag.h"
#include "media/VXSwfDefineButtonSoundTag.h"
#include "media/VXSwfDefineSoundTag.h"
#include "media/VXSwfStartSoundTag.h"
#include "scripting/VXSwfDoABCTag.h"
#include "scripting/VXSwfDoActionTag.h"
#include "scripting/VXSwfDoInitActionTag.h"
#include "scripting/VXSwfExportAssetsTag.h"
#include "scripting/VXSwfSymbolClassTag.h"
#include "shapes/VXSwfDefineShapeTag.h"
#include "text/VXSwfCSMTextSettingTag.h"
#include "text/VXSwfDefineEditTextTag.h"
#include "text/VXSwfDefineFont2Tag.h"
#include "text/VXSwfDefineFontNameTag.h"
#include "text/VXSwfDefineTextTag.h"
#include "timeline/VXSwfDefineBinaryDataTag.h"
#include "timeline/VXSwfDefineButton2Tag.h"
#include "timeline/VXSwfDefineSpriteTag.h"
#include "timeline/VXSwfEnableDebugger2Tag.h"
#include "timeline/VXSwfFileAttributesTag.h"
#include "timeline/VXSwfFreeCharacterTag.h"
#include "timeline/VXSwfPlaceObject2Tag.h"
#include "timeline/VXSwfPlaceObject3Tag.h"
#include "timeline/VXSwfPlaceObjectTag.h"
#include "timeline/VXSwfRemoveObjectTag.h"
#include "timeline/VXSwfSetBackgroundColorTag.h"
#include "timeline/VXSwfVXSpecialTag.h"

template <typename Tag>
VXSwfTag* VXSwfTagFactory::Make(enuTagType type) {
    VXSwfTag* tag = new Tag(type);
    tag->m_IsFromFactory = 1;
    return tag;
}

VXSwfTag* VXSwfTagFactory::MakeRaw(enuTagType type) {
    auto* tag = new VXSwfTag(type, 1);
    tag->m_IsFromFactory = 1;
    tag->m_HasFields = 0;
    return tag;
}

VXSwfTag* VXSwfTagFactory::MakeNone(enuTagType) { return nullptr; }

struct VXSwfTagFactory::Row {
    enuTagType type;
    Maker byCode;
    Maker inFile;
};

// Sorted by type. Types without a row are raw in both sets.
constexpr VXSwfTagFactory::Row VXSwfTagFactory::kRows[] = {
    {TAG_DEFINESHAPE, Make<VXSwfDefineShapeTag>, Make<VXSwfDefineShapeTag>},
    {TAG_FREECHARACTER, Make<VXSwfFreeCharacterTag>, MakeRaw},
    {TAG_PLACEOBJECT, MakeRaw, Make<VXSwfPlaceObjectTag>},
    {TAG_REMOVEOBJECT, Make<VXSwfRemoveObjectTag>, Make<VXSwfRemoveObjectTag>},
    {TAG_DEFINEBITS, Make<VXSwfDefinitionTag>, MakeRaw},
    {TAG_DEFINEBUTTON, Make<VXSwfDefinitionTag>, MakeRaw},
    {TAG_SETBACKGROUNDCOLOR, Make<VXSwfSetBackgroundColorTag>, MakeRaw},
    {TAG_DEFINEFONT, Make<VXSwfDefinitionTag>, MakeRaw},
    {TAG_DEFINETEXT, Make<VXSwfDefineTextTag>, Make<VXSwfDefineTextTag>},
    {TAG_DOACTION, Make<VXSwfDoActionTag>, Make<VXSwfDoActionTag>},
    {TAG_DEFINEFONTINFO, Make<VXSwfDefinitionTag>, MakeRaw},
    {TAG_DEFINESOUND, Make<VXSwfDefineSoundTag>, MakeRaw},
    {TAG_STARTSOUND, Make<VXSwfStartSoundTag>, MakeRaw},
    {TAG_DEFINEBUTTONSOUND, Make<VXSwfDefinitionTag>, Make<VXSwfDefineButtonSoundTag>},
    {TAG_DEFINEBITSLOSSLESS, Make<VXSwfDefinitionTag>, MakeRaw},
    {TAG_DEFINEBITSJPEG2, Make<VXSwfDefineBitsJpegTag>, MakeRaw},
    {TAG_DEFINESHAPE2, Make<VXSwfDefineShapeTag>, Make<VXSwfDefineShapeTag>},
    {TAG_DEFINEBUTTONCXFORM, Make<VXSwfDefinitionTag>, MakeRaw},
    {TAG_PLACEOBJECT2, Make<VXSwfPlaceObject2Tag>, Make<VXSwfPlaceObject2Tag>},
    {TAG_REMOVEOBJECT2, Make<VXSwfRemoveObjectTag>, Make<VXSwfRemoveObjectTag>},
    {TAG_DEFINESHAPE3, Make<VXSwfDefineShapeTag>, Make<VXSwfDefineShapeTag>},
    {TAG_DEFINETEXT2, Make<VXSwfDefineTextTag>, Make<VXSwfDefineTextTag>},
    {TAG_DEFINEBUTTON2, Make<VXSwfDefineButton2Tag>, Make<VXSwfDefineButton2Tag>},
    {TAG_DEFINEBITSJPEG3, Make<VXSwfDefineBitsJpegTag>, MakeRaw},
    {TAG_DEFINEBITSLOSSLESS2, Make<VXSwfDefineBitsLossless2Tag>, MakeRaw},
    {TAG_DEFINEEDITTEXT, Make<VXSwfDefineEditTextTag>, Make<VXSwfDefineEditTextTag>},
    {TAG_DEFINESPRITE, Make<VXSwfDefineSpriteTag>, Make<VXSwfDefineSpriteTag>},
    {TAG_DEFINEMORPHSHAPE, Make<VXSwfDefinitionTag>, MakeRaw},
    {TAG_DEFINEFONT2, Make<VXSwfDefineFont2Tag>, MakeRaw},
    {TAG_EXPORTASSETS, Make<VXSwfExportAssetsTag>, Make<VXSwfExportAssetsTag>},
    {TAG_DOINITACTION, Make<VXSwfDoInitActionTag>, Make<VXSwfDoInitActionTag>},
    {TAG_DEFINEVIDEOSTREAM, Make<VXSwfDefinitionTag>, MakeRaw},
    {TAG_DEFINEFONTINFO2, Make<VXSwfDefinitionTag>, MakeRaw},
    {TAG_ENABLEDEBUGGER2, Make<VXSwfEnableDebugger2Tag>, MakeRaw},
    {TAG_FILEATTRIBUTES, Make<VXSwfFileAttributesTag>, Make<VXSwfFileAttributesTag>},
    {TAG_PLACEOBJECT3, Make<VXSwfPlaceObject3Tag>, Make<VXSwfPlaceObject3Tag>},
    {TAG_DEFINEFONTALIGNZONES, Make<VXSwfDefinitionTag>, MakeRaw},
    {TAG_CSMTEXTSETTINGS, Make<VXSwfCSMTextSettingTag>, MakeRaw},
    {TAG_DEFINEFONT3, Make<VXSwfDefineFont2Tag>, MakeRaw},
    {TAG_SYMBOLCLASS, Make<VXSwfSymbolClassTag>, Make<VXSwfSymbolClassTag>},
    {TAG_DOABC, Make<VXSwfDoABCTag>, MakeRaw},
    {TAG_DEFINESHAPE4, Make<VXSwfDefineShapeTag>, Make<VXSwfDefineShapeTag>},
    {TAG_DEFINESCENEANDFRAMELABELDATA, Make<VXSwfDefinitionTag>, MakeRaw},
    {TAG_DEFINEBINARYDATA, Make<VXSwfDefineBinaryDataTag>, MakeRaw},
    {TAG_DEFINEFONTNAME, Make<VXSwfDefineFontNameTag>, MakeRaw},
    {TAG_VXSPECIAL1, Make<VXSwfVXSpecialTag>, MakeRaw},
    {TAG_VXSPECIAL2, Make<VXSwfVXSpecialTag>, MakeRaw},
    {TAG_VXSPECIAL3, Make<VXSwfVXSpecialTag>, MakeRaw},
    {TAG_VXSPECIAL4, Make<VXSwfVXSpecialTag>, MakeRaw},
    {TAG_RESERVED, MakeNone, MakeRaw},
};

const VXSwfTagFactory::Row* VXSwfTagFactory::FindRow(enuTagType type) {
    // For every type the number of its row, from 1 on, since each tag of a movie asks for one.
    static constexpr auto kNumbers = [] {
        std::array<std::uint8_t, TAG_RESERVED + 1> numbers{};
        static_assert(std::size(kRows) <= UINT8_MAX);
        for (std::size_t i = 0; i < std::size(kRows); ++i)
            numbers[kRows[i].type] = static_cast<std::uint8_t>(i + 1);
        return numbers;
    }();
    const unsigned int number = type < kNumbers.size() ? kNumbers[type] : 0;
    return number == 0 ? nullptr : &kRows[number - 1];
}

VXSwfTag* VXSwfTagFactory::CreateTagOfType(enuTagType type, short limitedClasses, unsigned int parsingMode) {
    const bool isRaw = parsingMode != 0 && type != TAG_PLACEOBJECT2 && type != TAG_DEFINESPRITE &&
                       type != TAG_FILEATTRIBUTES;
    const Row* row = isRaw ? nullptr : FindRow(type);
    if (row == nullptr) return MakeRaw(type);
    return limitedClasses != 0 ? row->inFile(type) : row->byCode(type);
}

void VXSwfTagFactory::DeleteTag(VXSwfTag* tag) { delete tag; }
