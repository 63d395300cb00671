#include "framework/VXSwfTagFactory.h"

#include <gtest/gtest.h>

#include <map>
#include <typeinfo>

#include "support/TagSweep.h"
#include "vxswf.h"

namespace {

struct Classes {
    const std::type_info* byCode;
    const std::type_info* inFile;
};

template <typename ByCode, typename InFile>
Classes Made() {
    return {&typeid(ByCode), &typeid(InFile)};
}

const Classes kRaw = Made<VXSwfTag, VXSwfTag>();

// Every type whose class is not plain in both sets. The rows of 3, 4 and 17 are uneven on purpose.
const std::map<unsigned int, Classes> kTable = {
    {2, Made<VXSwfDefineShapeTag, VXSwfDefineShapeTag>()},
    {3, Made<VXSwfFreeCharacterTag, VXSwfTag>()},
    {4, Made<VXSwfTag, VXSwfPlaceObjectTag>()},
    {5, Made<VXSwfRemoveObjectTag, VXSwfRemoveObjectTag>()},
    {6, Made<VXSwfDefinitionTag, VXSwfTag>()},
    {7, Made<VXSwfDefinitionTag, VXSwfTag>()},
    {9, Made<VXSwfSetBackgroundColorTag, VXSwfTag>()},
    {10, Made<VXSwfDefinitionTag, VXSwfTag>()},
    {11, Made<VXSwfDefineTextTag, VXSwfDefineTextTag>()},
    {12, Made<VXSwfDoActionTag, VXSwfDoActionTag>()},
    {13, Made<VXSwfDefinitionTag, VXSwfTag>()},
    {14, Made<VXSwfDefineSoundTag, VXSwfTag>()},
    {15, Made<VXSwfStartSoundTag, VXSwfTag>()},
    {17, Made<VXSwfDefinitionTag, VXSwfDefineButtonSoundTag>()},
    {20, Made<VXSwfDefinitionTag, VXSwfTag>()},
    {21, Made<VXSwfDefineBitsJpegTag, VXSwfTag>()},
    {22, Made<VXSwfDefineShapeTag, VXSwfDefineShapeTag>()},
    {23, Made<VXSwfDefinitionTag, VXSwfTag>()},
    {26, Made<VXSwfPlaceObject2Tag, VXSwfPlaceObject2Tag>()},
    {28, Made<VXSwfRemoveObjectTag, VXSwfRemoveObjectTag>()},
    {32, Made<VXSwfDefineShapeTag, VXSwfDefineShapeTag>()},
    {33, Made<VXSwfDefineTextTag, VXSwfDefineTextTag>()},
    {34, Made<VXSwfDefineButton2Tag, VXSwfDefineButton2Tag>()},
    {35, Made<VXSwfDefineBitsJpegTag, VXSwfTag>()},
    {36, Made<VXSwfDefineBitsLossless2Tag, VXSwfTag>()},
    {37, Made<VXSwfDefineEditTextTag, VXSwfDefineEditTextTag>()},
    {39, Made<VXSwfDefineSpriteTag, VXSwfDefineSpriteTag>()},
    {46, Made<VXSwfDefinitionTag, VXSwfTag>()},
    {48, Made<VXSwfDefineFont2Tag, VXSwfTag>()},
    {56, Made<VXSwfExportAssetsTag, VXSwfExportAssetsTag>()},
    {59, Made<VXSwfDoInitActionTag, VXSwfDoInitActionTag>()},
    {60, Made<VXSwfDefinitionTag, VXSwfTag>()},
    {62, Made<VXSwfDefinitionTag, VXSwfTag>()},
    {64, Made<VXSwfEnableDebugger2Tag, VXSwfTag>()},
    {69, Made<VXSwfFileAttributesTag, VXSwfFileAttributesTag>()},
    {70, Made<VXSwfPlaceObject3Tag, VXSwfPlaceObject3Tag>()},
    {73, Made<VXSwfDefinitionTag, VXSwfTag>()},
    {74, Made<VXSwfCSMTextSettingTag, VXSwfTag>()},
    {75, Made<VXSwfDefineFont2Tag, VXSwfTag>()},
    {76, Made<VXSwfSymbolClassTag, VXSwfSymbolClassTag>()},
    {82, Made<VXSwfDoABCTag, VXSwfTag>()},
    {83, Made<VXSwfDefineShapeTag, VXSwfDefineShapeTag>()},
    {86, Made<VXSwfDefinitionTag, VXSwfTag>()},
    {87, Made<VXSwfDefineBinaryDataTag, VXSwfTag>()},
    {88, Made<VXSwfDefineFontNameTag, VXSwfTag>()},
    {996, Made<VXSwfVXSpecialTag, VXSwfTag>()},
    {997, Made<VXSwfVXSpecialTag, VXSwfTag>()},
    {998, Made<VXSwfVXSpecialTag, VXSwfTag>()},
    {999, Made<VXSwfVXSpecialTag, VXSwfTag>()},
};

const std::type_info& ClassOf(unsigned int type, short limitedClasses, unsigned int parsingMode) {
    const TagPtr tag(VXSwfTagFactory::CreateTagOfType(static_cast<VXSwfTagFactory::enuTagType>(type),
                                                      limitedClasses, parsingMode),
                     &VXSwfTagFactory::DeleteTag);
    EXPECT_EQ(tag->GetTagType(), type);
    EXPECT_EQ(tag->GetTagLen(), 0u);
    EXPECT_EQ(tag->GetFLVersion(), 0);
    const VXSwfTag& made = *tag;
    return typeid(made);
}

TEST(VXSwfTagFactory, EveryTypeHasItsClass) {
    for (unsigned int type = 0; type < 1024; ++type) {
        const auto row = kTable.find(type);
        const Classes& classes = row == kTable.end() ? kRaw : row->second;
        EXPECT_STREQ(ClassOf(type, 0, 0).name(), classes.byCode->name()) << type;
        EXPECT_STREQ(ClassOf(type, 1, 0).name(), classes.inFile->name()) << type;
        EXPECT_STREQ(ClassOf(type, -1, 0).name(), classes.inFile->name()) << type;
    }
}

TEST(VXSwfTagFactory, AParsingModeLeavesThreeClasses) {
    for (unsigned int type = 0; type < 1024; ++type) {
        const auto row = kTable.find(type);
        const bool isKnown = (type == 26 || type == 39 || type == 69) && row != kTable.end();
        const std::type_info& expected = isKnown ? *row->second.inFile : *kRaw.inFile;
        for (const short limitedClasses : {short{0}, short{1}}) {
            EXPECT_STREQ(ClassOf(type, limitedClasses, 2).name(), expected.name()) << type;
        }
    }
}

TEST(VXSwfTagFactory, TheTypeBehindTheLast) {
    EXPECT_EQ(VXSwfTagFactory::CreateTagOfType(VXSwfTagFactory::TAG_RESERVED, 0, 0), nullptr);
    EXPECT_EQ(ClassOf(1024, 1, 0), typeid(VXSwfTag));
    EXPECT_EQ(ClassOf(1024, 0, 1), typeid(VXSwfTag));
    EXPECT_EQ(ClassOf(0xFFFFFFFF, 0, 0), typeid(VXSwfTag));
    VXSwfTagFactory::DeleteTag(nullptr);
}

}  // namespace
