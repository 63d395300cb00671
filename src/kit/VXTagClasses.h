#pragma once

#include "framework/VXSwfTagFactory.h"
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
#include "timeline/VXSwfRemoveObjectTag.h"
#include "timeline/VXSwfSetBackgroundColorTag.h"
#include "timeline/VXSwfVXSpecialTag.h"

/// The class of a tag that is made for a movie under construction, by its type. A type without one is carried as
/// bytes.
template <enuTagType Type>
struct VXTagClass {
    using Class = VXSwfTag;
};
template <>
struct VXTagClass<TAG_DEFINESHAPE> {
    using Class = VXSwfDefineShapeTag;
};
template <>
struct VXTagClass<TAG_FREECHARACTER> {
    using Class = VXSwfFreeCharacterTag;
};
template <>
struct VXTagClass<TAG_REMOVEOBJECT> {
    using Class = VXSwfRemoveObjectTag;
};
template <>
struct VXTagClass<TAG_SETBACKGROUNDCOLOR> {
    using Class = VXSwfSetBackgroundColorTag;
};
template <>
struct VXTagClass<TAG_DEFINETEXT> {
    using Class = VXSwfDefineTextTag;
};
template <>
struct VXTagClass<TAG_DOACTION> {
    using Class = VXSwfDoActionTag;
};
template <>
struct VXTagClass<TAG_DEFINESOUND> {
    using Class = VXSwfDefineSoundTag;
};
template <>
struct VXTagClass<TAG_STARTSOUND> {
    using Class = VXSwfStartSoundTag;
};
template <>
struct VXTagClass<TAG_DEFINEBUTTONSOUND> {
    using Class = VXSwfDefineButtonSoundTag;
};
template <>
struct VXTagClass<TAG_DEFINEBITSJPEG2> {
    using Class = VXSwfDefineBitsJpegTag;
};
template <>
struct VXTagClass<TAG_DEFINESHAPE2> {
    using Class = VXSwfDefineShapeTag;
};
template <>
struct VXTagClass<TAG_PLACEOBJECT2> {
    using Class = VXSwfPlaceObject2Tag;
};
template <>
struct VXTagClass<TAG_REMOVEOBJECT2> {
    using Class = VXSwfRemoveObjectTag;
};
template <>
struct VXTagClass<TAG_DEFINESHAPE3> {
    using Class = VXSwfDefineShapeTag;
};
template <>
struct VXTagClass<TAG_DEFINETEXT2> {
    using Class = VXSwfDefineTextTag;
};
template <>
struct VXTagClass<TAG_DEFINEBUTTON2> {
    using Class = VXSwfDefineButton2Tag;
};
template <>
struct VXTagClass<TAG_DEFINEBITSJPEG3> {
    using Class = VXSwfDefineBitsJpegTag;
};
template <>
struct VXTagClass<TAG_DEFINEBITSLOSSLESS2> {
    using Class = VXSwfDefineBitsLossless2Tag;
};
template <>
struct VXTagClass<TAG_DEFINEEDITTEXT> {
    using Class = VXSwfDefineEditTextTag;
};
template <>
struct VXTagClass<TAG_DEFINESPRITE> {
    using Class = VXSwfDefineSpriteTag;
};
template <>
struct VXTagClass<TAG_DEFINEFONT2> {
    using Class = VXSwfDefineFont2Tag;
};
template <>
struct VXTagClass<TAG_EXPORTASSETS> {
    using Class = VXSwfExportAssetsTag;
};
template <>
struct VXTagClass<TAG_DOINITACTION> {
    using Class = VXSwfDoInitActionTag;
};
template <>
struct VXTagClass<TAG_ENABLEDEBUGGER2> {
    using Class = VXSwfEnableDebugger2Tag;
};
template <>
struct VXTagClass<TAG_FILEATTRIBUTES> {
    using Class = VXSwfFileAttributesTag;
};
template <>
struct VXTagClass<TAG_PLACEOBJECT3> {
    using Class = VXSwfPlaceObject3Tag;
};
template <>
struct VXTagClass<TAG_CSMTEXTSETTINGS> {
    using Class = VXSwfCSMTextSettingTag;
};
template <>
struct VXTagClass<TAG_DEFINEFONT3> {
    using Class = VXSwfDefineFont2Tag;
};
template <>
struct VXTagClass<TAG_SYMBOLCLASS> {
    using Class = VXSwfSymbolClassTag;
};
template <>
struct VXTagClass<TAG_DOABC> {
    using Class = VXSwfDoABCTag;
};
template <>
struct VXTagClass<TAG_DEFINESHAPE4> {
    using Class = VXSwfDefineShapeTag;
};
template <>
struct VXTagClass<TAG_DEFINEBINARYDATA> {
    using Class = VXSwfDefineBinaryDataTag;
};
template <>
struct VXTagClass<TAG_DEFINEFONTNAME> {
    using Class = VXSwfDefineFontNameTag;
};
template <>
struct VXTagClass<TAG_VXSPECIAL1> {
    using Class = VXSwfVXSpecialTag;
};
template <>
struct VXTagClass<TAG_VXSPECIAL2> {
    using Class = VXSwfVXSpecialTag;
};
template <>
struct VXTagClass<TAG_VXSPECIAL3> {
    using Class = VXSwfVXSpecialTag;
};
template <>
struct VXTagClass<TAG_VXSPECIAL4> {
    using Class = VXSwfVXSpecialTag;
};

/// A new tag of that class, which the caller owns.
template <enuTagType Type>
typename VXTagClass<Type>::Class* VXCreateTag() {
    // The one class that only a load makes.
    constexpr short kIsAsLoaded = Type == TAG_DEFINEBUTTONSOUND ? 1 : 0;
    return static_cast<typename VXTagClass<Type>::Class*>(
        VXSwfTagFactory::CreateTagOfType(Type, kIsAsLoaded, 0));
}
