#include "kit/VXProgress.h"

#include <algorithm>
#include <utility>

#include "platform/VXString.h"

namespace {

constexpr unsigned int kStep = 65536;  // bytes between two calls

std::uint64_t MeasureStream(IVXStream& stream) {
    const unsigned int position = stream.Tell();
    stream.Seek(0, kVXSeekFromEnd);
    const unsigned int length = stream.Tell();
    // An offset is an int, so the way back may take more than one step.
    stream.Seek(0, kVXSeekFromStart);
    for (unsigned int left = position; left != 0;) {
        const unsigned int step = std::min(left, 0x7FFFFFFFu);
        stream.Seek(static_cast<int>(step), kVXSeekFromCurrent);
        left -= step;
    }
    return length;
}

}  // namespace

VXProgressStream::VXProgressStream(IVXStream& stream, VXProgress progress)
    : m_Stream(stream), m_Progress(std::move(progress)), m_Unreported(kStep) {
    if (stream.IsReading()) m_Length = MeasureStream(stream);
}

VXProgressStream::~VXProgressStream() = default;

bool VXProgressStream::Report(unsigned int moved) {
    m_Unreported += moved;
    if (m_Unreported < kStep || m_IsStopped) return !m_IsStopped;
    m_Unreported = 0;
    m_IsStopped = m_Progress && !m_Progress(m_Stream.Tell(), m_Stream.IsReading() ? m_Length : 0);
    return !m_IsStopped;
}

int VXProgressStream::XferByte(unsigned char* data, int count) {
    if (data == nullptr || !Report(0)) return 0;
    int done = 0;
    while (done < count) {
        const int wanted = std::min(count - done, static_cast<int>(kStep));
        const int got = m_Stream.XferByte(data + done, wanted);
        done += got;
        if (got != wanted || !Report(static_cast<unsigned int>(got))) break;
    }
    return done;
}

template <typename Value>
int VXProgressStream::Pass(int (IVXStream::*transfer)(Value&), Value& value) {
    return Report(sizeof value) ? (m_Stream.*transfer)(value) : 0;
}

int VXProgressStream::XferByte(unsigned char& value) { return Pass(&IVXStream::XferByte, value); }
int VXProgressStream::XferString(VXString& value) { return Pass(&IVXStream::XferString, value); }
int VXProgressStream::XferBool(bool& value) { return Pass(&IVXStream::XferBool, value); }
int VXProgressStream::XferBool(short& value) { return Pass(&IVXStream::XferBool, value); }
int VXProgressStream::XferInt16(std::int16_t& value) { return Pass(&IVXStream::XferInt16, value); }
int VXProgressStream::XferInt16(std::uint16_t& value) { return Pass(&IVXStream::XferInt16, value); }
int VXProgressStream::XferInt32(std::int32_t& value) { return Pass(&IVXStream::XferInt32, value); }
int VXProgressStream::XferInt32(std::uint32_t& value) { return Pass(&IVXStream::XferInt32, value); }
int VXProgressStream::XferInt64(std::int64_t& value) { return Pass(&IVXStream::XferInt64, value); }
int VXProgressStream::XferID(std::int32_t& value) { return Pass(&IVXStream::XferID, value); }
int VXProgressStream::XferID(std::uint32_t& value) { return Pass(&IVXStream::XferID, value); }
int VXProgressStream::XferPropertyID(std::int32_t& value) { return Pass(&IVXStream::XferPropertyID, value); }
int VXProgressStream::XferPropertyID(std::uint32_t& value) { return Pass(&IVXStream::XferPropertyID, value); }
int VXProgressStream::XferRealNumber(double& value) { return Pass(&IVXStream::XferRealNumber, value); }
int VXProgressStream::XferRealNumber(float& value) { return Pass(&IVXStream::XferRealNumber, value); }

int VXProgressStream::GetStreamState() {
    return m_IsStopped ? static_cast<int>(kVXStreamFailed) : m_Stream.GetStreamState();
}
