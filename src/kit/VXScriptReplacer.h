#pragma once

#include <string>

#include "framework/VXFlintFile.h"

/// Lets all scripts of a movie that are older than version 3 follow when something gets another name: those of
/// frames, of sprites however deep, of buttons, of events of placements, and those that run once for a sprite.
/// The movie may be parsed, partly parsed, or carried as bytes, which it then stays.
///
/// Where `VXFlintActionRecord::ReplaceString` looks for bytes, this one looks into texts: pushed ones and
/// constants, addresses, targets, labels, names of functions and of their arguments. Numbers and code stay what
/// they are. Every hit is replaced once. Jumps and the sizes of functions and blocks follow.
class VXSWF_API VXScriptReplacer {
public:
    VXScriptReplacer();
    ~VXScriptReplacer();

    /// 1 when a script could not be changed, because a jump would lead too far or the tag is damaged. It then
    /// stays as it was; all others are changed. An empty `from` is nowhere.
    VXErrorCodeEnum ReplaceString(VXFlintFile& movie, const VXString& from, const VXString& to);

    // Of the last call.

    /// Places where the text was replaced.
    unsigned int GetCount() const { return m_Count; }
    /// What could not be changed, a line for each of the first ten; empty when all went well.
    const std::string& GetErrorText() const { return m_ErrorText; }

private:
    class Walk;

    unsigned int m_Count = 0;
    std::string m_ErrorText;
};
