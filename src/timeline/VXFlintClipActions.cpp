#include "timeline/VXFlintClipActions.h"

#include <utility>

namespace {

using Event = short VXFlintClipEventFlags::*;
using Flags = VXFlintClipEventFlags;

// In the order of the wire; each group has reserved flags behind it.
constexpr Event kFirstEvents[] = {
    &Flags::ClipEventKeyUp,      &Flags::ClipEventKeyDown,   &Flags::ClipEventMouseUp,
    &Flags::ClipEventMouseDown,  &Flags::ClipEventMouseMove, &Flags::ClipEventUnload,
    &Flags::ClipEventEnterFrame, &Flags::ClipEventLoad,      &Flags::ClipEventDragOver,
    &Flags::ClipEventRollOut,    &Flags::ClipEventRollOver,  &Flags::ClipEventReleaseOutside,
    &Flags::ClipEventRelease,    &Flags::ClipEventPress,     &Flags::ClipEventInitialize,
    &Flags::ClipEventData,
};
constexpr Event kLastEvents[] = {&Flags::ClipEventKeyPress, &Flags::ClipEventDragOut};

constexpr unsigned char kFirstVersionWith32 = 6;

/// The word that is 0 at the end and belongs to the next handler's flags otherwise.
VXErrorCodeEnum ReadEndFlag(VXBitStream& in, unsigned char version, unsigned int& flag) {
    if (version >= kFirstVersionWith32) return in.ReadDWord(flag);
    unsigned short shortFlag = 0;
    VX_RETURN_IF_FAILED(in.ReadWord(shortFlag));
    flag = shortFlag;
    return kVXSuccess;
}

}  // namespace

VXFlintClipEventFlags::~VXFlintClipEventFlags() = default;

VXErrorCodeEnum VXFlintClipEventFlags::LoadFromStream(VXBitStream& in, unsigned char version) {
    for (const Event event : kFirstEvents) VX_RETURN_IF_FAILED(in.ReadVXBool16(this->*event));
    if (version < kFirstVersionWith32) {
        for (short& flag : Reserved1) flag = 0;
        for (const Event event : kLastEvents) this->*event = 0;
        for (short& flag : Reserved2) flag = 0;
        return kVXSuccess;
    }
    for (short& flag : Reserved1) VX_RETURN_IF_FAILED(in.ReadVXBool16(flag));
    for (const Event event : kLastEvents) VX_RETURN_IF_FAILED(in.ReadVXBool16(this->*event));
    for (short& flag : Reserved2) VX_RETURN_IF_FAILED(in.ReadVXBool16(flag));
    return kVXSuccess;
}

VXErrorCodeEnum VXFlintClipEventFlags::DumpToStream(VXBitStream& out) const {
    for (const Event event : kFirstEvents) VX_RETURN_IF_FAILED(out.WriteVXBool16(this->*event));
    for (const short flag : Reserved1) VX_RETURN_IF_FAILED(out.WriteVXBool16(flag));
    for (const Event event : kLastEvents) VX_RETURN_IF_FAILED(out.WriteVXBool16(this->*event));
    for (const short flag : Reserved2) VX_RETURN_IF_FAILED(out.WriteVXBool16(flag));
    return kVXSuccess;
}

VXFlintClipActionRecord::~VXFlintClipActionRecord() = default;

VXErrorCodeEnum VXFlintClipActionRecord::LoadFromStream(VXBitStream& in, unsigned char version) {
    VX_RETURN_IF_FAILED(EventFlags.LoadFromStream(in, version));
    VX_RETURN_IF_FAILED(in.ReadDWord(ActionRecordSize));
    if (EventFlags.ClipEventKeyPress != 0) VX_RETURN_IF_FAILED(in.ReadByte(KeyCode));
    return Actions.LoadFromStream(in);
}

VXErrorCodeEnum VXFlintClipActionRecord::DumpToStream(VXBitStream& out) const {
    VX_RETURN_IF_FAILED(EventFlags.DumpToStream(out));
    VX_RETURN_IF_FAILED(out.WriteDWord(ActionRecordSize));
    if (EventFlags.ClipEventKeyPress != 0) VX_RETURN_IF_FAILED(out.WriteByte(KeyCode));
    return Actions.DumpToStream(out);
}

VXFlintClipActions::~VXFlintClipActions() = default;

VXErrorCodeEnum VXFlintClipActions::LoadFromStream(VXBitStream& in, unsigned char version) {
    VX_RETURN_IF_FAILED(in.ReadWord(Reserved));
    VX_RETURN_IF_FAILED(AllEventFlags.LoadFromStream(in, version));
    for (;;) {
        const unsigned int start = in.GetPosition();
        VX_RETURN_IF_FAILED(ReadEndFlag(in, version, ClipActionEndFlag));
        if (ClipActionEndFlag == 0) return kVXSuccess;
        in.SetPosition(start);
        auto record = std::make_unique<VXFlintClipActionRecord>();
        VX_RETURN_IF_FAILED(record->LoadFromStream(in, version));
        ClipActionRecords.Add(std::move(record));
    }
}

VXErrorCodeEnum VXFlintClipActions::DumpToStream(VXBitStream& out) const {
    VX_RETURN_IF_FAILED(out.WriteWord(Reserved));
    VX_RETURN_IF_FAILED(AllEventFlags.DumpToStream(out));
    for (const VXFlintClipActionRecord* record : ClipActionRecords) {
        if (record != nullptr) VX_RETURN_IF_FAILED(record->DumpToStream(out));
    }
    return out.WriteDWord(0);
}
