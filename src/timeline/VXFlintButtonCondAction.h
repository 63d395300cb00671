#pragma once

#include "bitstream/VXBitStream.h"
#include "memory/VXPool.h"
#include "platform/VXExport.h"
#include "scripting/VXFlintActionRecords.h"

/// What a button does on some of its transitions.
///
///     CondActionSize u16                    distance to the next condition, 0 in the last
///     CondIdleToOverDown ub[1], CondOutDownToIdle ub[1], CondOutDownToOverDown ub[1],
///     CondOverDownToOutDown ub[1], CondOverDownToOverUp ub[1], CondOverUpToOverDown ub[1],
///     CondOverUpToIdle ub[1], CondIdleToOverUp ub[1]
///     CondKeyPress ub[7], CondOverDownToIdle ub[1]
///     Actions
class VXSWF_API VXFlintButtonCondAction : public VXPooled {
public:
    VXErrorCodeEnum LoadFromStream(VXBitStream& in);
    VXErrorCodeEnum DumpToStream(VXBitStream& out) const;
    /// Writes `value` at `position` and leaves the stream behind it.
    static void ResetOffset(VXBitStream& out, int position, unsigned short value);

    unsigned short CondActionSize = 0;
    unsigned int CondKeyPress = 0;  ///< of `VXKeyCodeEnum`, 0 for none
    short CondOverDownToIdle = 0;
    short CondIdleToOverDown = 0;
    short CondOutDownToIdle = 0;
    short CondOutDownToOverDown = 0;
    short CondOverDownToOverUp = 0;
    short CondOverUpToOverDown = 0;
    short CondOverUpToIdle = 0;
    short CondIdleToOverUp = 0;
    short CondOverDownToOutDown = 0;
    VXFlintActionRecords Actions;
};
