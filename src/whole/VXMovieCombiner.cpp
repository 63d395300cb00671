#include "whole/VXMovieCombiner.h"

#include <algorithm>
#include <bitset>
#include <iterator>
#include <new>
#include <unordered_map>
#include <utility>
#include <vector>

#include "timeline/VXSwfFileAttributesTag.h"
#include "whole/VXCarriedTag_p.h"
#include "whole/VXCharacterIds.h"
#include "whole/VXJpegTables_p.h"
#include "whole/VXPlacementBytes_p.h"
#include "whole/VXWholeMovie.h"

namespace {

using Role = VXCharacterIds::Role;
using TagIter = VXSwfTagSet::TagIter;
using IdSet = std::bitset<0x10000>;

constexpr unsigned int kNumIds = 0x10000;
constexpr unsigned int kIdSize = 2;
constexpr unsigned int kNoBitmap = 0xFFFF;
constexpr unsigned int kDeepestDepth = 0xFFFF;
constexpr unsigned char kFirstVersionWithSprites = 3;
constexpr unsigned char kFirstVersionWithThis = 5;
constexpr unsigned char kFirstVersionWithLongEvents = 6;
constexpr std::uint64_t kPictureRoom = std::uint64_t{64} << 20;
constexpr std::uint64_t kPictureShare = 16;
constexpr unsigned char kHasMetadata = 0x10;
constexpr unsigned char kHasAS3 = 0x08;

/// Published types that have no name of their own.
enum : unsigned int {
    kImportAssets = 57,
    kEnableDebugger = 58,
    kDebugId = 63,
    kScriptLimits = 65,
    kImportAssets2 = 71,
    kBytecode = 72,
    kTelemetry = 93,
};

enum class Goes { kNowhere, kInFront, kInside, kBehind };

/// Where a tag of a source goes, seen from the sprite.
Goes WhereGoes(unsigned int type) {
    switch (type) {
        case VXSwfTagFactory::TAG_END:
        case VXSwfTagFactory::TAG_JPEGTABLES:
        case VXSwfTagFactory::TAG_SETBACKGROUNDCOLOR:
        case VXSwfTagFactory::TAG_PROTECT:
        case VXSwfTagFactory::TAG_SERIALNUMBER:
        case kEnableDebugger:
        case kDebugId:
        case VXSwfTagFactory::TAG_ENABLEDEBUGGER2:
        case kScriptLimits:
        case VXSwfTagFactory::TAG_FILEATTRIBUTES:
        case VXSwfTagFactory::TAG_METADATA:
        case VXSwfTagFactory::TAG_DEFINESCENEANDFRAMELABELDATA:
        case kTelemetry:
            return Goes::kNowhere;
        case VXSwfTagFactory::TAG_SYMBOLCLASS:
            return Goes::kBehind;
        case VXSwfTagFactory::TAG_DEFINEFONTINFO:
        case VXSwfTagFactory::TAG_DEFINEBUTTONSOUND:
        case VXSwfTagFactory::TAG_DEFINEBUTTONCXFORM:
        case VXSwfTagFactory::TAG_NAMECHARACTER:
        case VXSwfTagFactory::TAG_EXPORTASSETS:
        case kImportAssets:
        case VXSwfTagFactory::TAG_DOINITACTION:
        case VXSwfTagFactory::TAG_DEFINEFONTINFO2:
        case kImportAssets2:
        case kBytecode:
        case VXSwfTagFactory::TAG_DEFINEFONTALIGNZONES:
        case VXSwfTagFactory::TAG_CSMTEXTSETTINGS:
        case VXSwfTagFactory::TAG_DEFINESCALINGGRID:
        case VXSwfTagFactory::TAG_DOABC:
        case VXSwfTagFactory::TAG_DEFINEFONTNAME:
            return Goes::kInFront;
        default:
            return VXCharacterIds::DefinesCharacter(type) ? Goes::kInFront : Goes::kInside;
    }
}

/// Whether a tag at the start of a movie is about the movie and stays in front of all else.
bool IsAboutMovie(unsigned int type) {
    return WhereGoes(type) == Goes::kNowhere && type != VXSwfTagFactory::TAG_JPEGTABLES;
}

std::span<const unsigned char> ViewOf(const VXTagBody& body) { return {body.bytes, body.length}; }

VXTagOwner MakeTag(unsigned int type, const unsigned char* body, unsigned int length, unsigned char version) {
    constexpr unsigned int kLong = 63;
    VXBitStream wire;
    VXIgnore(wire.WriteWord(static_cast<unsigned short>(type << 6 | std::min(length, kLong))));
    if (length >= kLong) VXIgnore(wire.WriteDWord(length));
    if (length != 0) VXIgnore(wire.Write(body, length));
    if (wire.HasFailed()) throw std::bad_alloc();
    wire.SetPosition(0);
    VXTagOwner tag = VXMakeCarriedTag(version);
    if (tag->LoadFromStream(wire) != kVXSuccess) throw std::bad_alloc();
    return tag;
}

VXTagOwner MakeTag(unsigned int type, VXBitStream& body, unsigned char version) {
    if (body.HasFailed()) throw std::bad_alloc();
    return MakeTag(type, body.GetBuffer(), body.GetSize(), version);
}

/// The same tag with clip events of 32 bits; null when it has none to change.
VXTagOwner WidenedTag(VXSwfTag& tag, unsigned char version) {
    VXTagOwner widened(nullptr, &VXSwfTagFactory::DeleteTag);
    VXBitStream scratch;
    VXBitStream out;
    const unsigned int type = tag.GetTagType();
    if (type != VXSwfTagFactory::TAG_PLACEOBJECT2 && type != VXSwfTagFactory::TAG_DEFINESPRITE)
        return widened;
    if (VXWidenClipEvents(type, ViewOf(VXTagBody(tag, scratch)), out)) {
        widened = MakeTag(type, out, version);
        widened->SetIsLongTag(tag.IsLongTag());
    }
    return widened;
}

/// Calls `visit(place)` for each tag of a set, and of the sprites in it that are parsed.
template <typename Visit>
void ForEachTag(VXSwfTagSet& set, const Visit& visit) {
    for (TagIter place = set.begin(); place != set.end(); ++place) {
        if (*place == nullptr) continue;
        if (auto* sprite = dynamic_cast<VXSwfTagSet*>(*place)) ForEachTag(*sprite, visit);
        visit(place);
    }
}

/// The kind of scripts that runs. Where a movie has both, the file attributes decide.
struct Scripts {
    bool hasOld = false;
    bool hasNew = false;
    bool isStatedNew = false;

    void Add(const VXTagBody& body) {
        hasNew = hasNew || body.type == VXSwfTagFactory::TAG_DOABC || body.type == kBytecode;
        hasOld = hasOld || VXHasOldScripts(body.type, ViewOf(body));
        if (body.type == VXSwfTagFactory::TAG_FILEATTRIBUTES && body.length != 0) {
            isStatedNew = (body.bytes[0] & kHasAS3) != 0;
        }
    }
    bool IsNone() const { return !hasOld && !hasNew; }
    bool IsNew() const { return hasNew && (!hasOld || isStatedNew); }
};

// this._lockroot = true
constexpr unsigned char kLockRoot[] = {
    0x96, 6,  0, 0, 't', 'h', 'i', 's', 0,                                 // push a text
    0x1C,                                                                  // the variable of that name
    0x96, 13, 0, 0, '_', 'l', 'o', 'c', 'k', 'r', 'o', 'o', 't', 0, 5, 1,  // push a text and true
    0x4F,                                                                  // set the member
    0,
};

/// The IDs of a movie.
struct Ids {
    IdSet used;
    unsigned int lowest = 1;  // none below is free

    /// 0 when none is free.
    unsigned int TakeLowest() {
        while (lowest < kNumIds && used[lowest]) ++lowest;
        if (lowest == kNumIds) return 0;
        used.set(lowest);
        return lowest;
    }
};

}  // namespace

struct VXMovieCombiner::Known {
    Ids ids;
    std::vector<TagIter> frames;  // the first tag of each, behind what is about the movie
    unsigned int topDepth = 0;
    Scripts scripts;
    VXSwfTag* attributes = nullptr;

    explicit Known(VXFlintFile& movie) {
        VXBitStream scratch;
        TagIter first = movie.end();
        ids.used.set(0);
        for (TagIter place = movie.begin(); place != movie.end(); ++place) {
            if (*place == nullptr) continue;
            const VXTagBody body(**place, scratch);
            const bool isInHead = frames.empty() && IsAboutMovie(body.type);
            if (first == movie.end() && !isInHead) first = place;
            if (body.type == VXSwfTagFactory::TAG_SHOWFRAME)
                frames.push_back(std::exchange(first, movie.end()));
            if (body.type == VXSwfTagFactory::TAG_FILEATTRIBUTES && attributes == nullptr &&
                body.length != 0) {
                attributes = *place;
            }
            scripts.Add(body);
            topDepth = std::max(topDepth, VXTopDepthOf(body.type, ViewOf(body)));
            // What is damaged in the movie itself stays as it is.
            VXIgnore(VXCharacterIds::Visit(
                body.type, body.bytes, body.length,
                [&](unsigned int offset, Role) { ids.used.set(VXWordAt(body.bytes + offset)); }));
        }
    }
};

struct VXMovieCombiner::Source {
    VXWholeMovie movie;
    IdSet ownIds;
    IdSet otherIds;                      // referred to and not defined
    std::vector<unsigned short> newIds;  // 0 for what is no ID of the source
    unsigned int spriteId = 0;
    Scripts scripts;
    VXSwfTag* attributes = nullptr;
    VXSwfTag* jpegTables = nullptr;
    std::uint64_t numBytes = 0;
    unsigned int numFrames = 0;
    unsigned int numDamaged = 0;

    void Survey() {
        VXBitStream scratch;
        for (VXSwfTag* tag : movie) {
            const VXTagBody body(*tag, scratch);
            numBytes += body.length;
            if (body.type == VXSwfTagFactory::TAG_SHOWFRAME) ++numFrames;
            if (body.type == VXSwfTagFactory::TAG_JPEGTABLES && jpegTables == nullptr) jpegTables = tag;
            if (body.type == VXSwfTagFactory::TAG_FILEATTRIBUTES && attributes == nullptr &&
                body.length != 0) {
                attributes = tag;
            }
            scripts.Add(body);
            if (WhereGoes(body.type) == Goes::kNowhere) continue;
            const auto note = [&](unsigned int offset, Role role) {
                const bool isOwn = role == Role::kOwn || role == Role::kOwnEntry;
                (isOwn ? ownIds : otherIds).set(VXWordAt(body.bytes + offset));
            };
            if (VXCharacterIds::Visit(body.type, body.bytes, body.length, note) != kVXSuccess) ++numDamaged;
        }
        ownIds.reset(0);
        otherIds.reset(0);
        otherIds.reset(kNoBitmap);
        otherIds &= ~ownIds;
    }

    /// False when there are more characters than free IDs.
    bool TakeIds(Ids& ids) {
        newIds.assign(kNumIds, 0);
        // What can keep its ID does so before others get the lowest.
        for (const IdSet* set : {&ownIds, &otherIds}) {
            for (unsigned int id = 1; id < kNumIds; ++id) {
                if (!(*set)[id] || ids.used[id]) continue;
                ids.used.set(id);
                newIds[id] = static_cast<unsigned short>(id);
            }
        }
        for (const IdSet* set : {&ownIds, &otherIds}) {
            for (unsigned int id = 1; id < kNumIds; ++id) {
                if (!(*set)[id] || newIds[id] != 0) continue;
                newIds[id] = static_cast<unsigned short>(ids.TakeLowest());
                if (newIds[id] == 0) return false;
            }
        }
        spriteId = ids.TakeLowest();
        return spriteId != 0;
    }

    void WriteNewIds(unsigned int type, unsigned char* body, unsigned int length) const {
        const auto write = [&](unsigned int offset, Role) {
            const unsigned int oldId = VXWordAt(body + offset);
            unsigned int id = newIds[oldId];
            if (oldId == 0 && type == VXSwfTagFactory::TAG_SYMBOLCLASS) id = spriteId;
            if (id == 0) return;
            body[offset] = static_cast<unsigned char>(id);
            body[offset + 1] = static_cast<unsigned char>(id >> 8);
        };
        VXIgnore(VXCharacterIds::Visit(type, body, length, write));  // damage was counted before
    }
};

/// Makes the tags that a movie gets, of those of a source.
class VXMovieCombiner::Staging {
public:
    Staging(Source& source, unsigned char version)
        : m_Source(source),
          m_Version(version),
          m_WidensEvents(source.movie.GetFlintVersion() < kFirstVersionWithLongEvents &&
                         version >= kFirstVersionWithLongEvents) {}

    /// False when the pictures would take too much.
    bool Build(const Options& options, unsigned int depth, bool hasNewScripts) {
        VXBitStream sprite;
        BeginSprite(sprite, options.LocksRoot && !hasNewScripts && m_Version >= kFirstVersionWithThis);
        std::uint64_t numPictureBytes = 0;
        for (TagIter place = m_Source.movie.begin(); place != m_Source.movie.end();) {
            const Goes goes = WhereGoes((*place)->GetTagType());
            const TagIter here = place++;
            if (goes == Goes::kNowhere) continue;
            VXTagOwner tag = TakeOut(here);
            if (goes != Goes::kInside) {
                m_Source.WriteNewIds(tag->GetTagType(), tag->GetOwnBody(), tag->GetTagLen());
            }
            if (tag->GetTagType() == VXSwfTagFactory::TAG_DEFINEBITS && tag->GetTagLen() >= kIdSize) {
                tag = JoinedPicture(*tag);
                numPictureBytes += tag->GetTagLen();
                if (numPictureBytes > std::max(kPictureRoom, kPictureShare * m_Source.numBytes)) return false;
            }
            switch (goes) {
                case Goes::kInFront:
                    Append(std::move(tag));
                    break;
                case Goes::kBehind:
                    m_Behind.AppendTag(tag.release());
                    break;
                default:
                    if (tag->DumpToStream(sprite) != kVXSuccess) throw std::bad_alloc();
            }
        }
        Append(EndSprite(sprite));
        m_Tags.m_Tags.splice(m_Tags.end(), m_Behind.m_Tags);
        Append(Placement(options, depth));
        return true;
    }
    void Append(VXTagOwner tag) { m_Tags.AppendTag(tag.release()); }
    VXSwfTagSet& GetTags() { return m_Tags; }

private:
    /// Takes a tag out of the source, in the form of the version.
    VXTagOwner TakeOut(TagIter place) {
        VXTagOwner tag(*place, &VXSwfTagFactory::DeleteTag);
        m_Source.movie.EraseTags(place, std::next(place));
        if (m_WidensEvents) {
            if (VXTagOwner widened = WidenedTag(*tag, m_Version)) tag = std::move(widened);
        }
        tag->SetFLVersion(m_Version);
        return tag;
    }

    VXTagOwner JoinedPicture(VXSwfTag& tag) const {
        VXBitStream scratch;
        const VXTagBody picture(tag, scratch);
        std::span<const unsigned char> tables;
        if (m_Source.jpegTables != nullptr) tables = ViewOf(VXTagBody(*m_Source.jpegTables, scratch));
        VXBitStream body;
        VXIgnore(body.Write(picture.bytes, kIdSize));
        const std::vector<unsigned char> joined = VXJoinJpegTables(tables, ViewOf(picture).subspan(kIdSize));
        VXIgnore(body.Write(joined.data(), static_cast<unsigned int>(joined.size())));
        return MakeTag(VXSwfTagFactory::TAG_DEFINEBITSJPEG2, body, m_Version);
    }

    void BeginSprite(VXBitStream& sprite, bool locksRoot) const {
        // As many frames as the movie states, since scripts can ask; those that state none have what they show.
        const unsigned int stated = m_Source.movie.GetFrameCount();
        VXIgnore(sprite.WriteWord(VXSwfTagFactory::TAG_DEFINESPRITE << 6 | 63));
        VXIgnore(sprite.WriteDWord(0));
        VXIgnore(sprite.WriteWord(0));  // all IDs are written at the end
        VXIgnore(sprite.WriteWord(static_cast<unsigned short>(stated != 0 ? stated : m_Source.numFrames)));
        if (locksRoot) {
            VXIgnore(MakeTag(VXSwfTagFactory::TAG_DOACTION, kLockRoot, sizeof kLockRoot, m_Version)
                         ->DumpToStream(sprite));
        }
    }

    VXTagOwner EndSprite(VXBitStream& sprite) const {
        constexpr unsigned int kHeaderSize = 6;
        VXIgnore(sprite.WriteWord(VXSwfTagFactory::TAG_END));
        if (sprite.HasFailed()) throw std::bad_alloc();
        const unsigned int length = sprite.GetSize() - kHeaderSize;
        m_Source.WriteNewIds(VXSwfTagFactory::TAG_DEFINESPRITE, sprite.GetBuffer() + kHeaderSize, length);
        sprite.SetPosition(2);
        VXIgnore(sprite.WriteDWord(length));
        VXIgnore(sprite.WriteWord(static_cast<unsigned short>(m_Source.spriteId)));
        sprite.SetPosition(0);
        sprite.m_HasOnlyViews = true;
        sprite.ShareBuffer();
        VXTagOwner tag = VXMakeCarriedTag(m_Version);
        if (tag->LoadFromStream(sprite) != kVXSuccess) throw std::bad_alloc();
        sprite.Clean();
        return tag;
    }

    VXTagOwner Placement(const Options& options, unsigned int depth) const {
        constexpr unsigned char kHasCharacterAndMatrix = 0x06;
        constexpr unsigned char kHasName = 0x20;
        const std::string name = options.Name.GetUTF8String();
        VXFlintMatrix matrix = options.Matrix;
        VXBitStream body;
        VXIgnore(body.WriteByte(kHasCharacterAndMatrix | (name.empty() ? 0 : kHasName)));
        VXIgnore(body.WriteWord(static_cast<unsigned short>(depth)));
        VXIgnore(body.WriteWord(static_cast<unsigned short>(m_Source.spriteId)));
        VXIgnore(matrix.DumpToStream(body));
        if (!name.empty()) VXIgnore(body.Write(name.c_str(), static_cast<unsigned int>(name.size() + 1)));
        return MakeTag(VXSwfTagFactory::TAG_PLACEOBJECT2, body, m_Version);
    }

    Source& m_Source;
    const unsigned char m_Version;
    const bool m_WidensEvents;
    VXSwfTagSet m_Tags;
    VXSwfTagSet m_Behind;
};

VXMovieCombiner::VXMovieCombiner(VXFlintFile& movie) : m_Movie(movie) {}

VXMovieCombiner::~VXMovieCombiner() = default;

VXErrorCodeEnum VXMovieCombiner::Fail(std::string text) {
    m_ErrorText = std::move(text);
    return kVXFailure;
}

VXErrorCodeEnum VXMovieCombiner::Combine(VXBitStream& source, const Options& options) {
    return LoadAndTakeIn(source, options);
}

VXErrorCodeEnum VXMovieCombiner::Combine(IVXStream* source, const Options& options) {
    return LoadAndTakeIn(source, options);
}

template <typename Stream>
VXErrorCodeEnum VXMovieCombiner::LoadAndTakeIn(Stream& stream, const Options& options) {
    try {
        m_ErrorText.clear();
        m_Remarks.clear();
        m_HasRaisedVersion = false;
        if (m_Known == nullptr) m_Known = std::make_unique<Known>(m_Movie);
        const auto source = std::make_unique<Source>();
        if (source->movie.LoadFromStream(stream) != kVXSuccess) return Fail(source->movie.GetErrorText());
        return TakeIn(*source, options);
    } catch (const std::bad_alloc&) {
        return Fail("out of memory");
    }
}

VXErrorCodeEnum VXMovieCombiner::TakeIn(Source& source, const Options& options) {
    Known& known = *m_Known;
    if (source.movie.IsLastTagCut() && !options.TakesCutSource) return Fail(source.movie.DescribeTail());
    if (options.Frame == 0 || options.Frame > known.frames.size() + 1) {
        return Fail("there is no frame " + std::to_string(options.Frame) + ", the movie has " +
                    std::to_string(known.frames.size()));
    }
    const unsigned int depth = options.Depth != 0 ? options.Depth : known.topDepth + 1;
    if (depth > kDeepestDepth) return Fail("no depth is left above all others");
    source.Survey();
    const bool hasScripts = !known.scripts.IsNone();
    if (hasScripts && !source.scripts.IsNone() && known.scripts.IsNew() != source.scripts.IsNew()) {
        return Fail("scripts of version 3 cannot stand beside older ones");
    }
    Ids ids = known.ids;
    if (!source.TakeIds(ids)) return Fail("there are more characters than the 65535 IDs");
    std::string remarks = source.movie.DescribeTail();
    if (source.numDamaged != 0) {
        if (!remarks.empty()) remarks += "; ";
        remarks += "damaged tags: " + std::to_string(source.numDamaged);
    }

    const unsigned char oldVersion = m_Movie.GetFlintVersion();
    const unsigned char version =
        std::max({oldVersion, source.movie.GetFlintVersion(), kFirstVersionWithSprites});
    const bool takesKind = !hasScripts && (!source.scripts.IsNone() || known.attributes == nullptr);
    const bool isStatedNew = takesKind ? source.scripts.isStatedNew : known.scripts.isStatedNew;

    // All that can fail comes first, aside.
    Staging staging(source, version);
    if (!staging.Build(options, depth, isStatedNew)) {
        return Fail("pictures would grow too much with their tables");
    }
    VXSwfTagSet attributes;
    if (takesKind && known.attributes == nullptr && source.attributes != nullptr) {
        VXBitStream scratch;
        const VXTagBody body(*source.attributes, scratch);
        VXTagOwner tag = MakeTag(body.type, body.bytes, body.length, version);
        tag->GetOwnBody()[0] &= static_cast<unsigned char>(~kHasMetadata);
        attributes.AppendTag(tag.release());
    }
    const bool changesKind = takesKind && known.attributes != nullptr;
    if (changesKind) known.attributes->GetOwnBody();  // has bytes of its own from here on
    const bool addsFrame = options.Frame > known.frames.size();
    if (addsFrame) {
        staging.Append(MakeTag(VXSwfTagFactory::TAG_SHOWFRAME, nullptr, 0, version));
        if (known.frames.size() == known.frames.capacity()) known.frames.reserve(2 * known.frames.size() + 1);
    }
    std::unordered_map<VXSwfTag*, VXTagOwner> widened;
    if (oldVersion < kFirstVersionWithLongEvents && version >= kFirstVersionWithLongEvents) {
        ForEachTag(m_Movie, [&](TagIter place) {
            if (!VXIsCarried(**place)) return;
            VXTagOwner tag = WidenedTag(**place, version);
            if (tag != nullptr) widened.emplace(*place, std::move(tag));
        });
    }
    std::list<VXSwfTag*>* lists[] = {nullptr, nullptr};
    if (!widened.empty()) {
        VX_RETURN_IF_FAILED(m_Movie.GetTagListOfType(VXSwfTagFactory::TAG_PLACEOBJECT2, &lists[0]));
        VX_RETURN_IF_FAILED(m_Movie.GetTagListOfType(VXSwfTagFactory::TAG_DEFINESPRITE, &lists[1]));
    }

    // From here on nothing fails.
    m_Remarks = std::move(remarks);
    for (std::list<VXSwfTag*>* list : lists) {
        if (list == nullptr) continue;
        for (VXSwfTag*& tag : *list) {
            if (const auto found = widened.find(tag); found != widened.end()) tag = found->second.get();
        }
    }
    if (version != oldVersion) {
        ForEachTag(m_Movie, [&](TagIter place) {
            (*place)->SetFLVersion(version);
            const auto found = widened.find(*place);
            if (found == widened.end()) return;
            VXSwfTagSet::Hold(found->second.get());
            VXSwfTagSet::Release(std::exchange(*place, found->second.release()));
        });
        m_Movie.SetFlintVersion(version);
    }
    const TagIter before = addsFrame ? m_Movie.end() : known.frames[options.Frame - 1];
    m_Movie.m_Tags.splice(before, staging.GetTags().m_Tags);
    if (addsFrame) {
        known.frames.push_back(std::prev(m_Movie.end()));
        ++m_Movie.m_NumShowFrames;
        if (m_Movie.GetFrameCount() + 1u == known.frames.size()) {
            m_Movie.SetFrameCount(static_cast<unsigned short>(known.frames.size()));
        }
    }
    if (attributes.GetNumTags() != 0) {
        known.attributes = *attributes.begin();
        m_Movie.m_Tags.splice(m_Movie.begin(), attributes.m_Tags);
    } else if (changesKind) {
        if (auto* parsed = dynamic_cast<VXSwfFileAttributesTag*>(known.attributes)) {
            parsed->SetHasAS3(isStatedNew ? 1 : 0);
        } else {
            unsigned char& flags = *known.attributes->GetOwnBody();
            flags = static_cast<unsigned char>(isStatedNew ? flags | kHasAS3 : flags & ~kHasAS3);
        }
    }
    known.ids = ids;
    if (options.Depth == 0 || depth > known.topDepth) known.topDepth = depth;
    known.scripts.hasOld = known.scripts.hasOld || source.scripts.hasOld;
    known.scripts.hasNew = known.scripts.hasNew || source.scripts.hasNew;
    known.scripts.isStatedNew = isStatedNew;
    m_SpriteId = static_cast<unsigned short>(source.spriteId);
    m_Depth = static_cast<unsigned short>(depth);
    m_HasRaisedVersion = version != oldVersion;
    return kVXSuccess;
}
