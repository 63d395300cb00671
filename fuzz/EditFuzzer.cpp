// Edits a movie as a host does, step by step as the input says, then writes it and reads it again.
//
//     u16    length of the movie in the low 14 bits; 0x8000 loads it raw
//     bytes  the movie; without one the movie is empty
//     steps  u8 step, by its place in kSteps, and what it asks for

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <list>
#include <map>
#include <memory>
#include <vector>

#include "Support.h"
#include "vxswf.h"

namespace {

constexpr unsigned int kLengthMask = 0x3FFF;
constexpr unsigned int kIsRaw = 0x8000;
constexpr int kMostSteps = 48;
// Each merge of a movie with itself can make it twice as large.
constexpr int kMostMerges = 4;
constexpr unsigned int kMostTags = 512;

/// A movie under edit, and the list of it that the steps work on: its own or that of one of its sprites.
class Edit {
public:
    Edit(Input& input, unsigned int parsingMode) : m_Input(input), m_ParsingMode(parsingMode) {}

    void Run(VXBitStream bytes);

private:
    using Step = void (Edit::*)();

    VXSwfTagSet& Set() { return m_Sprite != nullptr ? static_cast<VXSwfTagSet&>(*m_Sprite) : m_Movie; }
    // Of what a step asks for, only one thing stands in an expression: arguments are worked out in any order.

    int Frame() { return static_cast<int>(m_Input.Byte() % 8) - 1; }
    struct Spot {
        VXString name;
        double x;
        double y;
        unsigned short depth;
    };
    /// Only automatic depths may fail, once they are used up.
    static void RequirePlaced(const VXSwfPlaceObject2Tag* placement, const Spot& spot,
                              const std::vector<VXFlintFilter*>& filters) {
        if (placement != nullptr) return;
        Require(spot.depth == 0 || spot.depth == 0xFFFF);
        for (const VXFlintFilter* filter : filters) delete filter;
    }
    Spot NewSpot() { return {m_Input.Text(), m_Input.Real(), m_Input.Real(), m_Input.Word()}; }
    VXSwfTagSet::TagIter Somewhere(VXSwfTagSet& set) {
        return std::next(set.begin(), m_Input.Byte() % (set.GetNumTags() + 1));
    }
    VXSwfTag* Tag() {
        const auto tag = Somewhere(Set());
        return tag == Set().end() ? nullptr : *tag;
    }
    template <typename Class>
    Class* TagOf() {
        return dynamic_cast<Class*>(Tag());
    }
    VXSwfTag* NewTag() {
        const unsigned int type = m_Input.Word() & 0x3FFu;
        TagPtr tag = MakeTag(type, m_Input.Byte() & 1);
        tag->SetCharacterId(m_Input.Byte());
        return tag.release();
    }
    std::vector<VXFlintFilter*> Filters() {
        std::vector<VXFlintFilter*> filters;
        for (unsigned int i = m_Input.Byte() % 4; i > 0; --i) filters.push_back(new VXFlintFilterShadow());
        return filters;
    }

    // Lists of tags.

    void Choose();
    void Append() { Set().AppendTag(NewTag()); }
    void Insert();
    void InsertAgain();
    void Move();
    void Erase();
    void AddFrames();
    void Find();
    void Load();

    // The stage.

    void PlaceId();
    void PlaceTag();
    void PlaceAndRemove();
    void Remove();
    void ChangePlacement();
    void ScalePlacement();

    // Characters and names.

    void ChangeTag();
    void CopyTag();
    void Renumber();
    void Rename();
    void Export();
    void ListDependencies();
    void Fill();

    // Fonts and text.

    void AddFont();
    void AddText();
    void AddField();
    void PublishFont();

    // The whole movie.

    void ChangeHeader();
    void MergeSelf();
    void MergeOther();
    void Include();
    void Close() { m_Movie.AddFreeCharacterAtEnd(); }
    void CopyMovie();
    void DumpAndLoad();
    void AddButton();

    static const Step kSteps[];

    Input& m_Input;
    unsigned int m_ParsingMode;
    VXFlintFile m_Movie;
    VXSwfDefineSpriteTag* m_Sprite = nullptr;
    VXFlintFile m_Other;  // loaded by a step, to merge from
    std::vector<VXSwfDefineFont2Tag*> m_Fonts;
    int m_Merges = 0;
};

// What stands in front keeps its place, since the inputs choose by it.
constexpr Edit::Step Edit::kSteps[] = {&Edit::Choose,         &Edit::Append,
                                       &Edit::Insert,         &Edit::InsertAgain,
                                       &Edit::Move,           &Edit::Erase,
                                       &Edit::AddFrames,      &Edit::Find,
                                       &Edit::Load,           &Edit::PlaceId,
                                       &Edit::PlaceTag,       &Edit::PlaceAndRemove,
                                       &Edit::Remove,         &Edit::ChangePlacement,
                                       &Edit::ScalePlacement, &Edit::ChangeTag,
                                       &Edit::CopyTag,        &Edit::Renumber,
                                       &Edit::Rename,         &Edit::Export,
                                       &Edit::AddFont,        &Edit::AddText,
                                       &Edit::AddField,       &Edit::ListDependencies,
                                       &Edit::ChangeHeader,   &Edit::MergeSelf,
                                       &Edit::MergeOther,     &Edit::Include,
                                       &Edit::Close,          &Edit::CopyMovie,
                                       &Edit::DumpAndLoad,    &Edit::AddButton,
                                       &Edit::PublishFont,    &Edit::Fill};

void Edit::Run(VXBitStream bytes) {
    m_Movie.SetParsingMode(m_ParsingMode);
    std::list<VXSwfTagFactory::enuTagType> types{VXSwfTagFactory::TAG_SHOWFRAME,
                                                 VXSwfTagFactory::TAG_DEFINESPRITE};
    Require(m_Movie.SetListsTobeMaintained(types) == kVXSuccess);
    VXIgnore(m_Movie.LoadFromStream(bytes));  // what was loaded before a failure is a movie too
    m_Movie.SetCompression(0);
    for (int step = 0; step < kMostSteps && !m_Input.IsEmpty() && m_Movie.GetNumTags() < kMostTags; ++step) {
        (this->*kSteps[m_Input.Byte() % std::size(kSteps)])();
    }
    DumpAndLoad();
}

void Edit::Choose() { m_Sprite = TagOf<VXSwfDefineSpriteTag>(); }

void Edit::Insert() {
    if (m_Input.Byte() % 2 == 0) {
        const auto before = Somewhere(Set());
        Set().IncludeTag(NewTag(), before);
    } else {
        const int frame = Frame();
        Set().IncludeTag(NewTag(), frame);
    }
}

/// The same tags once more, at the top, so that no sprite comes to hold itself.
void Edit::InsertAgain() {
    const auto first = Somewhere(Set());
    const auto left = static_cast<std::size_t>(std::distance(first, Set().end()));
    const auto last =
        std::next(first, static_cast<std::ptrdiff_t>(std::min<std::size_t>(left, m_Input.Byte() % 8)));
    m_Movie.InsertTags(Somewhere(m_Movie), first, last);
}

void Edit::Move() {
    const auto tag = Somewhere(Set());
    if (tag == Set().end()) return;
    VXSwfTag* moved = *tag;
    const auto next = Set().EraseTags(tag, std::next(tag));
    Set().IncludeTag(moved, m_Input.Byte() % 2 == 0 ? next : Somewhere(Set()));
}

void Edit::Erase() {
    const auto tag = Somewhere(Set());
    if (tag == Set().end()) return;
    // A sprite or font may be deleted here that a later step would use.
    if (m_Sprite == nullptr && dynamic_cast<VXSwfDefineFont2Tag*>(*tag) != nullptr) return;
    Set().EraseAndDeleteTags(tag, std::next(tag));
}

void Edit::AddFrames() {
    const int frame = Frame();
    Set().IncludeShowFrameTags(m_Input.Byte() % 8, frame);
}

void Edit::Find() {
    const unsigned short id = m_Input.Word();
    const VXString name = m_Input.Text();
    const auto type = static_cast<VXSwfTagFactory::enuTagType>(m_Input.Word() & 0x3FFu);
    const unsigned int n = m_Input.Byte();
    const VXSwfTag* found = Set().FindTagByID(id);
    Require(found == nullptr || found->GetCharacterId() == id);
    found = Set().FindNthTagOfTypeBeforeFrame(type, n % 4, n / 4, m_Input.Byte() & 1);
    Require(found == nullptr || found->GetTagType() == type);
    Set().FindNthTagOfType(type, n % 8);
    VXSwfPlaceObject2Tag* placement = nullptr;
    Require(Set().FindSpriteId(name, &placement) == 0 ||
            (placement != nullptr && placement->GetName() == name));
    Set().FindSprite(name);
    Set().FindSpriteIdByExportName(name);
    Set().GetAbsTagDepth(id);
    Set().ReserveNextDepth();
    std::list<VXSwfTag*>* tags = nullptr;
    VXIgnore(m_Movie.GetTagListOfType(type, &tags));  // 1 for a type without a list
}

void Edit::Load() {
    VXBitStream bytes = m_Input.Stream(m_Input.Byte());
    VXIgnore(m_Other.LoadFromStream(bytes));
}

void Edit::PlaceId() {
    const unsigned short id = m_Input.Byte();
    const Spot spot = NewSpot();
    const std::vector<VXFlintFilter*> filters = Filters();
    const VXSwfPlaceObject2Tag* placement =
        m_Input.Byte() % 2 == 0
            ? Set().PlaceObject(id, Frame(), spot.name, spot.x, spot.y, spot.depth, filters)
            : Set().PlaceObject(id, Somewhere(Set()), spot.name, spot.x, spot.y, spot.depth, filters);
    RequirePlaced(placement, spot, filters);
}

void Edit::PlaceTag() {
    auto* character = TagOf<VXSwfDefinitionTag>();
    const Spot spot = NewSpot();
    const std::vector<VXFlintFilter*> filters = Filters();
    RequirePlaced(Set().PlaceObject(character, Frame(), spot.name, spot.x, spot.y, spot.depth, filters), spot,
                  filters);
}

void Edit::PlaceAndRemove() {
    const unsigned short id = m_Input.Byte();
    const Spot spot = NewSpot();
    const int placed = Frame();
    RequirePlaced(Set().PlaceAndRemoveObject(id, placed, Frame(), spot.name, spot.x, spot.y, spot.depth),
                  spot, {});
}

void Edit::Remove() {
    const unsigned short depth = m_Input.Word();
    Set().RemoveObject(depth, Frame());
}

void Edit::ChangePlacement() {
    auto* placement = TagOf<VXSwfPlaceObject2Tag>();
    if (placement == nullptr) return;
    const unsigned int what = m_Input.Byte();
    if ((what & 1) != 0) placement->SetName(m_Input.Text());
    if ((what & 2) != 0) placement->SetDepth(m_Input.Word(), what >> 2 & 1);
    if ((what & 4) != 0) placement->SetClipDepth(m_Input.Word());
    if ((what & 8) != 0) placement->SetAlpha(m_Input.DWord());
    if ((what & 16) != 0) placement->SetMoveFlag(m_Input.Byte() & 1);
    if ((what & 32) != 0) {
        VXFlintMatrix matrix = placement->GetMatrix();
        const double angle = m_Input.Real(), x = m_Input.Real(), y = m_Input.Real();
        matrix.Rotate(angle);
        matrix.Scale(x, y);
        matrix.Translate(y, x);
        placement->SetMatrix(matrix);
    }
    if ((what & 64) != 0) {
        VXFlintCxForm form;
        form.HasMultTerms = 1;
        form.RedMultTerm = static_cast<int>(m_Input.DWord());
        placement->SetCxForm(&form);
    }
    auto* effects = dynamic_cast<VXSwfPlaceObject3Tag*>(placement);
    if ((what & 128) != 0 && effects != nullptr) effects->SetStaticEffectVector(Filters());
}

void Edit::ScalePlacement() {
    auto* placement = TagOf<VXSwfPlaceObject2Tag>();
    if (placement == nullptr) return;
    unsigned int sizes[4];
    for (unsigned int& size : sizes) size = m_Input.DWord();
    placement->Scale(sizes[0], sizes[1], sizes[2], sizes[3]);
}

void Edit::ChangeTag() {
    VXSwfTag* tag = Tag();
    if (tag == nullptr) return;
    const unsigned int what = m_Input.Byte();
    if ((what & 1) != 0) tag->SetCharacterId(m_Input.Byte());
    if ((what & 2) != 0) tag->SetReferencedID(m_Input.Byte());
    if ((what & 4) != 0) tag->SetFLVersion(m_Input.Byte());
    if ((what & 8) != 0) tag->SetIsLongTag(1);
    VXString text;
    tag->GetTextInfo(text);
    tag->GetCharacterIdFromData();
}

void Edit::CopyTag() {
    VXSwfTag* tag = Tag();
    if (tag == nullptr) return;
    if (VXSwfTag* copy = tag->Copy(); copy != nullptr) Set().IncludeTag(copy, Frame());
}

void Edit::Renumber() {
    const auto map = std::make_unique<VXFlintIDMap>();
    for (unsigned int count = m_Input.Byte() % 8; count > 0; --count) {
        const unsigned short from = m_Input.Byte();
        map->Set(from, m_Input.Word());
    }
    Set().UpdateReferenceIDs(map.get());
}

/// In every script, and in every table of names.
void Edit::Rename() {
    const VXString from = m_Input.Text();
    const VXString to = m_Input.Text();
    for (VXSwfTag* tag : Set()) {
        int delta = 0;
        if (auto* script = dynamic_cast<VXSwfDoActionTag*>(tag)) {
            for (VXFlintActionRecord* action : script->m_ActionRecords)
                ReplaceString(*action, from, to, delta);
            script->m_ActionRecords.InsertCallFunction(to, delta);
        } else if (auto* first = dynamic_cast<VXSwfDoInitActionTag*>(tag)) {
            for (VXFlintActionRecord* action : first->m_ActionRecords)
                ReplaceString(*action, from, to, delta);
        } else if (auto* symbols = dynamic_cast<VXSwfSymbolClassTag*>(tag)) {
            symbols->AddSymbol(to, m_Input.Byte());
        }
    }
}

void Edit::Export() {
    auto* exports = TagOf<VXSwfExportAssetsTag>();
    if (exports == nullptr) return;
    const unsigned short id = m_Input.Byte();
    Require(exports->AddCharacterIdnName(id, m_Input.Text()) == kVXSuccess || exports->m_NumAssets == 0xFFFF);
    VXString name;
    VXIgnore(exports->GetAssestName(id, name));  // a count that was too large keeps the entry out of reach
    exports->GetAssetIDByIndex(m_Input.Byte());
}

void Edit::ListDependencies() {
    std::list<VXSwfTag*> needed;
    if (VXSwfTag* tag = Tag(); tag != nullptr) tag->BuildDependencyList(needed, &m_Movie);
    Set().BuildDependencyList(needed, &m_Movie);
    if (const auto* button = TagOf<VXSwfDefineButton2Tag>(); button != nullptr) {
        std::list<unsigned short> ids;
        button->BuildButtonDependencyList(ids, &m_Movie);
    }
}

/// Gives a tag what only a host can give it.
void Edit::Fill() {
    VXSwfTag* tag = Tag();
    const unsigned short number = m_Input.Word();
    VXBitStream bytes = m_Input.Stream(m_Input.Byte());
    CVXStreamReadWrite stream(bytes.GetBuffer(), bytes.GetSize());
    const VXString text(reinterpret_cast<const char*>(bytes.GetBuffer()), bytes.GetSize());
    if (auto* start = dynamic_cast<VXSwfStartSoundTag*>(tag)) {
        start->StartSound(number);
    } else if (auto* data = dynamic_cast<VXSwfDefineBinaryDataTag*>(tag)) {
        VXIgnore(data->SetBinaryData(&stream));  // 1 for no bytes
    } else if (auto* special = dynamic_cast<VXSwfVXSpecialTag*>(tag)) {
        VXIgnore(special->SetSpecificData(bytes.GetBuffer(), bytes.GetSize()));  // the same
    } else if (auto* name = dynamic_cast<VXSwfDefineFontNameTag*>(tag)) {
        Require(name->AddFontInfo(number, text, text) == kVXSuccess);
    } else if (auto* code = dynamic_cast<VXSwfDoABCTag*>(tag)) {
        const std::unique_ptr<unsigned char[]> old(code->GetABCData());
        code->SetABCData(new unsigned char[number](), number);
        code->m_Name = text;
    } else if (auto* sprite = dynamic_cast<VXSwfDoInitActionTag*>(tag)) {
        Require(sprite->SetSpriteReferenceID(number) == kVXSuccess);
    } else if (auto* color = dynamic_cast<VXSwfSetBackgroundColorTag*>(tag)) {
        color->SetRGBColor(VXFlintRGB(VXColor(number)));
    } else if (auto* shape = dynamic_cast<VXSwfDefineShapeTag*>(tag)) {
        shape->CreateStraightLine(number, 1, 2, number, VXFlintRGB(), number);
    }
    if (auto* script = dynamic_cast<VXSwfActionRecordContainer*>(tag)) {
        auto action = std::make_unique<VXFlintActionRecord>(static_cast<unsigned char>(number));
        action->SetData(bytes.GetBuffer(), bytes.GetSize());
        Require(script->PushActionRecord(action.release()) == kVXSuccess);
    }
}

void Edit::AddFont() {
    const unsigned int what = m_Input.Byte();
    auto* font = dynamic_cast<VXSwfDefineFont2Tag*>(
        MakeTag((what & 1) != 0 ? VXSwfTagFactory::TAG_DEFINEFONT3 : VXSwfTagFactory::TAG_DEFINEFONT2, 0)
            .release());
    Require(font != nullptr);
    const VXString name = m_Input.Text();
    const short bold = (what & 2) != 0, italic = (what & 4) != 0;
    if ((what & 8) != 0) {
        VXIgnore(font->CreateDeviceFont(name, bold, italic));  // cannot fail
    } else {
        VXIgnore(font->CreateGlyphFont(name, bold, italic));
    }
    if ((what & 16) != 0) font->m_HasLayout = 1;
    if ((what & 32) != 0) font->m_WideCodes = 0;
    if ((what & 64) != 0) font->m_WideOffsets = 0;
    for (unsigned int count = m_Input.Byte() % 16; count > 0; --count) font->AddGlyphText(m_Input.Word());
    if ((what & 128) != 0) font->UpdateForGlyphFont();
    font->SetCharacterId(m_Input.Byte());
    // At the top, which keeps its fonts.
    m_Movie.IncludeTag(font, Frame());
    m_Fonts.push_back(font);
}

/// One that is shared with whoever asks for it again.
void Edit::PublishFont() {
    VXBucketSWFIDGenerator generator(m_Movie);
    const VXString name = m_Input.Text();
    const unsigned int what = m_Input.Byte();
    const short bold = what & 1, italic = what >> 1 & 1;
    VXSwfDefineFont2Tag* font =
        VXFontPublishManager::GetDefineFontTag(name, bold, italic, &generator, &m_Movie, true);
    Require(font != nullptr);
    m_Fonts.push_back(font);
    font->AddGlyphText(m_Input.Word());
    const TagPtr temporary =
        Own(VXFontPublishManager::GetTemporaryDefineFontTag(name, bold, italic, &generator));
    Require(temporary != nullptr && temporary.get() != font);
    float first = 1.0f, second = 1.0f;
    if (!VXFontPublishManager::GetWinFontData(name, m_Input.Real(), first, second)) {
        Require(first == 0.0f && second == 0.0f);
    }
    BND_NT_NMT::CTYFontInstance instance =
        VXFontPublishManager::GetFontInstance(name, bold != 0, italic != 0, first);
    VXFontPublishManager::CharWidth(m_Input.Word(), instance);
    if ((what & 4) != 0) VXFontPublishManager::RemoveFontTag(name, bold, italic);
}

void Edit::AddText() {
    auto* text = dynamic_cast<VXSwfDefineTextTag*>(
        MakeTag(m_Input.Byte() % 2 == 0 ? VXSwfTagFactory::TAG_DEFINETEXT : VXSwfTagFactory::TAG_DEFINETEXT2,
                0)
            .release());
    Require(text != nullptr);
    text->m_GlyphBits = m_Input.Byte();
    text->m_AdvanceBits = m_Input.Byte();
    for (unsigned int runs = m_Input.Byte() % 4; runs > 0; --runs) {
        VXSwfTextStyleChangeRecord run;
        run.m_FontId = m_Input.Byte();
        run.m_XOffset = m_Input.Word();
        run.m_YOffset = m_Input.Word();
        run.m_TextHeight = m_Input.Word();
        run.m_Character = m_Input.Word();
        run.m_GlyphCount = m_Input.Byte();
        if (const unsigned int font = m_Input.Byte(); font < m_Fonts.size()) run.m_Font = m_Fonts[font];
        run.m_GlyphEntries.resize(m_Input.Byte() % 8);
        for (VXFlintGlyphEntry& entry : run.m_GlyphEntries) {
            entry.m_GlyphIndex = m_Input.Word();
            entry.m_GlyphAdvance = static_cast<int>(m_Input.DWord());
        }
        text->m_TextRecords.push_back(run);
    }
    m_Movie.IncludeTag(text, Frame());
}

void Edit::AddField() {
    auto* field =
        dynamic_cast<VXSwfDefineEditTextTag*>(MakeTag(VXSwfTagFactory::TAG_DEFINEEDITTEXT, 0).release());
    Require(field != nullptr);
    const unsigned int what = m_Input.Byte();
    if ((what & 1) != 0) field->SetText(m_Input.Text());
    if ((what & 2) != 0) field->SetVariable(m_Input.Text());
    if ((what & 4) != 0) field->SetFont(m_Input.Byte());
    if ((what & 8) != 0) field->SetFontSize(m_Input.Word());
    if ((what & 16) != 0) field->SetMaxLength(m_Input.Word());
    field->m_HasMaxLength = (what & 32) != 0;
    field->m_HasLayout = (what & 64) != 0;
    field->m_HasTextColor = (what & 128) != 0;
    VXFlintRectangle rect;
    const double left = m_Input.Real(), top = m_Input.Real();
    rect.Set(left, top, left, m_Input.Real());
    field->SetRect(rect);
    field->SetCharacterId(m_Input.Byte());
    Set().IncludeTag(field, Frame());
}

void Edit::AddButton() {
    auto* button =
        dynamic_cast<VXSwfDefineButton2Tag*>(MakeTag(VXSwfTagFactory::TAG_DEFINEBUTTON2, 0).release());
    Require(button != nullptr);
    for (unsigned int count = m_Input.Byte() % 4; count > 0; --count) {
        const unsigned int states = m_Input.Byte();
        const unsigned short id = m_Input.Byte();
        button->CreateButtonRecord(states & 1, states >> 1 & 1, states >> 2 & 1, states >> 3 & 1, id,
                                   m_Input.Word());
        auto action = std::make_unique<VXFlintButtonCondAction>();
        action->CondKeyPress = states >> 4;
        action->Actions.InsertCallFunction(m_Input.Text(), static_cast<int>(states));
        button->AddButtonAction(action.release());
    }
    button->SetCharacterId(m_Input.Byte());
    Set().IncludeTag(button, Frame());
}

void Edit::ChangeHeader() {
    m_Movie.SetWidth(m_Input.DWord());
    m_Movie.SetHeight(m_Input.DWord());
    m_Movie.SetFrameRate(m_Input.Word());
    m_Movie.SetFrameCount(m_Input.Word());
    m_Movie.SetFlintVersion(m_Input.Byte());
    m_Movie.GetActionScriptVersion();
    m_Movie.CanSupportAS3Version();
}

void Edit::MergeSelf() {
    if (++m_Merges > kMostMerges) return;
    VXBucketSWFIDGenerator generator(m_Movie);
    const unsigned int options = m_Input.Byte();
    Require(m_Movie.IncludeTagSetAsSprite(&Set(), Frame(), &generator, nullptr, options & 1, nullptr,
                                          options >> 1 & 1, options >> 2 & 1) != nullptr);
}

void Edit::MergeOther() {
    if (++m_Merges > kMostMerges) return;
    VXBucketSWFIDGenerator generator(m_Movie);
    std::map<VXString, VXSwfExportAssetsTag*> exports;
    const unsigned int options = m_Input.Byte();
    short isFreed = 0;
    Require(Set().IncludeTagSetAsSprite(&m_Other, Frame(), &generator, &exports, options & 1, &isFreed,
                                        options >> 1 & 1, options >> 2 & 1) != nullptr);
}

void Edit::Include() {
    if (++m_Merges > kMostMerges) return;
    VXBucketSWFIDGenerator generator(m_Movie);
    unsigned short ignoredId = 0;
    const unsigned int frame = m_Input.Byte() % 8;
    VXSwfTagSet& source = m_Input.Byte() % 2 == 0 ? m_Other : m_Movie;
    m_Movie.IncludeCharacter(&source, m_Input.Byte(), ignoredId, &generator, frame);
    m_Movie.IncludeSpriteByName(&source, m_Input.Text(), &generator, frame);
}

/// Shares the tags for a while, then has tags of its own.
void Edit::CopyMovie() {
    {
        VXFlintFile shared(m_Movie);
        shared.IncludeShowFrameTags(1, 0);
        m_Other = shared;
    }
    const std::unique_ptr<VXFlintFile> copy(m_Movie.Copy());
    Require(copy != nullptr && copy->GetCompression() == 0);
    VXBitStream out;
    VXIgnore(copy->DumpToStream(out));  // as in DumpAndLoad
}

void Edit::DumpAndLoad() {
    VXBitStream out;
    VXIgnore(DumpTwice(m_Movie, out));
    VXFlintFile again;
    again.SetParsingMode(m_ParsingMode);
    VXIgnore(again.LoadFromStream(out));  // a field that is too narrow for its value spoils what follows
    VXBitStream dumped;
    VXIgnore(again.DumpToStream(dumped));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    VXSetAssertHandler([](const char*) {});
    Input input(data, size);
    const unsigned int head = input.Word();
    const VXBitStream movie = input.Stream(head & kLengthMask);
    static const int started = GetSwfParserComponent()->Startup();
    Require(started == 0);
    Edit(input, (head & kIsRaw) != 0 ? 1 : 0).Run(movie);
    return 0;
}
