#pragma once

#include "framework/VXSwfControlTag.h"
#include "media/VXFlintSoundInfo.h"

/// Sounds for the state changes of a button.
///
///     type 17:  ButtonId u16
///               four times: ButtonSoundChar u16, ButtonSoundInfo when that is not 0
///
/// The four are over-up to idle, idle to over-up, over-up to over-down and over-down to over-up.
class VXSWF_API VXSwfDefineButtonSoundTag : public VXSwfControlTag {
public:
    static constexpr unsigned int kNumSounds = 4;

    VXErrorCodeEnum DumpToStream(VXBitStream& out) override;
    /// The button, then the sounds. An ID of 0 is not looked up, an answer of 0 leaves the old ID, and null
    /// does nothing.
    void UpdateReferenceIDs(VXFlintIDMap* map) override;
    ~VXSwfDefineButtonSoundTag() override;
    /// 1 when an ID is not there whole.
    ///
    /// Kept: an info that fails is kept as far as it was read and not reported.
    VXErrorCodeEnum LoadDataFromStream(VXBitStream& in) override;

    unsigned short ButtonId = 0;
    unsigned short ButtonSoundChar[kNumSounds] = {};
    VXFlintSoundInfo ButtonSoundInfo[kNumSounds];

private:
    friend class VXSwfTagFactory;
    explicit VXSwfDefineButtonSoundTag(enuTagType type);
};
