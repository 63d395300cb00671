#pragma once

#include <cstdint>
#include <functional>

#include "platform/IVXStream.h"

/// Told how far a stream is: its position in bytes, and its length where it is read, 0 where it is written.
/// False stops it.
using VXProgress = std::function<bool(std::uint64_t done, std::uint64_t all)>;

/// Reports and can stop whatever goes through a stream: loads, dumps and merges. From the stop on nothing is
/// moved and the stream counts as failed, so that the load or dump fails too.
///
/// The callback is called at the start and behind every 64 KiB. A load takes its stream in first and decodes it
/// then, which is not reported; nor is the temporary file of a `VXFlintFile` that is written compressed. Who
/// combines movies gives each source such a stream.
class VXSWF_API VXProgressStream : public IVXReadWriteStream {
public:
    /// `stream` must outlive this one. An empty `progress` reports nothing.
    VXProgressStream(IVXStream& stream, VXProgress progress);
    ~VXProgressStream() override;

    bool IsStopped() const { return m_IsStopped; }

    int XferByte(unsigned char* data, int count) override;
    int XferByte(unsigned char& value) override;
    int XferString(VXString& value) override;
    int XferBool(bool& value) override;
    int XferBool(short& value) override;
    int XferInt16(std::int16_t& value) override;
    int XferInt16(std::uint16_t& value) override;
    int XferInt32(std::int32_t& value) override;
    int XferInt32(std::uint32_t& value) override;
    int XferInt64(std::int64_t& value) override;
    int XferID(std::int32_t& value) override;
    int XferID(std::uint32_t& value) override;
    int XferPropertyID(std::int32_t& value) override;
    int XferPropertyID(std::uint32_t& value) override;
    int XferRealNumber(double& value) override;
    int XferRealNumber(float& value) override;
    void Comment(const char* text) override { m_Stream.Comment(text); }
    int Seek(int offset, VXSeekFromWhere origin) override { return m_Stream.Seek(offset, origin); }
    unsigned int Tell() override { return m_Stream.Tell(); }
    void SetEndOfStream() override { m_Stream.SetEndOfStream(); }
    void Flush() override { m_Stream.Flush(); }
    int GetStreamState() override;
    bool IsReading() const override { return m_Stream.IsReading(); }
    bool IsWriting() const override { return m_Stream.IsWriting(); }
    void SetSwapping(short swap) override { m_Stream.SetSwapping(swap); }
    short GetSwapping() const override { return m_Stream.GetSwapping(); }
    int Open() override { return m_Stream.Open(); }
    void Close() override { m_Stream.Close(); }
    void SetMode(Mode mode) override { m_Stream.SetMode(mode); }
    Mode GetMode() const override { return m_Stream.GetMode(); }
    void Destroy() override { delete this; }

private:
    template <typename Value>
    int Pass(int (IVXStream::*transfer)(Value&), Value& value);
    /// False once the callback has said so.
    bool Report(unsigned int moved);

    IVXStream& m_Stream;
    VXProgress m_Progress;
    std::uint64_t m_Length = 0;
    unsigned int m_Unreported;
    bool m_IsStopped = false;
};
