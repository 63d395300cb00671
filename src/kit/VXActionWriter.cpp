#include "kit/VXActionWriter.h"

#include <bit>
#include <utility>

namespace {

constexpr std::size_t kLongestPayload = 65535;
constexpr unsigned int kFirstCodeWithPayload = 0x80;

// Types of pushed values.
constexpr char kPushText = 0;
constexpr char kPushNull = 2;
constexpr char kPushUndefined = 3;
constexpr char kPushRegister = 4;
constexpr char kPushBoolean = 5;
constexpr char kPushDouble = 6;
constexpr char kPushInteger = 7;
constexpr char kPushConstant8 = 8;
constexpr char kPushConstant16 = 9;

void AppendWord(std::string& bytes, std::size_t value) {
    bytes += static_cast<char>(value & 0xFF);
    bytes += static_cast<char>(value >> 8 & 0xFF);
}

void AppendDWord(std::string& bytes, std::uint64_t value) {
    AppendWord(bytes, value & 0xFFFF);
    AppendWord(bytes, value >> 16 & 0xFFFF);
}

void AppendText(std::string& bytes, std::string_view text) {
    bytes += text.substr(0, text.find('\0'));
    bytes += '\0';
}

}  // namespace

VXActionWriter::VXActionWriter() = default;
VXActionWriter::~VXActionWriter() = default;
VXActionWriter::VXActionWriter(const VXActionWriter&) = default;
VXActionWriter& VXActionWriter::operator=(const VXActionWriter&) = default;

void VXActionWriter::Fail(std::string text) {
    if (m_ErrorText.empty()) m_ErrorText = std::move(text);
}

VXActionWriter& VXActionWriter::Do(VXActionCodeEnum code, std::string_view payload) {
    const bool hasPayload = code >= kFirstCodeWithPayload;
    if (code == kVXActionEnd) {
        Fail("the end of a script is not written as an action");
    } else if (!hasPayload && !payload.empty()) {
        Fail("action " + std::to_string(code) + " has no payload");
    } else if (payload.size() > kLongestPayload) {
        Fail("the payload of action " + std::to_string(code) + " is longer than 65535 bytes");
    } else {
        m_Bytes += static_cast<char>(code);
        if (hasPayload) AppendWord(m_Bytes, payload.size());
        m_Bytes += payload;
    }
    return *this;
}

void VXActionWriter::AppendBoolean(std::string& payload, bool value) {
    payload += kPushBoolean;
    payload += value ? '\1' : '\0';
}

void VXActionWriter::AppendInteger(std::string& payload, std::int32_t value) {
    payload += kPushInteger;
    AppendDWord(payload, static_cast<std::uint32_t>(value));
}

void VXActionWriter::AppendReal(std::string& payload, double value) {
    // The upper half comes first, each half with its low byte first.
    const auto bits = std::bit_cast<std::uint64_t>(value);
    payload += kPushDouble;
    AppendDWord(payload, bits >> 32);
    AppendDWord(payload, bits);
}

void VXActionWriter::Append(std::string& payload, std::string_view text) {
    payload += kPushText;
    AppendText(payload, text);
}

void VXActionWriter::Append(std::string& payload, const char* text) {
    Append(payload, std::string_view(text == nullptr ? "" : text));
}

void VXActionWriter::Append(std::string& payload, const VXString& text) {
    Append(payload, std::string_view(text.GetUTF8String()));
}

void VXActionWriter::Append(std::string& payload, std::nullptr_t) { payload += kPushNull; }

void VXActionWriter::Append(std::string& payload, VXUndefined) { payload += kPushUndefined; }

void VXActionWriter::Append(std::string& payload, VXRegister place) {
    payload += kPushRegister;
    payload += static_cast<char>(place.number);
}

void VXActionWriter::Append(std::string& payload, VXConstant constant) {
    if (constant.index <= 0xFF) {
        payload += kPushConstant8;
        payload += static_cast<char>(constant.index);
    } else {
        payload += kPushConstant16;
        AppendWord(payload, constant.index);
    }
}

VXActionWriter& VXActionWriter::SetConstants(std::initializer_list<std::string_view> texts) {
    std::string payload;
    AppendWord(payload, texts.size());
    for (const std::string_view text : texts) AppendText(payload, text);
    return Do(kVXActionConstantPool, payload);
}

VXActionWriter& VXActionWriter::GotoLabel(std::string_view label) {
    std::string payload;
    AppendText(payload, label);
    return Do(kVXActionGotoLabel, payload);
}

VXActionWriter& VXActionWriter::Label(std::string_view label) {
    if (!m_Labels.emplace(label, m_Bytes.size()).second)
        Fail("label \"" + std::string(label) + "\" stands twice");
    return *this;
}

VXActionWriter& VXActionWriter::JumpBy(VXActionCodeEnum code, std::string_view label) {
    Do(code, std::string_view("\0\0", 2));
    m_References.push_back({m_Bytes.size() - 2, std::string(label)});
    return *this;
}

VXActionWriter& VXActionWriter::DefineFunction(std::string_view name,
                                               std::initializer_list<std::string_view> arguments,
                                               const VXActionWriter& body) {
    std::string payload;
    AppendText(payload, name);
    AppendWord(payload, arguments.size());
    for (const std::string_view argument : arguments) AppendText(payload, argument);
    return DoAround(kVXActionDefineFunction, std::move(payload), body);
}

VXActionWriter& VXActionWriter::With(const VXActionWriter& body) { return DoAround(kVXActionWith, {}, body); }

VXActionWriter& VXActionWriter::DoAround(VXActionCodeEnum code, std::string payload,
                                         const VXActionWriter& body) {
    // The body stands behind the action, which counts its bytes, and has no end of its own.
    std::string bytes;
    if (body.GetBytes(bytes) != kVXSuccess) {
        Fail(body.GetErrorText());
    } else if (bytes.size() > kLongestPayload) {
        Fail("a body inside action " + std::to_string(code) + " is longer than 65535 bytes");
    } else {
        AppendWord(payload, bytes.size());
        Do(code, payload);
        m_Bytes += bytes;
    }
    return *this;
}

std::string VXActionWriter::GetErrorText() const {
    if (!m_ErrorText.empty()) return m_ErrorText;
    for (const auto& [offset, label] : m_References) {
        const auto place = m_Labels.find(label);
        if (place == m_Labels.end()) return "there is no label \"" + label + '"';
        const auto distance =
            static_cast<std::int64_t>(place->second) - static_cast<std::int64_t>(offset) - 2;
        if (distance < INT16_MIN || distance > INT16_MAX)
            return "label \"" + label + "\" is " + std::to_string(distance) +
                   " bytes away, too far for a jump";
    }
    return {};
}

VXErrorCodeEnum VXActionWriter::GetBytes(std::string& bytes) const {
    if (!GetErrorText().empty()) return kVXFailure;
    bytes = m_Bytes;
    for (const auto& [offset, label] : m_References) {
        const std::size_t distance = m_Labels.find(label)->second - offset - 2;
        bytes[offset] = static_cast<char>(distance & 0xFF);
        bytes[offset + 1] = static_cast<char>(distance >> 8 & 0xFF);
    }
    return kVXSuccess;
}

VXErrorCodeEnum VXActionWriter::AddTo(VXFlintActionRecords& actions) const {
    std::string bytes;
    VX_RETURN_IF_FAILED(GetBytes(bytes));
    bytes += '\0';
    VXBitStream in;
    in.LoadFromAllocedMem(reinterpret_cast<const unsigned char*>(bytes.data()),
                          static_cast<unsigned int>(bytes.size()));
    return actions.LoadFromStream(in);
}

VXErrorCodeEnum VXActionWriter::AddTo(VXFlintClipActionRecord& event) const {
    VX_RETURN_IF_FAILED(AddTo(event.Actions));
    VXBitStream bytes;
    VXIgnore(event.Actions.DumpToStream(bytes));  // memory takes everything
    event.ActionRecordSize = bytes.GetSize() + (event.EventFlags.ClipEventKeyPress != 0 ? 1 : 0);
    return kVXSuccess;
}
