#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/VXString.h"
#include "platform/VXTypes.h"
#include "scripting/VXActionCodes.h"
#include "scripting/VXFlintActionRecords.h"
#include "timeline/VXFlintClipActions.h"

// Values to push that C++ has no type for. Null is `nullptr`.
struct VXUndefined {};
struct VXRegister {
    unsigned char number;
};
/// An entry of the constant pool, from 0.
struct VXConstant {
    unsigned short index;
};

/// Writes a script of a version before 3, action by action:
///
///     VXActionWriter script;
///     script.SetVariable("n", 0).Label("again");
///     script.Push("once more").Do(kVXActionTrace);
///     script.Push("n").GetVariable("n").Do(kVXActionIncrement).Do(kVXActionSetVariable);
///     script.GetVariable("n").Push(10).Do(kVXActionLess2).If("again");
///
/// Texts are UTF-8 and end at a NUL. What cannot be written makes the whole script fail: it is then added
/// nowhere, and `GetErrorText` tells why.
class VXSWF_API VXActionWriter {
public:
    VXActionWriter();
    ~VXActionWriter();
    VXActionWriter(const VXActionWriter&);
    VXActionWriter& operator=(const VXActionWriter&);

    /// Any action. Codes from 0x80 on have a payload, 65535 bytes at most; the others have none.
    VXActionWriter& Do(VXActionCodeEnum code, std::string_view payload = {});

    /// Pushes the values in one action, the last on top: texts, numbers, booleans, `nullptr`, and the three
    /// types above. An integer that does not fit 32 bits becomes a real number.
    template <typename... Values>
    VXActionWriter& Push(const Values&... values) {
        std::string payload;
        (AppendValue(payload, values), ...);
        return Do(kVXActionPush, payload);
    }
    /// Texts that `VXConstant` names. Counts for the actions behind it.
    VXActionWriter& SetConstants(std::initializer_list<std::string_view> texts);

    VXActionWriter& GetVariable(std::string_view name) { return Push(name).Do(kVXActionGetVariable); }
    template <typename Value>
    VXActionWriter& SetVariable(std::string_view name, const Value& value) {
        return Push(name, value).Do(kVXActionSetVariable);
    }
    /// Of the object on the stack, which it takes.
    VXActionWriter& GetMember(std::string_view name) { return Push(name).Do(kVXActionGetMember); }
    template <typename Value>
    VXActionWriter& SetMember(std::string_view name, const Value& value) {
        return Push(name, value).Do(kVXActionSetMember);
    }
    /// The result lies on the stack; `Do(kVXActionPop)` drops it.
    template <typename... Values>
    VXActionWriter& CallFunction(std::string_view name, const Values&... arguments) {
        std::string payload = ReversedArguments(arguments...);
        AppendValue(payload, name);
        return Do(kVXActionPush, payload).Do(kVXActionCallFunction);
    }
    /// The same for a method of the object that a variable holds; "this" and "_root" are such variables.
    template <typename... Values>
    VXActionWriter& CallMethod(std::string_view object, std::string_view name, const Values&... arguments) {
        std::string payload = ReversedArguments(arguments...);
        AppendValue(payload, object);
        return Do(kVXActionPush, payload).Do(kVXActionGetVariable).Push(name).Do(kVXActionCallMethod);
    }
    /// Goes to the frame of a label. It stops there unless `Do(kVXActionPlay)` follows.
    VXActionWriter& GotoLabel(std::string_view label);

    /// Names the place where the next action stands. A name stands for one place.
    VXActionWriter& Label(std::string_view label);
    /// Goes on at a label in front or behind, at most 32 KiB away.
    VXActionWriter& Jump(std::string_view label) { return JumpBy(kVXActionJump, label); }
    /// The same when the value on the stack, which it takes, is true.
    VXActionWriter& If(std::string_view label) { return JumpBy(kVXActionIf, label); }

    /// A function with a name, or the value of one without. Labels of `body` are its own.
    VXActionWriter& DefineFunction(std::string_view name, std::initializer_list<std::string_view> arguments,
                                   const VXActionWriter& body);
    /// Runs `body` with the object on the stack as the place where names are looked for.
    VXActionWriter& With(const VXActionWriter& body);

    /// Appends the script to a list of actions: of a frame, of a sprite's start, of a button. 1 when it could
    /// not be written; the list is then as it was.
    VXErrorCodeEnum AddTo(VXFlintActionRecords& actions) const;
    /// The same for an event, whose stated size follows. Set its key first.
    VXErrorCodeEnum AddTo(VXFlintClipActionRecord& event) const;
    /// The actions as they stand in a movie, without the 0 that ends a list.
    VXErrorCodeEnum GetBytes(std::string& bytes) const;
    /// Why the script cannot be written; empty when it can.
    std::string GetErrorText() const;

private:
    struct Reference {
        std::size_t offset;  // of the distance, which counts from behind itself
        std::string label;
    };

    template <typename Value>
    static void AppendValue(std::string& payload, const Value& value) {
        if constexpr (std::same_as<Value, bool>) {
            AppendBoolean(payload, value);
        } else if constexpr (std::integral<Value>) {
            const auto wide = static_cast<std::int64_t>(value);
            if (wide >= INT32_MIN && wide <= INT32_MAX) {
                AppendInteger(payload, static_cast<std::int32_t>(wide));
            } else {
                AppendReal(payload, static_cast<double>(value));
            }
        } else if constexpr (std::floating_point<Value>) {
            AppendReal(payload, value);
        } else {
            Append(payload, value);
        }
    }
    static void AppendBoolean(std::string& payload, bool value);
    static void AppendInteger(std::string& payload, std::int32_t value);
    static void AppendReal(std::string& payload, double value);
    static void Append(std::string& payload, std::string_view text);
    static void Append(std::string& payload, const char* text);
    static void Append(std::string& payload, const VXString& text);
    static void Append(std::string& payload, std::nullptr_t);
    static void Append(std::string& payload, VXUndefined);
    static void Append(std::string& payload, VXRegister place);
    static void Append(std::string& payload, VXConstant constant);

    /// The last argument first, and their number.
    template <typename... Values>
    static std::string ReversedArguments(const Values&... arguments) {
        std::string payload;
        ((payload = ValueOf(arguments) + payload), ...);
        AppendInteger(payload, static_cast<std::int32_t>(sizeof...(Values)));
        return payload;
    }
    template <typename Value>
    static std::string ValueOf(const Value& value) {
        std::string bytes;
        AppendValue(bytes, value);
        return bytes;
    }

    VXActionWriter& JumpBy(VXActionCodeEnum code, std::string_view label);
    VXActionWriter& DoAround(VXActionCodeEnum code, std::string payload, const VXActionWriter& body);
    void Fail(std::string text);

    std::string m_Bytes;
    std::map<std::string, std::size_t, std::less<>> m_Labels;
    std::vector<Reference> m_References;
    std::string m_ErrorText;
};
