#pragma once

#include <string_view>

#include "vxswf.h"

/// Puts the actions of a script together, one behind the other. Texts are of ASCII.
class DemoScript {
public:
    /// Actions without operands; what they need lies on the player's stack.
    enum Code : unsigned char {
        kNextFrame = 0x04,
        kPreviousFrame = 0x05,
        kStop = 0x07,
        kStopSounds = 0x09,
        kPop = 0x17,
        kGetVariable = 0x1C,
        kSetVariable = 0x1D,
        kGetProperty = 0x22,
        kSetProperty = 0x23,
        kAdd = 0x47,  ///< numbers, or texts end to end
        kCallMethod = 0x52,
    };

    DemoScript& Do(Code code);
    DemoScript& Push(std::string_view text);
    DemoScript& Push(int number);
    /// Goes to a frame and stops there.
    DemoScript& GoTo(std::string_view label);
    /// A function of one argument, whose body is `body`.
    DemoScript& Define(std::string_view name, std::string_view argument, const DemoScript& body);
    DemoScript& Call(std::string_view name, int argument);

    const VXFlintActionRecords& GetActions() const { return m_Actions; }
    /// Bytes on the wire, the end of the list included.
    unsigned int GetSize() const;

private:
    DemoScript& Do(unsigned char code, std::string_view operands);

    VXFlintActionRecords m_Actions;
};
