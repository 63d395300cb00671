#pragma once

#include <vector>

#include "bitstream/VXBitStream.h"
#include "memory/VXPool.h"
#include "memory/VXSharedVector.h"
#include "platform/VXExport.h"
#include "scripting/VXFlintActionRecords.h"

/// The events of a placed sprite that a handler serves, each 1 or 0, in the order of the wire:
///
///     version below 6:  the first 16 as ub[1]
///     from 6 on:        all 32 as ub[1]
class VXSWF_API VXFlintClipEventFlags {
public:
    VXFlintClipEventFlags() = default;
    VXFlintClipEventFlags(const VXFlintClipEventFlags&) = default;
    VXFlintClipEventFlags& operator=(const VXFlintClipEventFlags&) = default;
    virtual ~VXFlintClipEventFlags();

    /// Below version 6 the last 16 flags become 0.
    VXErrorCodeEnum LoadFromStream(VXBitStream& in, unsigned char version);
    /// Kept: always all 32, whatever version they came from.
    VXErrorCodeEnum DumpToStream(VXBitStream& out) const;

    short ClipEventKeyUp = 0;
    short ClipEventKeyDown = 0;
    short ClipEventMouseUp = 0;
    short ClipEventMouseDown = 0;
    short ClipEventMouseMove = 0;
    short ClipEventUnload = 0;
    short ClipEventEnterFrame = 0;
    short ClipEventLoad = 0;
    short ClipEventDragOver = 0;
    short ClipEventRollOut = 0;
    short ClipEventRollOver = 0;
    short ClipEventReleaseOutside = 0;
    short ClipEventRelease = 0;
    short ClipEventPress = 0;
    short ClipEventInitialize = 0;
    short ClipEventData = 0;
    short Reserved1[6] = {};  ///< kept bit for bit, as is `Reserved2`
    short ClipEventKeyPress = 0;
    short ClipEventDragOut = 0;
    short Reserved2[8] = {};
};

/// One event handler.
///
///     EventFlags VXFlintClipEventFlags
///     ActionRecordSize u32
///     KeyCode u8                        when EventFlags has ClipEventKeyPress
///     Actions VXFlintActionRecords      up to their own end
class VXSWF_API VXFlintClipActionRecord : public VXPooled {
public:
    VXFlintClipActionRecord() = default;
    VXFlintClipActionRecord(const VXFlintClipActionRecord&) = default;
    VXFlintClipActionRecord& operator=(const VXFlintClipActionRecord&) = default;
    virtual ~VXFlintClipActionRecord();

    VXErrorCodeEnum LoadFromStream(VXBitStream& in, unsigned char version);
    VXErrorCodeEnum DumpToStream(VXBitStream& out) const;

    VXFlintClipEventFlags EventFlags;
    /// Length of what follows it, in bytes, as a player would use it to skip the handler.
    ///
    /// Kept: a load does not look at it and a dump does not bring it up to date. Whoever changes the actions
    /// does.
    unsigned int ActionRecordSize = 0;
    unsigned char KeyCode = 0;  ///< of `VXKeyCodeEnum`
    VXFlintActionRecords Actions;

private:
    template <typename T>
    friend class VXSharedVector;

    VXHolderCount m_Holders;
};

/// The event handlers of a placed sprite.
///
///     Reserved u16
///     AllEventFlags VXFlintClipEventFlags
///     VXFlintClipActionRecord ...
///     0 u16 below version 6, u32 from 6 on
///
/// A dump takes the form of version 6 in every case. The handlers are owned; copies share them, and the last
/// copy deletes a handler. A host adds one as a plain pointer:
/// `ClipActionRecords.push_back(new VXFlintClipActionRecord)`.
class VXSWF_API VXFlintClipActions {
public:
    VXFlintClipActions() = default;
    VXFlintClipActions(const VXFlintClipActions&) = default;
    VXFlintClipActions& operator=(const VXFlintClipActions&) = default;
    virtual ~VXFlintClipActions();

    /// Appends what it reads. On failure the handlers that were read whole stay.
    VXErrorCodeEnum LoadFromStream(VXBitStream& in, unsigned char version);
    VXErrorCodeEnum DumpToStream(VXBitStream& out) const;

    short IsNonEmpty() const { return ClipActionRecords.empty() ? short{0} : short{1}; }

    unsigned short Reserved = 0;          ///< kept as read
    VXFlintClipEventFlags AllEventFlags;  ///< as read; not worked out from the handlers
    VXSharedVector<VXFlintClipActionRecord> ClipActionRecords;
    unsigned int ClipActionEndFlag = 0;  ///< the last word that a load looked at for the end
};
