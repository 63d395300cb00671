#include <typeinfo>

#include "support/Test.h"

namespace {

const std::type_info& ClassOf(unsigned int type, short limitedClasses, unsigned int parsingMode) {
    const TagPtr tag(VXSwfTagFactory::CreateTagOfType(static_cast<VXSwfTagFactory::enuTagType>(type),
                                                      limitedClasses, parsingMode),
                     &VXSwfTagFactory::DeleteTag);
    EXPECT_EQ(tag->GetTagType(), type);
    const VXSwfTag& made = *tag;
    return typeid(made);
}

TEST(VXSwfTagFactory, SomeTypesHaveAnotherClassInAFile) {
    const struct {
        unsigned int type;
        const std::type_info& byCode;
        const std::type_info& inFile;
    } rows[] = {
        {3, typeid(VXSwfFreeCharacterTag), typeid(VXSwfTag)},
        {4, typeid(VXSwfTag), typeid(VXSwfPlaceObjectTag)},
        {17, typeid(VXSwfDefinitionTag), typeid(VXSwfDefineButtonSoundTag)},
        {6, typeid(VXSwfDefinitionTag), typeid(VXSwfTag)},
        {36, typeid(VXSwfDefineBitsLossless2Tag), typeid(VXSwfTag)},
        {75, typeid(VXSwfDefineFont2Tag), typeid(VXSwfTag)},
        {82, typeid(VXSwfDoABCTag), typeid(VXSwfTag)},
        {999, typeid(VXSwfVXSpecialTag), typeid(VXSwfTag)},
        {76, typeid(VXSwfSymbolClassTag), typeid(VXSwfSymbolClassTag)},
        {1023, typeid(VXSwfTag), typeid(VXSwfTag)},
        {0xFFFFFFFF, typeid(VXSwfTag), typeid(VXSwfTag)},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(ClassOf(row.type, 0, 0), row.byCode) << row.type;
        EXPECT_EQ(ClassOf(row.type, 1, 0), row.inFile) << row.type;
        EXPECT_EQ(ClassOf(row.type, -1, 0), row.inFile) << row.type;
    }
}

TEST(VXSwfTagFactory, AParsingModeLeavesThreeClasses) {
    for (unsigned int type = 0; type < 1024; ++type) {
        const bool isKnown = type == 26 || type == 39 || type == 69;
        const std::type_info& expected = isKnown ? ClassOf(type, 1, 0) : typeid(VXSwfTag);
        EXPECT_EQ(ClassOf(type, 0, 2), expected) << type;
        EXPECT_EQ(ClassOf(type, 1, 2), expected) << type;
    }
}

TEST(VXSwfTagFactory, TheTypeBehindTheLastIsNoneByCode) {
    EXPECT_EQ(VXSwfTagFactory::CreateTagOfType(VXSwfTagFactory::TAG_RESERVED, 0, 0), nullptr);
    EXPECT_EQ(ClassOf(1024, 1, 0), typeid(VXSwfTag));
    EXPECT_EQ(ClassOf(1024, 0, 1), typeid(VXSwfTag));
    VXSwfTagFactory::DeleteTag(nullptr);
}

}  // namespace
