#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/typeengine/VXTypeEngineAPI.h"

/// A font that is installed. Texts are UTF-8.
struct VXFontRecord {
    std::string name;       ///< by which it is asked for
    std::string styleName;  ///< as the font has it: "Oblique" stays that
    std::string file;
    long faceIndex = 0;  ///< the face in the file, and in the upper 16 bits the named instance of it
    double weight = 0.0;
    int slant = 0;
    TYStyle style = kTYPlain;
};

struct VXFontFamily {
    std::string name;
    std::vector<VXFontRecord> fonts;
};

/// The fonts that fontconfig is configured to know, in the order in which it stores them: all with outlines,
/// and of fonts with axes the named instances only. Making the list opens no font file.
///
/// A font belongs to the last English family name that it carries. Members of a family are ordered by weight,
/// heaviest first, then upright before slanted, then by style name. The plainest of them is asked for by the
/// name of the family, every other by that name, a space and its style name.
class VXFontList {
public:
    /// Empty when fontconfig has no configuration.
    static std::shared_ptr<const VXFontList> Load();

    const std::vector<VXFontFamily>& GetFamilies() const { return m_Families; }

private:
    std::vector<VXFontFamily> m_Families;
};
