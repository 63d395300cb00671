#pragma once

#include <cstdint>
#include <memory>

#include "platform/VXExport.h"

class IVXStream;

/// The header of a frame of MPEG audio (ISO/IEC 11172-3 and 13818-3): four bytes, from the top bit on.
///
///     Sync ub[11] = 0x7FF, VersionId ub[2], LayerBits ub[2], Protection ub[1]
///     BitrateIndex ub[4], SampleRateIndex ub[2], Padding ub[1], Private ub[1]
///     ChannelMode ub[2], ModeExtension ub[2], RightsBit ub[1], SourceBit ub[1], Emphasis ub[2]
class VXSWF_API VXSwfMP3FrameHeader {
public:
    static constexpr unsigned int kSize = 4;

    /// Takes whatever the four bytes hold.
    void Unpack(const unsigned char* bytes);

    bool IsMpeg1() const { return VersionId == 3; }
    bool IsMono() const { return ChannelMode == 3; }
    /// 1 to 3; 0 for the invalid one.
    unsigned int GetLayer() const { return (4 - LayerBits) % 4; }
    /// Kilobits a second: 0 for the free format, -1 for the invalid index and without version or layer.
    int GetKilobits() const;
    /// Hertz; -1 for the invalid index and for the reserved version.
    int GetSampleRate() const;
    /// Bytes to the next frame; 0 for a header without version, layer, bit rate or sample rate.
    ///
    /// Kept: Layer III counts as having 1152 samples a frame in MPEG-2 and 2.5 too, so that the answer is the
    /// length of two frames there. A frame of the free format has the length of its padding.
    unsigned int GetFrameLength() const;

    unsigned int Sync = 0;
    unsigned int VersionId = 0;  ///< 3 MPEG-1, 2 MPEG-2, 0 MPEG-2.5, 1 reserved
    unsigned int LayerBits = 0;  ///< 3 Layer I, 2 Layer II, 1 Layer III, 0 invalid
    unsigned int Protection = 0;
    unsigned int BitrateIndex = 0;
    unsigned int SampleRateIndex = 0;
    unsigned int Padding = 0;
    unsigned int Private = 0;
    unsigned int ChannelMode = 0;  ///< 3 is mono
    unsigned int ModeExtension = 0;
    unsigned int RightsBit = 0;
    unsigned int SourceBit = 0;
    unsigned int Emphasis = 0;
};

/// What an encoder of variable bit rate says of the whole sound, in the first frame, behind its side
/// information. Numbers are big-endian here:
///
///     "Xing", Flags u32
///     Frames u32          when bit 0 is set
///     Bytes u32           when bit 1 is set
///     Toc 100 × u8        when bit 2 is set
///     VbrScale u32        when bit 3 is set
class VXSWF_API VXSwfXingInfo {
public:
    static constexpr unsigned int kTocSize = 100;

    unsigned int Flags = 0;
    unsigned int Frames = 0;
    unsigned int Bytes = 0;
    int VbrScale = -1;                 ///< -1 when absent
    unsigned char Toc[kTocSize] = {};  ///< for each percent of the time the place in the file, in 256ths
    /// Of the frame, in hertz; 0 for the invalid index.
    ///
    /// Kept: for MPEG-2.5 that of MPEG-2, twice what it is.
    unsigned int SampleRate = 0;
    short IsMpeg1 = 0;
};

/// Finds the frames of an MP3 file and measures how long it plays. Positions count from the start of the
/// stream; it may stand anywhere, before and afterwards.
class VXSWF_API VXSwfMP3Info {
public:
    static constexpr unsigned int kBlockSize = 1441;

    /// The stream is not owned and must not change its length. Null counts as empty.
    explicit VXSwfMP3Info(IVXStream* stream);
    virtual ~VXSwfMP3Info();
    VXSwfMP3Info(const VXSwfMP3Info&) = delete;
    VXSwfMP3Info& operator=(const VXSwfMP3Info&) = delete;

    /// Bytes of the whole stream.
    std::int64_t GetLength() const { return m_Length; }

    /// Answers the position of the first sync, eleven set bits, from `start` on and unpacks the header there,
    /// whatever else it says. -1 without one, and when the stream does not deliver; `header` then stays as it
    /// was.
    ///
    /// Kept: positions are compared with the bytes that are left behind `start`, less 4, so that a search
    /// from behind the middle of the stream finds nothing.
    std::int64_t FindFrameHeader(std::int64_t start, VXSwfMP3FrameHeader& header);

    /// Fills `Header` from a frame that begins at `bytes` and answers its length without padding; 0 when it
    /// is no frame or the header is not there whole. A frame of the free format is measured by the frames
    /// that follow among the `available` bytes.
    unsigned int SizeFrame(const unsigned char* bytes, unsigned int available);

    /// Samples of one channel, as if every frame had the size of the first one, which `Header` and `Bitrate`
    /// describe afterwards. False when no frame turns up in 32 blocks with a sync, or the stream ends before;
    /// `samples` then stays as it was.
    ///
    /// Kept: Layer I counts 1152 samples a frame too. A variable bit rate is not allowed for, nor is what
    /// stands in front of the first frame.
    bool MeasureQuickly(unsigned int& samples);

    /// Samples of one channel, by a walk from frame to frame: 384 for one of Layer I, else 1152.
    ///
    /// Kept: 1152 also for MPEG-2, and the walk ends where a search does, near the middle of the stream.
    unsigned int MeasureSlowly();

    /// Reads the Xing header of a frame that begins at `block` into `XingInfo`, of which nothing is left when
    /// there is no such header or it does not lie within `length` bytes whole; the answer is then 0, else 1.
    ///
    /// Kept: no measure asks for it.
    short ReadXingInfo(const unsigned char* block, unsigned int length);

    VXSwfMP3FrameHeader Header;               ///< of the frame that was sized last
    unsigned int Bitrate = 0;                 ///< kilobits a second
    std::unique_ptr<VXSwfXingInfo> XingInfo;  ///< null without a Xing header

private:
    class Window;

    unsigned int FindFreeFrameSize(const unsigned char* bytes, unsigned int available) const;
    unsigned int GetBitrate(unsigned int frameSize) const;
    bool ReadOn(unsigned char* target, unsigned int count);
    unsigned int FindFirstFrame();

    IVXStream* Stream;
    std::int64_t m_Length = 0;
    std::int64_t m_Unread = 0;               // of the bytes that the quick measure may ask for
    std::unique_ptr<unsigned char[]> Block;  // kBlockSize bytes, once the quick measure was asked for
    std::unique_ptr<Window> m_Window;        // once a search was asked for
};
