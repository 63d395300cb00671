#include "kit/VXScriptBytes_p.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "framework/VXSwfTagFactory.h"
#include "graphics/VXFlintCxForm.h"
#include "graphics/VXFlintMatrix.h"
#include "scripting/VXActionCodes.h"
#include "timeline/VXFlintButtonRecord.h"

namespace {

constexpr std::size_t kLongestPayload = 65535;
constexpr unsigned int kDeepest = 64;  // sprites in sprites
constexpr unsigned int kPlaceObject4 = 94;

/// Reads fields one after the other. What is not there makes it fail, and counts as 0.
class Reader {
public:
    explicit Reader(std::string_view bytes, std::size_t start = 0) : m_Bytes(bytes), m_At(start) {
        if (start > bytes.size()) Fail();
    }
    bool HasFailed() const { return m_HasFailed; }
    std::size_t GetPosition() const { return m_At; }
    std::size_t GetRemaining() const { return m_Bytes.size() - m_At; }
    std::string_view Take(std::size_t count) {
        if (count > GetRemaining()) {
            Fail();
            return {};
        }
        m_At += count;
        return m_Bytes.substr(m_At - count, count);
    }
    unsigned int Number(unsigned int numBytes) {
        unsigned int value = 0;
        unsigned int shift = 0;
        for (const char byte : Take(numBytes)) {
            value |= unsigned{static_cast<unsigned char>(byte)} << shift;
            shift += 8;
        }
        return value;
    }
    /// Up to a NUL, which it passes.
    std::string_view Text() {
        const std::size_t end = m_Bytes.find('\0', m_At);
        if (end == std::string_view::npos) {
            Fail();
            return {};
        }
        const std::string_view text = Take(end - m_At);
        Take(1);
        return text;
    }
    /// A record that loads from a stream.
    template <typename Record>
    void Skip(Record&& record) {
        VXBitStream in;
        const std::string_view rest = m_Bytes.substr(m_At);
        in.LoadFromAllocedMem(reinterpret_cast<const unsigned char*>(rest.data()),
                              static_cast<unsigned int>(rest.size()));
        const bool isGood = record.LoadFromStream(in) == kVXSuccess;
        in.ByteAlignSBits();
        if (isGood) {
            m_At += in.GetPosition();
        } else {
            Fail();
        }
    }

private:
    void Fail() {
        m_HasFailed = true;
        m_At = m_Bytes.size();
    }

    std::string_view m_Bytes;
    std::size_t m_At;
    bool m_HasFailed = false;
};

void PutNumber(std::string& bytes, std::size_t at, std::size_t value, unsigned int numBytes) {
    for (unsigned int i = 0; i < numBytes; ++i) bytes[at + i] = static_cast<char>(value >> (8 * i) & 0xFF);
}

void AppendNumber(std::string& bytes, std::size_t value, unsigned int numBytes) {
    bytes.append(numBytes, '\0');
    PutNumber(bytes, bytes.size() - numBytes, value, numBytes);
}

/// Copies a payload field by field and replaces in its texts.
class PayloadCopy {
public:
    PayloadCopy(std::string_view payload, const std::string& from, const std::string& to)
        : m_In(payload), m_From(from), m_To(to) {}

    void Copy(std::size_t count) { m_Out += m_In.Take(count); }
    unsigned int CopyNumber(unsigned int numBytes) {
        const unsigned int value = m_In.Number(numBytes);
        AppendNumber(m_Out, value, numBytes);
        return value;
    }
    void CopyText() {
        const std::string_view text = m_In.Text();
        if (m_In.HasFailed()) return;
        std::size_t at = 0;
        for (std::size_t hit; (hit = text.find(m_From, at)) != std::string_view::npos; ++m_Hits) {
            m_Out += text.substr(at, hit - at);
            m_Out += m_To;
            at = hit + m_From.size();
        }
        m_Out += text.substr(at);
        m_Out += '\0';
    }
    void CopyAction(unsigned int code);
    /// False when the payload is not as the format has it. It then stays as it is.
    bool IsWhole() const { return !m_In.HasFailed(); }
    bool IsAtEnd() const { return m_In.GetRemaining() == 0 || m_In.HasFailed(); }
    unsigned int GetHits() const { return m_Hits; }
    std::string Finish() {
        Copy(m_In.GetRemaining());
        return std::move(m_Out);
    }

private:
    Reader m_In;
    const std::string& m_From;
    const std::string& m_To;
    std::string m_Out;
    unsigned int m_Hits = 0;
};

void PayloadCopy::CopyAction(unsigned int code) {
    switch (code) {
        case kVXActionGetURL:
            CopyText();
            CopyText();
            break;
        case kVXActionSetTarget:
        case kVXActionGotoLabel:
            CopyText();
            break;
        case kVXActionConstantPool:
            for (unsigned int left = CopyNumber(2); left != 0 && IsWhole(); --left) CopyText();
            break;
        case kVXActionPush: {
            // Bytes behind the type; the type 0 is a text.
            constexpr unsigned char kSizes[] = {0, 4, 0, 0, 1, 1, 8, 4, 1, 2};
            while (!IsAtEnd()) {
                const unsigned int type = CopyNumber(1);
                if (type >= sizeof kSizes) break;  // nobody knows where the next one begins
                if (type == 0) {
                    CopyText();
                } else {
                    Copy(kSizes[type]);
                }
            }
            break;
        }
        case kVXActionDefineFunction:
            CopyText();
            for (unsigned int left = CopyNumber(2); left != 0 && IsWhole(); --left) CopyText();
            break;
        case kVXActionDefineFunction2: {
            CopyText();
            unsigned int left = CopyNumber(2);
            Copy(3);  // number of registers, flags
            for (; left != 0 && IsWhole(); --left) {
                Copy(1);  // register
                CopyText();
            }
            break;
        }
        case kVXActionTry: {
            constexpr unsigned int kCatchesInRegister = 4;
            const unsigned int flags = CopyNumber(1);
            Copy(6);  // sizes
            if ((flags & kCatchesInRegister) == 0) CopyText();
            break;
        }
        default:
            break;
    }
}

struct Action {
    std::size_t start;  // in the old bytes
    std::size_t end;
    std::size_t newStart;
    std::size_t newSize;
    unsigned int code;
    bool isChanged;
};

/// Finds actions, and what stands where after the texts were replaced.
class ScriptCopy {
public:
    ScriptCopy(const std::string& bytes, const std::string& from, const std::string& to)
        : m_Old(bytes), m_From(from), m_To(to) {}

    /// The error, or an empty text.
    std::string Run() {
        for (std::size_t at = 0; at < m_Old.size();) {
            if (!CopyAction(at)) return "a text is longer than 65535 bytes with the actions around it";
            at = m_Actions.back().end;
            // What lies behind the end of the list is none of its actions, unless something leads there.
            if (m_Actions.back().code == kVXActionEnd && at > m_Reach) break;
        }
        m_End = m_Actions.empty() ? 0 : m_Actions.back().end;
        m_NewEnd = m_New.size();
        m_New += std::string_view(m_Old).substr(m_End);
        if (m_Hits == 0) return {};
        for (const Action& action : m_Actions) {
            if (std::string error = Repair(action); !error.empty()) return error;
        }
        return {};
    }
    unsigned int GetHits() const { return m_Hits; }
    std::string& GetBytes() { return m_New; }

private:
    bool CopyAction(std::size_t start) {
        Reader in(m_Old, start);
        Action action{start, 0, m_New.size(), 0, in.Number(1), false};
        std::string_view payload;
        const bool hasPayload = action.code >= 0x80;
        if (hasPayload) payload = in.Take(in.Number(2));
        if (in.HasFailed()) {  // cut
            action.code = kVXActionEnd;
            action.end = m_Old.size();
            m_New += std::string_view(m_Old).substr(start);
        } else {
            action.end = in.GetPosition();
            PayloadCopy copy(payload, m_From, m_To);
            copy.CopyAction(action.code);
            action.isChanged = copy.IsWhole() && copy.GetHits() != 0;
            m_New += static_cast<char>(action.code);
            if (hasPayload) {
                std::string changed;
                if (action.isChanged) changed = copy.Finish();
                const std::string_view bytes = action.isChanged ? changed : payload;
                if (bytes.size() > kLongestPayload) return false;
                if (action.isChanged) m_Hits += copy.GetHits();
                AppendNumber(m_New, bytes.size(), 2);
                m_New += bytes;
            }
            for (const std::int64_t target : TargetsOf(action))
                if (target > 0) m_Reach = std::max(m_Reach, static_cast<std::size_t>(target));
        }
        action.newSize = m_New.size() - action.newStart;
        m_Actions.push_back(action);
        return true;
    }

    /// How the sizes or the distance of an action stand at its end, and what they lead to.
    struct Field {
        std::size_t offset;  // from the start of the action, in the old bytes
        std::int64_t from;
        std::int64_t to;
    };
    std::vector<Field> FieldsOf(const Action& action) const {
        const std::size_t size = action.end - action.start;
        const auto word = [&](std::size_t offset) {
            return static_cast<std::int64_t>(Reader(m_Old, action.start + offset).Number(2));
        };
        const auto end = static_cast<std::int64_t>(action.end);
        switch (action.code) {
            case kVXActionJump:
            case kVXActionIf:
                if (size < 5) break;
                return {{3, end, end + static_cast<std::int16_t>(word(3))}};
            case kVXActionWith:
            case kVXActionDefineFunction:
            case kVXActionDefineFunction2:
                if (size < 5) break;
                return {{size - 2, end, end + word(size - 2)}};
            case kVXActionTry: {
                if (size < 10) break;
                const std::int64_t caught = end + word(4);
                const std::int64_t last = caught + word(6);
                return {{4, end, caught}, {6, caught, last}, {8, last, last + word(8)}};
            }
            default:
                break;
        }
        return {};
    }
    std::vector<std::int64_t> TargetsOf(const Action& action) const {
        std::vector<std::int64_t> targets;
        for (const Field& field : FieldsOf(action)) targets.push_back(field.to);
        return targets;
    }

    /// Where a place of the old bytes went to; nothing for one inside an action that has changed.
    std::optional<std::int64_t> Map(std::int64_t place) const {
        if (place <= 0) return place;
        const auto old = static_cast<std::size_t>(place);
        if (old >= m_End)
            return place + static_cast<std::int64_t>(m_NewEnd) - static_cast<std::int64_t>(m_End);
        const auto behind =
            std::upper_bound(m_Actions.begin(), m_Actions.end(), old,
                             [](std::size_t at, const Action& action) { return at < action.start; });
        const Action& action = *std::prev(behind);
        if (old != action.start && action.isChanged) return std::nullopt;
        return static_cast<std::int64_t>(action.newStart + (old - action.start));
    }

    std::string Repair(const Action& action) {
        const bool isJump = action.code == kVXActionJump || action.code == kVXActionIf;
        for (const Field& field : FieldsOf(action)) {
            const auto from = Map(field.from);
            const auto to = Map(field.to);
            if (!from || !to) return "a jump or block ends inside an action that has changed";
            const std::int64_t distance = *to - *from;
            const bool fits = isJump ? distance >= INT16_MIN && distance <= INT16_MAX
                                     : distance >= 0 && distance <= UINT16_MAX;
            if (!fits)
                return std::string(isJump ? "a jump" : "a function or block") + " would be " +
                       std::to_string(distance) + " bytes long, which is too far";
            const bool isLast = field.offset + 2 == action.end - action.start;
            const std::size_t offset = isLast ? action.newSize - 2 : field.offset;
            PutNumber(m_New, action.newStart + offset, static_cast<std::size_t>(distance), 2);
        }
        return {};
    }

    const std::string& m_Old;
    const std::string& m_From;
    const std::string& m_To;
    std::string m_New;
    std::vector<Action> m_Actions;
    std::size_t m_Reach = 0;  // the furthest that something leads to
    std::size_t m_End = 0;    // of the actions, in the old bytes
    std::size_t m_NewEnd = 0;
    unsigned int m_Hits = 0;
};

/// Bytes of a list of filters, as the record of a button measures it.
std::size_t MeasureFilters(std::string_view bytes) {
    VXFlintButtonRecord record;
    record.HasCxForm = 0;
    std::string in("\x10\0\0\0\0\0", 6);  // filters; no character and depth, an empty matrix
    in += bytes;
    VXBitStream stream;
    stream.LoadFromAllocedMem(reinterpret_cast<const unsigned char*>(in.data()),
                              static_cast<unsigned int>(in.size()));
    VXIgnore(record.LoadFromStream(stream));  // what is there of the list is measured
    return record.RawFilterList.GetSize();
}

}  // namespace

bool VXScriptEdit::Fail(std::string text) {
    if (errorText.empty()) errorText = std::move(text);
    return false;
}

bool VXScriptEdit::EditScript(std::string& bytes) {
    errorText.clear();
    if (!Contains(bytes)) return false;
    ScriptCopy copy(bytes, from, to);
    errorText = copy.Run();
    if (!errorText.empty() || copy.GetHits() == 0) return false;
    hits += copy.GetHits();
    bytes.swap(copy.GetBytes());
    return true;
}

bool VXScriptEdit::EditTail(std::string& bytes, std::size_t start) {
    if (start > bytes.size()) return Fail("the tag ends early");
    std::string script = bytes.substr(start);
    if (!EditScript(script)) return false;
    bytes.replace(start, std::string::npos, script);
    return true;
}

bool VXScriptEdit::EditBody(unsigned int type, std::string& bytes) {
    errorText.clear();
    return Contains(bytes) && EditBody(type, bytes, 0);
}

bool VXScriptEdit::EditBody(unsigned int type, std::string& bytes, unsigned int level) {
    switch (type) {
        case VXSwfTagFactory::TAG_DOACTION:
            return EditTail(bytes, 0);
        case VXSwfTagFactory::TAG_DOINITACTION:
            return EditTail(bytes, 2);
        case VXSwfTagFactory::TAG_DEFINEBUTTON:
            return EditButton(bytes);
        case VXSwfTagFactory::TAG_DEFINEBUTTON2:
            return EditButton2(bytes);
        case VXSwfTagFactory::TAG_PLACEOBJECT2:
        case VXSwfTagFactory::TAG_PLACEOBJECT3:
        case kPlaceObject4:
            return EditPlacement(type, bytes);
        case VXSwfTagFactory::TAG_DEFINESPRITE:
            return EditSprite(bytes, level);
        default:
            return false;
    }
}

bool VXScriptEdit::EditButton(std::string& bytes) {
    Reader in(bytes, 2);
    while (in.Number(1) != 0) {
        in.Take(4);  // character, depth
        in.Skip(VXFlintMatrix());
    }
    return in.HasFailed() ? Fail("a button ends early") : EditTail(bytes, in.GetPosition());
}

bool VXScriptEdit::EditButton2(std::string& bytes) {
    constexpr std::size_t kOffsetField = 3;
    constexpr std::size_t kConditionHeader = 4;  // size, flags
    Reader in(bytes, kOffsetField);
    const std::size_t offset = in.Number(2);
    std::size_t at = kOffsetField + offset;
    if (offset == 0) return false;
    if (at > bytes.size()) return Fail("the conditions of a button lie behind its end");
    std::string out = bytes.substr(0, at);
    const unsigned int before = hits;
    for (bool isLast = false; !isLast;) {
        Reader header(bytes, at);
        const std::size_t size = header.Number(2);
        header.Take(2);
        isLast = size == 0;
        const std::size_t end = isLast ? bytes.size() : at + size;
        if (header.HasFailed() || end > bytes.size() || end < at + kConditionHeader) {
            hits = before;
            return Fail("a condition of a button does not end where it should");
        }
        std::string script = bytes.substr(at + kConditionHeader, end - at - kConditionHeader);
        EditScript(script);
        if (!errorText.empty() || kConditionHeader + script.size() > kLongestPayload) {
            hits = before;
            return Fail("a condition of a button takes more than 65535 bytes");
        }
        AppendNumber(out, isLast ? 0 : kConditionHeader + script.size(), 2);
        out += std::string_view(bytes).substr(at + 2, 2);
        out += script;
        at = end;
    }
    bytes.swap(out);
    return hits != before;
}

bool VXScriptEdit::EditPlacement(unsigned int type, std::string& bytes) {
    constexpr unsigned int kHasClipActions = 0x80;
    Reader in(bytes);
    const unsigned int flags = in.Number(1);
    if ((flags & kHasClipActions) == 0) return false;
    const unsigned int more = type == VXSwfTagFactory::TAG_PLACEOBJECT2 ? 0 : in.Number(1);
    const bool hasCharacter = (flags & 0x02) != 0;
    in.Take(2);                                                                 // depth
    if ((more & 0x08) != 0 || ((more & 0x10) != 0 && hasCharacter)) in.Text();  // class
    if (hasCharacter) in.Take(2);
    if ((flags & 0x04) != 0) in.Skip(VXFlintMatrix());
    if ((flags & 0x08) != 0) {
        VXFlintCxForm transform;
        transform.HasAlpha = 1;
        in.Skip(transform);
    }
    if ((flags & 0x10) != 0) in.Take(2);  // ratio
    if ((flags & 0x20) != 0) in.Text();   // name
    if ((flags & 0x40) != 0) in.Take(2);  // clip depth
    if ((more & 0x01) != 0 && !in.HasFailed())
        in.Take(MeasureFilters(std::string_view(bytes).substr(in.GetPosition())));
    if ((more & 0x02) != 0) in.Take(1);  // blend mode
    if ((more & 0x04) != 0) in.Take(1);  // kept as a bitmap
    if ((more & 0x20) != 0) in.Take(1);  // visible
    if ((more & 0x40) != 0) in.Take(4);  // background
    return in.HasFailed() ? Fail("a placement ends early") : EditEvents(bytes, in.GetPosition(), version);
}

bool VXScriptEdit::EditEvents(std::string& bytes, std::size_t start, unsigned char eventVersion) {
    constexpr unsigned char kFirstVersionWith32 = 6;
    constexpr unsigned int kKeyPress = 1u << 17;
    const unsigned int flagSize = eventVersion >= kFirstVersionWith32 ? 4 : 2;
    const unsigned int before = hits;
    errorText.clear();
    if (!Contains(bytes)) return false;
    Reader in(bytes, start);
    in.Take(2 + flagSize);  // reserved, all events
    std::string out = bytes.substr(0, in.GetPosition());
    for (;;) {
        const unsigned int flags = in.Number(flagSize);
        AppendNumber(out, flags, flagSize);
        if (flags == 0) break;
        const std::string_view event = in.Take(in.Number(4));
        const std::size_t keySize = flagSize == 4 && (flags & kKeyPress) != 0 ? 1 : 0;
        if (in.HasFailed() || event.size() < keySize) break;
        std::string script(event.substr(keySize));
        EditScript(script);
        if (!errorText.empty()) break;
        AppendNumber(out, keySize + script.size(), 4);
        out += event.substr(0, keySize);
        out += script;
    }
    if (in.HasFailed()) Fail("the events of a placement do not end where they should");
    if (!errorText.empty()) {
        hits = before;
        return false;
    }
    out += in.Take(in.GetRemaining());
    bytes.swap(out);
    return hits != before;
}

bool VXScriptEdit::EditSprite(std::string& bytes, unsigned int level) {
    if (level == kDeepest) return Fail("a sprite lies inside 64 others");
    constexpr unsigned int kLongLength = 63;
    const unsigned int before = hits;
    std::string firstError;
    Reader in(bytes, 4);  // behind ID and frame count
    std::string out = bytes.substr(0, in.GetPosition());
    for (;;) {
        const std::size_t start = in.GetPosition();
        const unsigned int header = in.Number(2);
        const unsigned int type = header >> 6;
        const bool isLong = (header & kLongLength) == kLongLength;
        const std::string_view tag = in.Take(isLong ? in.Number(4) : header & kLongLength);
        if (in.HasFailed() || type == VXSwfTagFactory::TAG_END) {
            out += std::string_view(bytes).substr(start);
            break;
        }
        std::string body(tag);
        errorText.clear();
        const bool isChanged = Contains(body) && EditBody(type, body, level + 1);
        if (firstError.empty()) firstError = errorText;
        if (!isChanged) {
            out += std::string_view(bytes).substr(start, in.GetPosition() - start);
            continue;
        }
        const bool isLongNow = isLong || body.size() >= kLongLength;
        AppendNumber(out, type << 6 | (isLongNow ? kLongLength : static_cast<unsigned int>(body.size())), 2);
        if (isLongNow) AppendNumber(out, body.size(), 4);
        out += body;
    }
    errorText = std::move(firstError);
    if (hits == before) return false;
    bytes.swap(out);
    return true;
}
