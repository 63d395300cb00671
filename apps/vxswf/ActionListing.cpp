#include "ActionListing.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <iterator>
#include <vector>

#include "Report.h"

namespace {

constexpr std::size_t kLongestText = 200;   // of one operand that is told again and again
constexpr std::size_t kDeepestIndent = 16;  // in levels, so that a line stays one that can be read

constexpr struct {
    unsigned int code;
    const char* name;
} kActions[] = {
    {0x04, "NextFrame"},
    {0x05, "PreviousFrame"},
    {0x06, "Play"},
    {0x07, "Stop"},
    {0x08, "ToggleQuality"},
    {0x09, "StopSounds"},
    {0x0A, "Add"},
    {0x0B, "Subtract"},
    {0x0C, "Multiply"},
    {0x0D, "Divide"},
    {0x0E, "Equals"},
    {0x0F, "Less"},
    {0x10, "And"},
    {0x11, "Or"},
    {0x12, "Not"},
    {0x13, "StringEquals"},
    {0x14, "StringLength"},
    {0x15, "StringExtract"},
    {0x17, "Pop"},
    {0x18, "ToInteger"},
    {0x1C, "GetVariable"},
    {0x1D, "SetVariable"},
    {0x20, "SetTarget2"},
    {0x21, "StringAdd"},
    {0x22, "GetProperty"},
    {0x23, "SetProperty"},
    {0x24, "CloneSprite"},
    {0x25, "RemoveSprite"},
    {0x26, "Trace"},
    {0x27, "StartDrag"},
    {0x28, "EndDrag"},
    {0x29, "StringLess"},
    {0x2A, "Throw"},
    {0x2B, "CastOp"},
    {0x2C, "ImplementsOp"},
    {0x30, "RandomNumber"},
    {0x31, "MBStringLength"},
    {0x32, "CharToAscii"},
    {0x33, "AsciiToChar"},
    {0x34, "GetTime"},
    {0x35, "MBStringExtract"},
    {0x36, "MBCharToAscii"},
    {0x37, "MBAsciiToChar"},
    {0x3A, "Delete"},
    {0x3B, "Delete2"},
    {0x3C, "DefineLocal"},
    {0x3D, "CallFunction"},
    {0x3E, "Return"},
    {0x3F, "Modulo"},
    {0x40, "NewObject"},
    {0x41, "DefineLocal2"},
    {0x42, "InitArray"},
    {0x43, "InitObject"},
    {0x44, "TypeOf"},
    {0x45, "TargetPath"},
    {0x46, "Enumerate"},
    {0x47, "Add2"},
    {0x48, "Less2"},
    {0x49, "Equals2"},
    {0x4A, "ToNumber"},
    {0x4B, "ToString"},
    {0x4C, "PushDuplicate"},
    {0x4D, "StackSwap"},
    {0x4E, "GetMember"},
    {0x4F, "SetMember"},
    {0x50, "Increment"},
    {0x51, "Decrement"},
    {0x52, "CallMethod"},
    {0x53, "NewMethod"},
    {0x54, "InstanceOf"},
    {0x55, "Enumerate2"},
    {0x60, "BitAnd"},
    {0x61, "BitOr"},
    {0x62, "BitXor"},
    {0x63, "BitLShift"},
    {0x64, "BitRShift"},
    {0x65, "BitURShift"},
    {0x66, "StrictEquals"},
    {0x67, "Greater"},
    {0x68, "StringGreater"},
    {0x69, "Extends"},
    {0x81, "GotoFrame"},
    {0x83, "GetURL"},
    {0x87, "StoreRegister"},
    {0x88, "ConstantPool"},
    {0x8A, "WaitForFrame"},
    {0x8B, "SetTarget"},
    {0x8C, "GoToLabel"},
    {0x8D, "WaitForFrame2"},
    {0x8E, "DefineFunction2"},
    {0x8F, "Try"},
    {0x94, "With"},
    {0x96, "Push"},
    {0x99, "Jump"},
    {0x9A, "GetURL2"},
    {0x9B, "DefineFunction"},
    {0x9D, "If"},
    {0x9E, "Call"},
    {0x9F, "GotoFrame2"},
};

std::string NameOfAction(unsigned int code) {
    for (const auto& [known, name] : kActions) {
        if (known == code) return name;
    }
    char digits[4] = {};
    std::to_chars(std::begin(digits), std::end(digits), code, 16);
    return std::string("Unknown 0x") + digits;
}

std::string TextOfNumber(double number) {
    char digits[32] = {};
    const auto result = std::to_chars(std::begin(digits), std::end(digits), number);
    return {digits, result.ptr};
}

struct Action {
    std::size_t offset;
    unsigned int code;
    ByteSpan data;
    std::size_t end;
};

/// The actions up to the end action, which has no line, or to the end of the bytes.
class Actions {
public:
    explicit Actions(ByteSpan bytes) : m_In(bytes) {}

    bool Next(Action& action) {
        if (m_In.IsAtEnd()) return false;
        action.offset = m_In.GetPosition();
        action.code = m_In.U8();
        action.data = action.code >= 0x80 ? m_In.Take(m_In.U16()) : ByteSpan();
        action.end = m_In.GetPosition();
        return true;
    }

private:
    ByteReader m_In;
};

/// Where a jump leads, or −1.
std::ptrdiff_t TargetOf(const Action& action) {
    if (action.code != 0x99 && action.code != 0x9D) return -1;
    return static_cast<std::ptrdiff_t>(action.end) + ByteReader(action.data).S16();
}

class Listing {
public:
    explicit Listing(ByteSpan actions) : m_Bytes(actions) {}

    std::string Write() {
        CollectLabels();
        Action action = {};
        for (Actions actions(m_Bytes); actions.Next(action);) {
            if (m_Text.size() > kLongestListing) return std::move(m_Text) + "(cut: too long)\n";
            CloseBlocks(action.offset);
            WriteLabel(action.offset);
            if (action.code == 0 && action.end == m_Bytes.size()) break;
            Indent();
            m_Text += action.code == 0 ? "End" : NameOfAction(action.code);
            WriteOperands(action);
            m_Text += '\n';
            OpenBlocks(action);
        }
        CloseBlocks(m_Bytes.size());
        WriteLabel(m_Bytes.size());
        return std::move(m_Text);
    }

private:
    struct Block {
        std::size_t end;
        const char* next;  // what begins where it ends; null for nothing
    };

    // Labels stand where an action begins or the last one ends.
    void CollectLabels() {
        std::vector<std::size_t> targets;
        Action action = {};
        for (Actions actions(m_Bytes); actions.Next(action);) {
            if (const std::ptrdiff_t target = TargetOf(action); target >= 0)
                targets.push_back(static_cast<std::size_t>(target));
        }
        std::sort(targets.begin(), targets.end());
        auto target = targets.begin();
        const auto take = [&](std::size_t offset) {
            target = std::lower_bound(target, targets.end(), offset);
            if (target != targets.end() && *target == offset) m_Labels.push_back(offset);
        };
        for (Actions actions(m_Bytes); actions.Next(action);) take(action.offset);
        take(m_Bytes.size());
    }

    bool HasLabel(std::size_t offset) const {
        return std::binary_search(m_Labels.begin(), m_Labels.end(), offset);
    }

    void Indent() { m_Text.append(4 * (std::min(m_Blocks.size(), kDeepestIndent) + 1), ' '); }

    void WriteLabel(std::size_t offset) {
        if (HasLabel(offset)) m_Text += 'L' + std::to_string(offset) + ":\n";
    }

    void CloseBlocks(std::size_t offset) {
        while (!m_Blocks.empty() && m_Blocks.back().end <= offset) {
            const char* const next = m_Blocks.back().next;
            m_Blocks.pop_back();
            if (next == nullptr) continue;
            Indent();
            m_Text += std::string(next) + '\n';
        }
    }

    void Open(std::size_t end, const char* next) {
        m_Blocks.push_back({std::min(end, m_Bytes.size()), next});
    }

    /// The bodies that lie behind an action.
    void OpenBlocks(const Action& action) {
        const ByteSpan data = action.data;
        switch (action.code) {
            case 0x8E:
            case 0x9B:
            case 0x94:
                if (data.size() >= 2) Open(action.end + ByteReader(data.last(2)).U16(), "end");
                break;
            case 0x8F: {
                ByteReader in(data);
                const unsigned int flags = in.U8();
                const std::size_t body = in.U16(), handler = in.U16(), last = in.U16();
                const bool hasCatch = (flags & 1) != 0, hasFinally = (flags & 2) != 0;
                // The innermost is pushed last.
                const std::size_t handlerEnd = action.end + body + (hasCatch ? handler : 0);
                if (hasFinally) Open(handlerEnd + last, "end");
                if (hasCatch) Open(handlerEnd, hasFinally ? "finally" : "end");
                Open(action.end + body, hasCatch ? "catch" : hasFinally ? "finally" : "end");
                break;
            }
            default:
                break;
        }
    }

    void Write(const std::string& operand) { m_Text += ' ' + operand; }
    void Write(unsigned int number) { Write(std::to_string(number)); }

    void WriteConstant(std::size_t index) {
        Write(index < m_Constants.size() ? Quoted(m_Constants[index]) : "constant " + std::to_string(index));
    }

    void WriteOperands(const Action& action) {
        ByteReader in(action.data);
        switch (action.code) {
            case 0x81:
            case 0x94:
                Write(in.U16());
                break;
            case 0x83:
                Write(Quoted(in.Text()));
                Write(Quoted(in.Text()));
                break;
            case 0x87:
            case 0x8D:
            case 0x9A:
                Write(in.U8());
                break;
            case 0x88:
                m_Constants.clear();
                for (unsigned int left = in.U16(); left > 0 && !in.IsAtEnd(); --left) {
                    m_Constants.push_back(in.Text());
                    Write(Quoted(m_Constants.back()));
                    m_Constants.back().resize(std::min(m_Constants.back().size(), kLongestText));
                }
                break;
            case 0x8A:
                Write(in.U16());
                Write(in.U8());
                break;
            case 0x8B:
            case 0x8C:
                Write(Quoted(in.Text()));
                break;
            case 0x8E:
            case 0x9B:
                WriteFunction(in, action.code == 0x8E);
                break;
            case 0x8F:
                WriteTry(in);
                break;
            case 0x96:
                while (!in.IsAtEnd()) WritePushed(in);
                break;
            case 0x99:
            case 0x9D:
                WriteTarget(TargetOf(action));
                break;
            case 0x9F: {
                const unsigned int flags = in.U8();
                Write((flags & 1) != 0 ? "play" : "stop");
                if ((flags & 2) != 0) Write("+" + std::to_string(in.U16()));
                break;
            }
            default:
                for (const unsigned char byte : action.data) Write(byte);
                break;
        }
    }

    void WriteTarget(std::ptrdiff_t target) {
        if (target >= 0 && HasLabel(static_cast<std::size_t>(target))) {
            Write("L" + std::to_string(target));
        } else {
            Write("to byte " + std::to_string(target));  // outside, or inside an action
        }
    }

    void WriteFunction(ByteReader& in, bool isSecond) {
        Write(Quoted(in.Text()));
        const unsigned int count = in.U16();
        unsigned int flags = 0;
        if (isSecond) {
            Write("registers " + std::to_string(in.U8()));
            flags = in.U16();
        }
        m_Text += " (";
        for (unsigned int i = 0; i < count && !in.IsAtEnd(); ++i) {
            if (i > 0) m_Text += ", ";
            if (isSecond) {
                if (const unsigned int place = in.U8(); place != 0) m_Text += std::to_string(place) + ':';
            }
            m_Text += Quoted(in.Text());
        }
        m_Text += ')';
        static constexpr const char* kFlags[] = {"preloadThis",       "suppressThis",  "preloadArguments",
                                                 "suppressArguments", "preloadSuper",  "suppressSuper",
                                                 "preloadRoot",       "preloadParent", "preloadGlobal"};
        for (std::size_t i = 0; i < std::size(kFlags); ++i) {
            if ((flags >> i & 1) != 0) Write(kFlags[i]);
        }
    }

    void WriteTry(ByteReader& in) {
        const unsigned int flags = in.U8();
        in.Take(6);  // sizes
        if ((flags & 1) == 0) return;
        Write("catch");
        if ((flags & 4) != 0) {
            Write("register " + std::to_string(in.U8()));
        } else {
            Write(Quoted(in.Text()));
        }
    }

    void WritePushed(ByteReader& in) {
        switch (const unsigned int type = in.U8()) {
            case 0:
                return Write(Quoted(in.Text()));
            case 1:
                return Write(TextOfNumber(std::bit_cast<float>(in.U32())) + 'f');
            case 2:
                return Write("null");
            case 3:
                return Write("undefined");
            case 4:
                return Write("register " + std::to_string(in.U8()));
            case 5:
                return Write(in.U8() != 0 ? "true" : "false");
            case 6: {
                const std::uint64_t halves = in.U64();  // the upper one comes first
                return Write(TextOfNumber(std::bit_cast<double>(std::rotl(halves, 32))) + 'd');
            }
            case 7:
                return Write(std::to_string(static_cast<std::int32_t>(in.U32())));
            case 8:
                return WriteConstant(in.U8());
            case 9:
                return WriteConstant(in.U16());
            default:
                Write("unknown type " + std::to_string(type));
                in.Take(in.GetRemaining());
        }
    }

    ByteSpan m_Bytes;
    std::vector<std::size_t> m_Labels;  // in order
    std::vector<Block> m_Blocks;
    std::vector<std::string> m_Constants;
    std::string m_Text;
};

}  // namespace

std::string ListActions(ByteSpan actions) { return Listing(actions).Write(); }

std::string Quoted(const std::string& text) {
    std::string quoted = "\"";
    for (const char c : Printable(text)) {
        if (c == '"') quoted += '\\';
        quoted += c;
    }
    return quoted + '"';
}
