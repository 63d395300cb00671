#pragma once

#include "framework/VXSwfDefinitionTag.h"
#include "graphics/VXFlintRGB.h"
#include "graphics/VXFlintRectangle.h"
#include "platform/VXString.h"
#include "platform/VXTypes.h"

/// A text field that the player lays out when it shows it.
///
///     type 37:  CharacterId u16, m_Bounds VXFlintRectangle
///               m_HasText ub[1], m_WordWrap ub[1], m_Multiline ub[1], m_Password ub[1], m_ReadOnly ub[1],
///               m_HasTextColor ub[1], m_HasMaxLength ub[1], m_HasFont ub[1], m_HasFontClass ub[1],
///               m_AutoSize ub[1], m_HasLayout ub[1], m_NoSelect ub[1], m_Border ub[1], m_WasStatic ub[1],
///               m_HTML ub[1], m_UseOutlines ub[1]
///               m_FontId u16, font height u16                                        when m_HasFont
///               m_TextColor VXFlintRGB                                               when m_HasTextColor
///               m_MaxLength u16                                                      when m_HasMaxLength
///               m_Align u8, m_LeftMargin, m_RightMargin, m_Indent, m_Leading u16     when m_HasLayout
///               m_VariableName str
///               m_InitialText str                                                    when m_HasText
///
/// Flags go out as they stand; none is worked out from the fields.
class VXSWF_API VXSwfDefineEditTextTag : public VXSwfDefinitionTag {
public:
    VXSwfDefineEditTextTag(const VXSwfDefineEditTextTag&) = default;
    VXSwfDefineEditTextTag& operator=(const VXSwfDefineEditTextTag&) = default;

    using VXSwfDefinitionTag::DumpToStream;
    /// Kept: text outside ASCII is cut short, and once more by every load and dump.
    VXErrorCodeEnum DumpToStream(VXBitStream& out) override;
    /// Kept: the map's answer replaces the font even when it is 0, as for a font that the map does not have.
    void UpdateReferenceIDs(VXFlintIDMap* map) override;
    ~VXSwfDefineEditTextTag() override;
    VXErrorCodeEnum LoadDataFromStream(VXBitStream& in) override;

    /// Name of the script variable that the field shows.
    void SetVariable(const VXString& name) { m_VariableName = name; }
    /// A text that is not empty sets `m_HasText`; an empty one does not clear it.
    void SetText(const VXString& text);
    void SetBorder(short border) { m_Border = border; }
    void SetReadOnly(short readOnly) { m_ReadOnly = readOnly; }
    void SetWordWrap(short wordWrap) { m_WordWrap = wordWrap; }
    void SetNoSelect(short noSelect) { m_NoSelect = noSelect; }
    void SetPassword(short password) { m_Password = password; }
    void SetHTMLRendering(short html) { m_HTML = html; }
    void SetMultiLine(short multiline) { m_Multiline = multiline; }
    /// Copies the four bytes; the colour always goes out with its alpha.
    void SetColor(const VXFlintRGB& color);
    /// In characters. `m_HasMaxLength` stays as it is, so that by itself this does not reach the wire.
    void SetMaxLength(unsigned short length) { m_MaxLength = length; }
    void SetRect(const VXFlintRectangle& rect) { m_Bounds = rect; }
    /// Sets `m_HasFont`.
    void SetFont(unsigned short id);
    /// False, and `id` stays, unless `m_HasFont` is exactly 1.
    bool GetFontID(unsigned short& id) const;
    /// Pixels. `m_HasFont` stays as it is.
    void SetFontSize(unsigned short size) { m_FontHeight = size; }

    VXFlintRectangle m_Bounds;
    short m_HasText = 0;
    short m_WordWrap = 0;
    short m_Multiline = 0;
    short m_Password = 0;
    short m_ReadOnly = 0;
    short m_HasTextColor = 0;
    short m_HasMaxLength = 0;
    short m_HasFont = 0;
    short m_HasFontClass = 0;  ///< no field goes with it
    short m_AutoSize = 0;
    short m_HasLayout = 0;
    short m_NoSelect = 0;
    short m_Border = 0;
    short m_WasStatic = 0;
    short m_HTML = 0;
    short m_UseOutlines = 0;  ///< draws with the glyphs of the font tag, not with a font of the device
    unsigned short m_FontId = 0;
    VXReal m_FontHeight = 0.0;  ///< pixels
    VXFlintRGB m_TextColor{0, 0, 0, 1, 255};
    unsigned short m_MaxLength = 0;
    unsigned char m_Align = 0;         ///< 0 left, 1 right, 2 centre, 3 both
    unsigned short m_LeftMargin = 0;   ///< twips
    unsigned short m_RightMargin = 0;  ///< twips
    unsigned short m_Indent = 0;       ///< twips
    unsigned short m_Leading = 0;      ///< twips
    VXString m_VariableName;
    VXString m_InitialText;

private:
    friend class VXSwfTagFactory;
    explicit VXSwfDefineEditTextTag(enuTagType type);
};
