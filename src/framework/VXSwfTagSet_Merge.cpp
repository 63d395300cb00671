#include <algorithm>
#include <bitset>
#include <climits>
#include <cstdint>
#include <iterator>
#include <memory>
#include <optional>
#include <unordered_set>
#include <utility>

#include "framework/VXCopyLimit_p.h"
#include "framework/VXFlintFile.h"
#include "framework/VXMakeTag_p.h"
#include "framework/VXSwfTagSet.h"
#include "media/VXSwfDefineBitsJpegTag.h"
#include "scripting/VXSwfExportAssetsTag.h"
#include "timeline/VXSwfDefineSpriteTag.h"
#include "timeline/VXSwfFreeCharacterTag.h"
#include "timeline/VXSwfPlaceObject2Tag.h"
#include "timeline/VXSwfPlaceObjectTag.h"
#include "timeline/VXSwfRemoveObjectTag.h"

namespace {

using TagOwner = std::unique_ptr<VXSwfTag>;

constexpr unsigned short kDepthLift = 100;
constexpr unsigned int kIdSize = 2;
constexpr std::size_t kNumIds = 65536;

struct Component {
    const char* name;
    tVXSwfReservedIDEnum reservedId;
};

constexpr Component kComponents[] = {
    {"button_mc", kVXSwfButtonId},
    {"textinput_mc", kVXSwfTextInputId},
    {"combobox_mc", kVXSwfComboBoxId},
    {"radiobutton_mc", kVXSwfRadioButtonId},
    {"textarea_mc", kVXSwfTextAreaId},
    {"hotspotanim_mc", kVXSwfHotSpotAnimId},
    {"hotspotreviewanim_mc", kVXSwfHotSpotReviewAnimId},
    {"UIscrollbar_mc", kVXSwfScrollBarId},
};

unsigned short Lifted(unsigned short depth) { return static_cast<unsigned short>(depth + kDepthLift); }

/// Moves a copied placement or removal out of the way of what the destination has.
void LiftDepth(VXSwfTag& tag) {
    switch (tag.GetTagType()) {
        case VXSwfTagFactory::TAG_PLACEOBJECT:
            if (auto* placement = dynamic_cast<VXSwfPlaceObjectTag*>(&tag)) {
                placement->SetDepth(Lifted(placement->GetDepth()));
            }
            break;
        case VXSwfTagFactory::TAG_REMOVEOBJECT:
        case VXSwfTagFactory::TAG_REMOVEOBJECT2:
            if (auto* removal = dynamic_cast<VXSwfRemoveObjectTag*>(&tag)) {
                removal->SetDepth(Lifted(removal->GetDepth()));
            }
            break;
        case VXSwfTagFactory::TAG_PLACEOBJECT2:
        case VXSwfTagFactory::TAG_PLACEOBJECT3:
            if (auto* placement = dynamic_cast<VXSwfPlaceObject2Tag*>(&tag)) {
                placement->SetDepth(Lifted(placement->GetDepth()), 1);
            }
            break;
        default:
            break;
    }
}

/// The name that stands first in an export table, if it is that of a script package; else empty.
VXString PackageOf(const VXSwfExportAssetsTag& table) {
    VXString name;
    if (table.GetAssestName(table.GetAssetIDByIndex(0), name) != kVXSuccess) return VXString();
    return name.GetUnits().starts_with(u"__Packages") ? name : VXString();
}

/// The ID that a table exports under that name, or 0. An ID of 0 ends the table.
unsigned short IdExportedAs(const VXSwfExportAssetsTag& table, const VXString& name) {
    std::bitset<kNumIds> seen;  // an ID has the name of its first entry
    const std::size_t count = std::min(table.m_Ids.size(), table.m_Names.size());
    for (std::size_t i = 0; i < count && table.m_Ids[i] != 0; ++i) {
        const unsigned short id = table.m_Ids[i];
        if (seen.test(id)) continue;
        if (table.m_Names[i] == name) return id;
        seen.set(id);
    }
    return 0;
}

/// The placement of type 26 that `tag` is, when it names its instance `name`.
VXSwfPlaceObject2Tag* AsPlacementNamed(VXSwfTag* tag, const VXString& name) {
    if (tag == nullptr || tag->GetTagType() != VXSwfTagFactory::TAG_PLACEOBJECT2) return nullptr;
    auto* placement = dynamic_cast<VXSwfPlaceObject2Tag*>(tag);
    return placement != nullptr && placement->GetHasName() != 0 && placement->GetName() == name ? placement
                                                                                                : nullptr;
}

}  // namespace

/// What one call that copies tags into a set has done to it. Undoes all of it unless the call comes to its end.
class VXSwfTagSet::Inclusion {
public:
    explicit Inclusion(VXSwfTagSet& set) : m_Set(set), m_NumShowFrames(set.m_NumShowFrames) {}
    ~Inclusion();
    Inclusion(const Inclusion&) = delete;
    Inclusion& operator=(const Inclusion&) = delete;

    /// To be called before the set gets the tag.
    void Note(VXSwfTag* tag) { m_Tags.push_back(tag); }
    /// Enters an ID into the map that the set keeps.
    void Renumber(unsigned short oldId, unsigned short newId);
    void SetCharacterId(VXSwfTag& tag, unsigned short id);
    void Complete() { m_IsComplete = true; }

private:
    struct Renumbering {
        unsigned short oldId;
        std::optional<unsigned short> newId;  // the one before, if there was one
    };
    struct Rebinding {
        VXSwfTag* tag;
        unsigned short id;
        unsigned short firstWord;  // of the body, which tags without an ID overwrite too
    };

    VXSwfTagSet& m_Set;
    const unsigned int m_NumShowFrames;
    std::vector<VXSwfTag*> m_Tags;
    std::vector<Renumbering> m_Renumberings;
    std::vector<Rebinding> m_Rebindings;
    bool m_IsComplete = false;
    const VXCopyLimit m_Limit;
};

void VXSwfTagSet::Inclusion::Renumber(unsigned short oldId, unsigned short newId) {
    const auto entry = m_Set.m_IdMap.find(oldId);
    m_Renumberings.push_back({oldId, {}});
    if (entry != m_Set.m_IdMap.end()) m_Renumberings.back().newId = entry->second;
    m_Set.m_IdMap.Set(oldId, newId);
}

void VXSwfTagSet::Inclusion::SetCharacterId(VXSwfTag& tag, unsigned short id) {
    const unsigned char* word = tag.GetFirstWord();
    m_Rebindings.push_back({&tag, tag.GetCharacterId(),
                            static_cast<unsigned short>(word == nullptr ? 0 : word[0] | word[1] << 8)});
    tag.SetCharacterId(id);
}

VXSwfTagSet::Inclusion::~Inclusion() {
    if (m_IsComplete) return;
    std::for_each(m_Rebindings.rbegin(), m_Rebindings.rend(), [](const Rebinding& old) {
        old.tag->SetCharacterId(old.id);
        old.tag->VXSwfTag::SetCharacterId(old.firstWord);
    });
    std::for_each(m_Renumberings.rbegin(), m_Renumberings.rend(), [this](const Renumbering& old) {
        if (old.newId.has_value()) {
            m_Set.m_IdMap.Set(old.oldId, *old.newId);
        } else {
            m_Set.m_IdMap.erase(old.oldId);
        }
    });
    if (auto* movie = dynamic_cast<VXFlintFile*>(&m_Set)) movie->Unlist(m_Tags);
    // A subclass may put tags anywhere, and one that found no memory may be gone.
    std::sort(m_Tags.begin(), m_Tags.end());
    for (TagIter place = m_Set.begin(); place != m_Set.end();) {
        const TagIter next = std::next(place);
        if (std::binary_search(m_Tags.begin(), m_Tags.end(), *place)) m_Set.EraseAndDeleteTags(place, next);
        place = next;
    }
    m_Set.m_NumShowFrames = m_NumShowFrames;
}

/// One merge of a movie as a sprite, while it runs.
struct VXSwfTagSet::Merge {
    // Every picture takes the source's JPEG tables along. Beyond this, the tables would turn a small movie
    // into a huge one, and pictures come without.
    static constexpr std::uint64_t kFreeTables = std::uint64_t{64} << 20;
    static constexpr std::uint64_t kTablesShare = 16;

    void AddToTimeline(VXSwfTag& tag);
    void AddToTop(TagOwner copy);
    void Include(TagOwner tag) {
        inclusion.Note(tag.get());
        target.IncludeTag(tag.release(), before);
    }
    void AddExports(VXSwfTag& tag);
    /// A DefineBits tag as DefineBitsJPEG2, which holds its own tables.
    TagOwner ConvertBits(const VXSwfTag& bits);

    VXSwfTagSet& target;
    TagIter before;
    VXSwfDefineSpriteTag& sprite;
    IVXSwfIdGenerator& generator;
    std::map<VXString, VXSwfExportAssetsTag*>* exports;
    const VXSwfTag* jpegTables;
    Inclusion inclusion{target};
    VXFlintIDMap ids{};
    std::bitset<kNumIds> defined{};  // old IDs with a new one other than 0
    std::vector<VXSwfTag*> copies{};
    std::vector<TagOwner> symbolClasses{};
    std::map<VXString, VXSwfExportAssetsTag*> newExports{};
    std::uint64_t tablesLeft = kFreeTables;
};

void VXSwfTagSet::Merge::AddToTimeline(VXSwfTag& tag) {
    TagOwner copy(tag.Copy());
    if (copy == nullptr) return;
    LiftDepth(*copy);
    copies.push_back(copy.get());
    sprite.IncludeTag(copy.release(), -1);
}

void VXSwfTagSet::Merge::AddToTop(TagOwner copy) {
    if (copy == nullptr) return;
    if (const unsigned short oldId = copy->GetCharacterId(); oldId != 0) {
        if (defined.test(oldId)) return;
        const unsigned short newId = generator.GetId(kVXSwfOrdinaryId);
        copy->SetCharacterId(newId);
        ids.Set(oldId, newId);
        defined.set(oldId, newId != 0);
    }
    copies.push_back(copy.get());
    if (copy->GetTagType() == VXSwfTagFactory::TAG_SYMBOLCLASS) {
        symbolClasses.push_back(std::move(copy));
    } else {
        Include(std::move(copy));
    }
}

void VXSwfTagSet::Merge::AddExports(VXSwfTag& tag) {
    TagOwner copy(tag.Copy());
    auto* table = dynamic_cast<VXSwfExportAssetsTag*>(&tag);
    // A movie that was loaded raw shows its table in the copy, and has no tag to remember.
    const auto* readable = table != nullptr ? table : dynamic_cast<VXSwfExportAssetsTag*>(copy.get());
    if (readable != nullptr && exports != nullptr) {
        const VXString package = PackageOf(*readable);
        if (!package.empty() && (exports->contains(package) || !newExports.emplace(package, table).second))
            return;
    }
    AddToTop(std::move(copy));
}

TagOwner VXSwfTagSet::Merge::ConvertBits(const VXSwfTag& bits) {
    auto jpeg = VXMakeTag<VXSwfDefineBitsJpegTag>(VXSwfTagFactory::TAG_DEFINEBITSJPEG2);
    if (jpeg == nullptr) return nullptr;
    jpeg->SetCharacterId(bits.GetCharacterId());
    const unsigned int bodySize = std::min(bits.m_TagLen, bits.GetBodySize());
    const unsigned int pictureSize = bodySize > kIdSize ? bodySize - kIdSize : 0;
    unsigned int tablesSize =
        jpegTables == nullptr ? 0 : std::min(jpegTables->m_TagLen, jpegTables->GetBodySize());
    tablesLeft += kTablesShare * pictureSize;
    if (tablesSize > tablesLeft) tablesSize = 0;
    tablesLeft -= tablesSize;
    // Kept: one byte more than the picture has.
    const std::uint64_t size = std::uint64_t{tablesSize} + pictureSize + 1;
    if (size > UINT_MAX) return nullptr;
    std::unique_ptr<unsigned char[]> bytes(new unsigned char[size]);
    unsigned char* end = bytes.get();
    if (tablesSize != 0) end = std::copy_n(jpegTables->GetBody(), tablesSize, end);
    if (pictureSize != 0) end = std::copy_n(bits.GetBody() + kIdSize, pictureSize, end);
    *end = 0;
    VXIgnore(jpeg->SetJpegData(bytes.release(), static_cast<unsigned int>(size)));  // fails for null alone
    return jpeg;
}

VXSwfDefineSpriteTag* VXSwfTagSet::IncludeTagSetAsSprite(VXSwfTagSet* source, int frame,
                                                         IVXSwfIdGenerator* generator,
                                                         std::map<VXString, VXSwfExportAssetsTag*>* exports,
                                                         short includeABC, short* hasFreeCharacter,
                                                         short bindComponents, short convertJpegTables) {
    auto sprite = VXMakeTag<VXSwfDefineSpriteTag>(VXSwfTagFactory::TAG_DEFINESPRITE);
    if (sprite == nullptr || source == nullptr || generator == nullptr) return sprite.release();
    // Taken first, since the source may be this very set.
    const std::vector<VXSwfTag*> tags(source->begin(), source->end());
    const VXSwfTag* jpegTables = nullptr;
    if (convertJpegTables != 0) {
        const TagIter tables = source->FindNthTagOfType(VXSwfTagFactory::TAG_JPEGTABLES, 1);
        if (tables != source->end()) jpegTables = *tables;
    }
    const TagIter before = FindFrameEnd(static_cast<unsigned int>(frame));
    Merge merge{*this, before, *sprite, *generator, exports, jpegTables};
    merge.copies.reserve(tags.size());
    bool freesCharacter = false;
    // What refers to character 0 refers to the main timeline, which the sprite is now.
    const unsigned short spriteId = generator->GetId(kVXSwfOrdinaryId);
    merge.ids.Set(0, spriteId);
    sprite->SetCharacterId(spriteId);

    for (VXSwfTag* tag : tags) {
        if (tag == nullptr) continue;
        switch (tag->GetTagType()) {
            case VXSwfTagFactory::TAG_END:
            case VXSwfTagFactory::TAG_JPEGTABLES:
            case VXSwfTagFactory::TAG_SETBACKGROUNDCOLOR:
            case VXSwfTagFactory::TAG_DOACTION:
            case VXSwfTagFactory::TAG_PROTECT:
            case VXSwfTagFactory::TAG_FILEATTRIBUTES:
            case VXSwfTagFactory::TAG_METADATA:
            case VXSwfTagFactory::TAG_DEFINESCENEANDFRAMELABELDATA:
                break;
            case VXSwfTagFactory::TAG_SHOWFRAME:
            case VXSwfTagFactory::TAG_PLACEOBJECT:
            case VXSwfTagFactory::TAG_REMOVEOBJECT:
            case VXSwfTagFactory::TAG_STARTSOUND:
            case VXSwfTagFactory::TAG_SOUNDSTREAMHEAD:
            case VXSwfTagFactory::TAG_SOUNDSTREAMBLOCK:
            case VXSwfTagFactory::TAG_PLACEOBJECT2:
            case VXSwfTagFactory::TAG_REMOVEOBJECT2:
            case VXSwfTagFactory::TAG_FRAMELABEL:
            case VXSwfTagFactory::TAG_SOUNDSTREAMHEAD2:
            case VXSwfTagFactory::TAG_PLACEOBJECT3:
                merge.AddToTimeline(*tag);
                break;
            case VXSwfTagFactory::TAG_FREECHARACTER:
                freesCharacter = true;
                merge.AddToTop(TagOwner(tag->Copy()));
                break;
            case VXSwfTagFactory::TAG_DEFINEBITS:
                merge.AddToTop(merge.ConvertBits(*tag));
                break;
            case VXSwfTagFactory::TAG_EXPORTASSETS:
                merge.AddExports(*tag);
                break;
            case VXSwfTagFactory::TAG_DOABC:
                if (includeABC == 1) merge.AddToTop(TagOwner(tag->Copy()));
                break;
            default:
                merge.AddToTop(TagOwner(tag->Copy()));
                break;
        }
    }

    if (bindComponents != 0) {
        for (const Component& component : kComponents) {
            UpdateNewTagId(sprite.get(), component.name, generator, component.reservedId, merge.ids,
                           merge.inclusion);
        }
    }
    for (VXSwfTag* copy : merge.copies) copy->UpdateReferenceIDs(&merge.ids);
    VXSwfDefineSpriteTag* merged = sprite.get();
    merge.Include(std::move(sprite));
    for (TagOwner& symbolClass : merge.symbolClasses) merge.Include(std::move(symbolClass));
    // Nothing can fail any more.
    merge.inclusion.Complete();
    if (exports != nullptr) exports->merge(merge.newExports);
    if (freesCharacter && hasFreeCharacter != nullptr) *hasFreeCharacter = 1;
    return merged;
}

void VXSwfTagSet::UpdateNewTagId(VXSwfDefineSpriteTag* sprite, const VXString& name,
                                 IVXSwfIdGenerator* generator, tVXSwfReservedIDEnum reservedId,
                                 VXFlintIDMap& idMap, Inclusion& inclusion) {
    // The references of the placements are still those of the source.
    const unsigned short oldId = sprite->FindSpriteId(name, nullptr);
    if (oldId == 0) return;
    // Kept: a character that nobody defined maps to 0, and the first tag without an ID is taken for it.
    VXSwfTag* tag = FindTagByID(idMap.GetNewId(oldId));
    if (tag == nullptr) return;
    const unsigned short newId = generator->GetId(reservedId);
    inclusion.SetCharacterId(*tag, newId);
    idMap.Set(oldId, newId);
}

VXSwfTag* VXSwfTagSet::IncludeCharacter(VXSwfTagSet* source, const unsigned short& id, unsigned short&,
                                        IVXSwfIdGenerator* generator, unsigned int frame) {
    if (source == nullptr || generator == nullptr) return nullptr;
    const unsigned short wantedId = id;  // a copy: the reference may lead into what changes below
    VXSwfTag* wanted = source->FindTagByID(wantedId);
    if (wanted == nullptr) return nullptr;
    std::list<VXSwfTag*> needed;
    wanted->BuildDependencyList(needed, source);
    needed.remove(nullptr);
    Inclusion inclusion(*this);
    for (const VXSwfTag* tag : needed) {
        inclusion.Renumber(tag->GetCharacterId(), generator->GetId(kVXSwfOrdinaryId));
    }
    VXSwfTag* included = nullptr;
    for (VXSwfTag* tag : needed) {
        const unsigned short oldId = tag->GetCharacterId();
        TagOwner copy(tag->Copy());
        if (copy == nullptr) continue;
        copy->SetCharacterId(m_IdMap.GetNewId(oldId));
        copy->UpdateReferenceIDs(&m_IdMap);
        if (oldId == wantedId) included = copy.get();
        inclusion.Note(copy.get());
        IncludeTag(copy.release(), static_cast<int>(frame));
    }
    inclusion.Complete();
    return included;
}

VXSwfTag* VXSwfTagSet::IncludeSpriteByName(VXSwfTagSet* source, VXString name, IVXSwfIdGenerator* generator,
                                           unsigned int frame) {
    if (source == nullptr) return nullptr;
    const unsigned short id = source->FindSpriteId(name, nullptr);
    unsigned short ignoredId = 0;
    return id == 0 ? nullptr : IncludeCharacter(source, id, ignoredId, generator, frame);
}

unsigned short VXSwfTagSet::FindSpriteId(const VXString& name, VXSwfPlaceObject2Tag** placement) const {
    for (VXSwfTag* tag : m_Tags) {
        VXSwfPlaceObject2Tag* named = AsPlacementNamed(tag, name);
        if (named == nullptr) continue;
        if (placement != nullptr) *placement = named;
        return named->GetReferencedID();
    }
    return 0;
}

unsigned short VXSwfTagSet::FindSpriteIdByExportName(const VXString& name) const {
    for (const VXSwfTag* tag : m_Tags) {
        if (tag == nullptr || tag->GetTagType() != VXSwfTagFactory::TAG_EXPORTASSETS) continue;
        const auto* table = dynamic_cast<const VXSwfExportAssetsTag*>(tag);
        const unsigned short id = table == nullptr ? 0 : IdExportedAs(*table, name);
        if (id != 0) return id;
    }
    return 0;
}

VXSwfDefineSpriteTag* VXSwfTagSet::FindSprite(const VXString& name) const {
    return dynamic_cast<VXSwfDefineSpriteTag*>(FindTagByID(FindSpriteId(name, nullptr)));
}

void VXSwfTagSet::AddFreeCharacterAtEnd() {
    std::vector<TagOwner> removals;
    std::vector<TagOwner> frees;
    for (VXSwfTag* tag : m_Tags) {
        if (tag == nullptr) continue;
        if (tag->GetTagType() == VXSwfTagFactory::TAG_PLACEOBJECT2) {
            const auto* placement = dynamic_cast<const VXSwfPlaceObject2Tag*>(tag);
            auto removal = VXMakeTag<VXSwfRemoveObjectTag>(VXSwfTagFactory::TAG_REMOVEOBJECT2);
            if (placement == nullptr || removal == nullptr) return;
            removal->SetDepth(placement->GetDepth());
            removals.push_back(std::move(removal));
        } else if (tag->GetTagType() == VXSwfTagFactory::TAG_DEFINEBITSLOSSLESS2) {
            auto free = VXMakeTag<VXSwfFreeCharacterTag>(VXSwfTagFactory::TAG_FREECHARACTER);
            if (free == nullptr) return;
            free->SetReferencedID(tag->GetCharacterId());
            frees.push_back(std::move(free));
        }
    }
    std::vector<VXSwfTag*> moved;
    std::vector<TagIter> places;
    std::unordered_set<const VXSwfTag*> seen;  // a tag that stands in the list more than once moves once
    for (TagIter place = begin(); place != end(); ++place) {
        VXSwfTag* tag = *place;
        if (tag == nullptr || tag->GetTagType() != VXSwfTagFactory::TAG_FREECHARACTER) continue;
        places.push_back(place);
        if (seen.insert(tag).second) moved.push_back(tag);
    }
    for (TagOwner& removal : removals) IncludeTag(removal.release(), -1);
    for (TagOwner& free : frees) IncludeTag(free.release(), -1);
    // A tag leaves its old place when it has the new one.
    for (VXSwfTag* free : moved) IncludeTag(free, -1);
    for (const TagIter place : places) EraseTags(place, std::next(place));
}
