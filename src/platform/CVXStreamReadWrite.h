#pragma once

#include <cstddef>
#include <memory>

#include "platform/IVXStream.h"

class VXStreamMedium;

/// A stream over memory of its own or over a file. Files are buffered, so that a word written is not a system
/// call; `Flush`, `Close` and destruction bring the buffer out. Whoever must know that a file is whole calls
/// `Flush` and asks `GetStreamState`: a failure, once it has occurred, is answered from then on. A new stream
/// reads.
///
/// Offsets and sizes go up to 2^32 − 1, and a write that would lead further is cut short; `Seek` takes a
/// signed int, so a target beyond 2^31 − 1 is reached in steps. A block in memory doubles when it is full,
/// and a gap left by a seek costs nothing until something is written behind it.
class VXPLATFORM_API CVXStreamReadWrite : public IVXReadWriteStream {
public:
    enum FileAccess : int {
        kOpenExisting = 0,   ///< read only
        kCreateOrEmpty = 1,  ///< read and write, the file made or cut to nothing
    };

    /// An empty stream in memory.
    CVXStreamReadWrite();
    /// A stream in memory that starts with a copy of `size` bytes, positioned at 0.
    CVXStreamReadWrite(const void* data, std::size_t size);
    /// A stream over the file `path`, in the system's own encoding of file names (UTF-8 on Windows). `Open` answers 0 when the
    /// file could not be opened; every other operation then behaves as on an empty stream that takes no data.
    CVXStreamReadWrite(const char* path, FileAccess access);
    /// Takes over the descriptor of an open file that can seek and is not in append mode, and closes it in
    /// the end. The stream starts at the start of the file, wherever the descriptor stands.
    explicit CVXStreamReadWrite(int descriptor);
    ~CVXStreamReadWrite() override;

    CVXStreamReadWrite(const CVXStreamReadWrite&) = delete;
    CVXStreamReadWrite& operator=(const CVXStreamReadWrite&) = delete;

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
    void Comment(const char* text) override;
    int Seek(int offset, VXSeekFromWhere origin) override;
    unsigned int Tell() override;
    void SetEndOfStream() override;
    void Flush() override;
    int GetStreamState() override;
    bool IsReading() const override;
    bool IsWriting() const override;
    void SetSwapping(short swap) override;
    short GetSwapping() const override;
    int Open() override;
    /// A file is given up, and the stream is like one that could not be opened; memory stays as it is.
    void Close() override;
    void SetMode(Mode mode) override;
    Mode GetMode() const override;
    void Destroy() override;

    /// The bytes of a stream in memory, `GetMemorySize` of them, valid until the next write. Null and 0 for a
    /// file.
    const unsigned char* GetMemory() const;
    std::size_t GetMemorySize() const;

protected:
    explicit CVXStreamReadWrite(std::unique_ptr<VXStreamMedium> medium);

private:
    std::size_t Xfer(unsigned char* data, std::size_t count);
    template <class Integer>
    int XferInteger(Integer& value);
    template <class Integer, class Real>
    int XferReal(Real& value);
    template <class Flag>
    int XferFlag(Flag& value);

    std::unique_ptr<VXStreamMedium> m_Medium;
    Mode m_Mode = kRead;
    short m_Swapping = 0;
};
