#include "media/VXSwfDefineButtonSoundTag.h"

#include "framework/VXFlintIDMap.h"

VXSwfDefineButtonSoundTag::VXSwfDefineButtonSoundTag(enuTagType type) : VXSwfControlTag(type) {}

VXSwfDefineButtonSoundTag::~VXSwfDefineButtonSoundTag() = default;

VXErrorCodeEnum VXSwfDefineButtonSoundTag::LoadDataFromStream(VXBitStream& in) {
    VX_RETURN_IF_FAILED(in.ReadWord(ButtonId));
    for (unsigned int i = 0; i < kNumSounds; ++i) {
        VX_RETURN_IF_FAILED(in.ReadWord(ButtonSoundChar[i]));
        // An info that ends early leaves nothing, so that the next ID fails. Behind the last one nothing does.
        if (ButtonSoundChar[i] != 0) VXIgnore(ButtonSoundInfo[i].LoadFromStream(in));
    }
    return kVXSuccess;
}

VXErrorCodeEnum VXSwfDefineButtonSoundTag::DumpToStream(VXBitStream& out) {
    return DumpFields(out, [this](VXBitStream& body) {
        VX_RETURN_IF_FAILED(body.WriteWord(ButtonId));
        for (unsigned int i = 0; i < kNumSounds; ++i) {
            VX_RETURN_IF_FAILED(body.WriteWord(ButtonSoundChar[i]));
            if (ButtonSoundChar[i] != 0) VX_RETURN_IF_FAILED(ButtonSoundInfo[i].DumpToStream(body));
        }
        return kVXSuccess;
    });
}

void VXSwfDefineButtonSoundTag::UpdateReferenceIDs(VXFlintIDMap* map) {
    if (map == nullptr) return;
    const auto update = [map](unsigned short& id) {
        if (id != 0) map->Renumber(id);
    };
    update(ButtonId);
    for (unsigned short& id : ButtonSoundChar) update(id);
}
