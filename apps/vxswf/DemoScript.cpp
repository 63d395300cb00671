#include "DemoScript.h"

#include <string>

namespace {

std::string Text(std::string_view text) { return std::string(text) + '\0'; }

std::string Word(unsigned int value) {
    return {static_cast<char>(value & 0xFF), static_cast<char>(value >> 8 & 0xFF)};
}

}  // namespace

DemoScript& DemoScript::Push(std::string_view text) { return Do(kVXActionPush, '\0' + Text(text)); }

DemoScript& DemoScript::Push(int number) {
    const auto bits = static_cast<unsigned int>(number);
    return Do(kVXActionPush, '\7' + Word(bits) + Word(bits >> 16));
}

DemoScript& DemoScript::GoTo(std::string_view label) { return Do(kVXActionGotoLabel, Text(label)); }

DemoScript& DemoScript::Define(std::string_view name, std::string_view argument, const DemoScript& body) {
    // The body stands behind the definition, which counts its bytes, and has no end of its own.
    Do(kVXActionDefineFunction, Text(name) + Word(1) + Text(argument) + Word(body.GetSize() - 1));
    m_Actions.Copy(body.m_Actions, 0);
    return *this;
}

DemoScript& DemoScript::Call(std::string_view name, int argument) {
    m_Actions.InsertCallFunction(VXString(name.data(), name.size()), argument);
    return *this;
}

unsigned int DemoScript::GetSize() const {
    VXBitStream bytes;
    VXIgnore(m_Actions.DumpToStream(bytes));  // memory takes everything
    return bytes.GetSize();
}

DemoScript& DemoScript::Do(VXActionCodeEnum code, std::string_view operands) {
    auto* action = new VXFlintActionRecord(code);
    if (!operands.empty()) {
        action->SetData(reinterpret_cast<const unsigned char*>(operands.data()),
                        static_cast<unsigned int>(operands.size()));
    }
    m_Actions.PushActionRecord(action);
    return *this;
}
