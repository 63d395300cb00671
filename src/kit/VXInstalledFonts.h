#pragma once

#include <vector>

#include "platform/VXExport.h"
#include "platform/VXString.h"

/// Connects the type engine, which texts and fonts need, for as long as it lives. Movies with texts are written
/// before it goes. For one thread at a time, and not twice at once.
class VXSWF_API VXTypeEngineSession {
public:
    VXTypeEngineSession();
    ~VXTypeEngineSession();
    VXTypeEngineSession(const VXTypeEngineSession&) = delete;
    VXTypeEngineSession& operator=(const VXTypeEngineSession&) = delete;
};

/// The fonts of the machine by the names that texts use. None without a type engine.
class VXSWF_API VXInstalledFonts {
public:
    VXInstalledFonts() = delete;

    /// In order, each name once.
    static std::vector<VXString> List();
    static bool Has(const VXString& name);
    /// At most `count` names that look like `name`, the nearest first. Case does not count.
    static std::vector<VXString> FindNearest(const VXString& name, unsigned int count);
};
