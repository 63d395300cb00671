#pragma once

#include <cstdint>

#include "platform/VXExport.h"
#include "platform/VXTypes.h"

class VXString;

/// Where a seek counts from.
enum VXSeekFromWhere : int {
    kVXSeekFromStart = 1,
    kVXSeekFromCurrent = 2,
    kVXSeekFromEnd = 4,
};

/// What a stream can say of itself.
enum VXStreamState : int {
    kVXStreamGood = 0,
    kVXStreamAtEnd = 1,   ///< no data is left to read
    kVXStreamFailed = 2,  ///< bytes were refused or lost, now or at any time before
};

/// The host's byte stream. A stream has one direction at a time, its mode, and one position that both
/// directions share. Every `Xfer` operation moves bytes in the direction of the mode: into the arguments
/// while reading, out of them while writing. Integers are little-endian unless swapping is on.
///
/// `XferByte` answers how many bytes it moved. The typed transfers answer 1 when the whole value was moved
/// and 0 otherwise; a value that could not be read whole is left as it was.
///
/// The operations stand in the order that hosts rely on.
class VXPLATFORM_API IVXStream {
public:
    enum Mode : int {
        kRead = 0,
        kWrite = 1,
    };

    virtual ~IVXStream();

    /// A negative count and a null pointer move nothing. A short count means the end of the data, an error,
    /// or a medium that is full.
    virtual int XferByte(unsigned char* data, int count) = 0;
    virtual int XferByte(unsigned char& value) = 0;
    /// On the wire: the length in UTF-8 bytes u32, then the bytes. A length beyond the end of the data
    /// answers 0.
    virtual int XferString(VXString& value) = 0;
    /// On the wire: one byte, 1 or 0; any other value reads as 1.
    virtual int XferBool(bool& value) = 0;
    virtual int XferBool(short& value) = 0;
    virtual int XferInt16(std::int16_t& value) = 0;
    virtual int XferInt16(std::uint16_t& value) = 0;
    virtual int XferInt32(std::int32_t& value) = 0;
    virtual int XferInt32(std::uint32_t& value) = 0;
    virtual int XferInt64(std::int64_t& value) = 0;
    /// An identifier is carried as a 32-bit integer.
    virtual int XferID(std::int32_t& value) = 0;
    virtual int XferID(std::uint32_t& value) = 0;
    /// A property identifier is carried as a 32-bit integer.
    virtual int XferPropertyID(std::int32_t& value) = 0;
    virtual int XferPropertyID(std::uint32_t& value) = 0;
    /// IEEE 754 binary64 and binary32, in the byte order of the stream.
    virtual int XferRealNumber(double& value) = 0;
    virtual int XferRealNumber(float& value) = 0;
    /// A remark for streams that people read; others drop it.
    virtual void Comment(const char* text) = 0;

    /// Answers 1, or 0 for a target before the start or an unknown origin, which leaves the position as it
    /// was. A target behind the end is allowed: a write there fills the gap with zeros.
    virtual int Seek(int offset, VXSeekFromWhere origin) = 0;
    /// Offset from the start, in bytes.
    virtual unsigned int Tell() = 0;
    /// Cuts the stream at the present position. Behind the end it does nothing.
    virtual void SetEndOfStream() = 0;
    virtual void Flush() = 0;
    /// A `VXStreamState`: failed, else at the end as soon as no data is left, also before a read came up
    /// short.
    virtual int GetStreamState() = 0;
    virtual bool IsReading() const = 0;
    virtual bool IsWriting() const = 0;
    /// With a non-zero argument integers and reals are big-endian.
    virtual void SetSwapping(short swap) = 0;
    virtual short GetSwapping() const = 0;
    /// Answers 1 when the stream is ready for use.
    virtual int Open() = 0;
    virtual void Close() = 0;
    /// Changes the direction and keeps contents and position.
    virtual void SetMode(Mode mode) = 0;
    virtual Mode GetMode() const = 0;
    /// Deletes a stream that was made with `new`.
    virtual void Destroy() = 0;
};

/// A stream that can be turned round at any time. Operations that must read back what they wrote ask for this
/// one by a dynamic cast.
class VXPLATFORM_API IVXReadWriteStream : public IVXStream {
public:
    ~IVXReadWriteStream() override;
};
