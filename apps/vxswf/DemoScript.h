#pragma once

#include <string_view>

#include "vxswf.h"

/// Puts the actions of a script together, one behind the other. Texts are of ASCII.
class DemoScript {
public:
    DemoScript& Do(VXActionCodeEnum code, std::string_view operands = {});
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
    VXFlintActionRecords m_Actions;
};
