#include "TagFields.h"

#include "MovieRecords.h"

namespace {

Json ToPixels(const Rectangle& twips) {
    constexpr double kTwips = 20.0;
    return {{"xMin", twips.xMin / kTwips},
            {"xMax", twips.xMax / kTwips},
            {"yMin", twips.yMin / kTwips},
            {"yMax", twips.yMax / kTwips}};
}

void DescribePlacement(const FramedTag& tag, Json& fields) {
    const Placement placement = ReadPlacement(tag);
    fields["depth"] = placement.depth;
    if (placement.character) fields["character"] = *placement.character;
    if (placement.moves) fields["moves"] = true;
    if (!placement.name.empty()) fields["name"] = placement.name;
    if (!placement.className.empty()) fields["class"] = placement.className;
    if (placement.ratio) fields["ratio"] = *placement.ratio;
    if (placement.clipDepth) fields["clipDepth"] = *placement.clipDepth;
}

}  // namespace

LoadedTag::LoadedTag(VXSwfTag& tag)
    : m_Tag{static_cast<unsigned int>(tag.GetTagType()), 0, 0, tag.VXSwfTag::GetTagLen(), {}} {
    VXBitStream stream = tag.GetDataStream();
    if (stream.GetBuffer() != nullptr) m_Tag.body = {stream.GetBuffer(), stream.GetSize()};
    if (dynamic_cast<VXSwfDefinitionTag*>(&tag) == nullptr) return;
    // The library keeps the ID apart from the rest.
    constexpr std::size_t kLongest = 1 << 16;
    const unsigned short id = tag.GetCharacterId();
    const ByteSpan rest = m_Tag.body.first(std::min(m_Tag.body.size(), kLongest));
    m_Head = {static_cast<unsigned char>(id), static_cast<unsigned char>(id >> 8)};
    m_Head.insert(m_Head.end(), rest.begin(), rest.end());
    m_Tag.body = m_Head;
}

Json DescribeTag(const FramedTag& tag) {
    Json fields = Json::object();
    if (const char* const name = NameOfTagType(tag.type); *name != '\0') fields["typeName"] = name;
    if (const unsigned short id = tag.GetCharacterId(); id != 0) fields["id"] = id;
    if (IsPlacement(tag.type)) DescribePlacement(tag, fields);
    ByteReader in(tag.body);
    switch (tag.type) {
        case 2:
        case 11:
        case 22:
        case 32:
        case 33:
        case 46:
        case 83:
        case 84:
            in.U16();
            fields["bounds"] = ToPixels(ReadRectangle(in));
            break;
        case 37: {
            const EditText text = ReadEditText(tag.body);
            fields["bounds"] = ToPixels(text.bounds);
            if (text.font) fields["font"] = *text.font;
            if (!text.variable.empty()) fields["variable"] = text.variable;
            break;
        }
        case 3:
        case 15:
        case 17:
        case 59:
        case 61:
        case 74:
        case 78:
            fields["character"] = in.U16();
            break;
        case 13:
        case 62:
        case 48:
        case 75:
        case 88:
        case 91: {
            Fonts fonts;
            ReadFont(tag, fonts);
            const Font& font = fonts.begin()->second;
            fields["font"] = fonts.begin()->first;
            fields["name"] = tag.type == 88 ? font.fullName : font.name;
            break;
        }
        case 5:
            fields["character"] = in.U16();
            fields["depth"] = in.U16();
            break;
        case 28:
            fields["depth"] = in.U16();
            break;
        case 20:
        case 36:
            in.Take(3);
            fields["width"] = in.U16();
            fields["height"] = in.U16();
            break;
        case 39:
            in.U16();
            fields["frameCount"] = in.U16();
            break;
        case 43:
            fields["label"] = in.Text();
            break;
        case 56:
        case 76: {
            Json& exports = fields["exports"] = Json::array();
            for (const auto& [id, name] : ReadExports(tag.body))
                exports.push_back({{"id", id}, {"name", name}});
            break;
        }
        default:
            break;
    }
    return fields;
}

const char* KindOfTagType(unsigned int type) {
    switch (type) {
        case 2:
        case 22:
        case 32:
        case 46:
        case 83:
        case 84:
            return "shapes";
        case 6:
        case 8:
        case 20:
        case 21:
        case 35:
        case 36:
        case 90:
            return "pictures";
        case 14:
        case 18:
        case 19:
        case 45:
            return "sounds";
        case 10:
        case 13:
        case 48:
        case 62:
        case 73:
        case 75:
        case 88:
        case 91:
            return "fonts";
        case 11:
        case 33:
        case 37:
        case 74:
            return "texts";
        case 7:
        case 17:
        case 23:
        case 34:
            return "buttons";
        case 12:
        case 59:
        case 72:
        case 82:
            return "scripts";
        case 39:
            return "sprites";
        case 60:
        case 61:
            return "video";
        case 87:
            return "binary";
        default:
            return "control";
    }
}
