#pragma once

#include <vector>

#include "bitstream/VXBitStream.h"
#include "platform/VXExport.h"

/// One point of a sound's envelope: Pos44 u32, LeftLevel u16, RightLevel u16.
class VXSWF_API VXFlintSoundEnvelope {
public:
    /// 1 when a field is not there whole.
    VXErrorCodeEnum LoadFromStream(VXBitStream& in);
    VXErrorCodeEnum DumpToStream(VXBitStream& out) const;

    unsigned int Pos44 = 0;         ///< samples at 44 kHz, whatever the sound's own rate
    unsigned short LeftLevel = 0;   ///< 0 to 32768
    unsigned short RightLevel = 0;  ///< 0 to 32768
};

/// How a sound is played, the format's SOUNDINFO:
///
///     ub[2] = 0, SyncStop ub[1], SyncNoMultiple ub[1]
///     HasEnvelope ub[1], HasLoops ub[1], HasOutPoint ub[1], HasInPoint ub[1]
///     InPoint u32                                      when HasInPoint
///     OutPoint u32                                     when HasOutPoint
///     LoopCount u16                                    when HasLoops
///     EnvPoints u8, EnvPoints × VXFlintSoundEnvelope   when HasEnvelope
class VXSWF_API VXFlintSoundInfo {
public:
    /// Appends the points that were read whole to those that are there.
    VXErrorCodeEnum LoadFromStream(VXBitStream& in);
    /// Sets `EnvPoints` to the number of points, cut to 8 bits, and writes every point.
    VXErrorCodeEnum DumpToStream(VXBitStream& out);

    short Reserved1 = 0;       ///< as loaded; written as 0
    short Reserved2 = 0;       ///< as loaded; written as 0
    short SyncStop = 0;        ///< stops the sound instead of starting it
    short SyncNoMultiple = 0;  ///< does not start a sound that plays already
    short HasEnvelope = 0;
    short HasLoops = 0;
    short HasOutPoint = 0;
    short HasInPoint = 0;
    unsigned int InPoint = 0;   ///< samples at 44 kHz
    unsigned int OutPoint = 0;  ///< samples at 44 kHz
    unsigned short LoopCount = 0;
    unsigned char EnvPoints = 0;
    std::vector<VXFlintSoundEnvelope> EnvelopeRecords;
};
