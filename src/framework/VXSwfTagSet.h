#pragma once

#include <concepts>
#include <cstdint>
#include <list>
#include <map>
#include <memory>
#include <vector>

#include "bitstream/VXBitStream.h"
#include "framework/IVXSwfIdGenerator.h"
#include "framework/IVXSwfTagHolder.h"
#include "framework/VXFlintIDMap.h"
#include "framework/VXSwfTagFactory.h"
#include "memory/VXPool.h"
#include "platform/VXString.h"
#include "platform/VXTypes.h"

class VXFlintFilter;
class VXSwfDefineSpriteTag;
class VXSwfDefinitionTag;
class VXSwfExportAssetsTag;
class VXSwfPlaceObject2Tag;
class VXSwfRemoveObjectTag;

/// An ordered list of tags in file order: the body of a movie, or the timeline of a sprite. A ShowFrame tag
/// (type 1) ends a frame. An argument `frame` counts from 1 and means the place just before that ShowFrame
/// tag; 0 is the very start of the list, −1 the very end.
///
/// The set owns its tags. A tag that stands in several lists, after `InsertTags` or a copy of a set, is
/// deleted with the last of them. Null entries are allowed and skipped. Copying a set copies pointers, not
/// tags.
///
///     tags, each with its header; a type of 0 ends the list and is not part of it
class VXSWF_API VXSwfTagSet : public IVXSwfTagHolder {
public:
    using TagList = std::list<VXSwfTag*, VXPoolAllocator<VXSwfTag*>>;
    using TagIter = TagList::iterator;
    using enuTagType = VXSwfTagFactory::enuTagType;

    VXSwfTagSet();
    VXSwfTagSet(const VXSwfTagSet& other);
    VXSwfTagSet& operator=(const VXSwfTagSet& other);

    // The virtual operations stand in slot order, which hosts rely on.

    ~VXSwfTagSet() override;
    /// With too few ShowFrame tags, or a negative frame other than −1, the tag goes to the end.
    void IncludeTag(VXSwfTag* tag, int frame) override;
    /// Called for every tag that is appended; does nothing here.
    virtual VXErrorCodeEnum UpdateTagLists(VXSwfTag* tag);
    /// What the tags of this set need from `set`; see `VXSwfTag::BuildDependencyList`. One call takes linear
    /// time; a call for each tag looks through the whole list each time.
    virtual void BuildDependencyList(std::list<VXSwfTag*>& list, VXSwfTagSet* set);

    // Load and dump.

    /// Reads tags up to a tag of type 0 or the end of the data; a missing end tag is no failure. The first
    /// failure of a tag comes back at once; the tags before it stay, it itself is deleted.
    ///
    /// A sprite inside 64 others stays raw, and so does a nested sprite once the nested bodies of one load
    /// are larger than 16 times the data.
    VXErrorCodeEnum LoadFromStream(VXBitStream& in, unsigned char version);
    /// Writes the tags, without an end tag. The first failure comes back at once.
    VXErrorCodeEnum DumpToStream(VXBitStream& out);
    /// Third argument of `VXSwfTagFactory::CreateTagOfType` for the tags of a load, those of nested sprites
    /// included.
    void SetParsingMode(unsigned int mode) { m_ParsingMode = mode; }
    /// The set remembers where the frame ended that was named last. A host that replaces a ShowFrame tag
    /// through an iterator, or another tag by one, calls `begin` afterwards, which makes the set forget it.
    TagIter begin() const {
        ForgetFrameEnd();
        return const_cast<TagList&>(m_Tags).begin();
    }
    TagIter end() const { return const_cast<TagList&>(m_Tags).end(); }
    unsigned int GetNumTags() const { return static_cast<unsigned int>(m_Tags.size()); }

    // Editing. Only `IncludeTag` with a frame counts ShowFrame tags, and only the frame −1 reaches
    // `UpdateTagLists`.

    /// Inserts before `before` and touches nothing else. As with every `IncludeTag` and `AppendTag`, the tag
    /// is the set's from the call on: one that stands nowhere is deleted when memory runs out. A sprite that
    /// is this set, or holds it at any depth, is refused and stays whose it was.
    void IncludeTag(VXSwfTag* tag, TagIter before);
    void AppendTag(VXSwfTag* tag);
    /// Puts the pointers of a range, of this set or another, before `before`; both then hold the tags.
    void InsertTags(TagIter before, TagIter first, TagIter last);
    /// Takes a range out of the list; the caller owns the tags. Answers `last`.
    TagIter EraseTags(TagIter first, TagIter last);
    TagIter EraseAndDeleteTags(TagIter first, TagIter last);
    void IncludeShowFrameTags(unsigned int count, int frame);
    /// ShowFrame tags that came through `IncludeTag` with a frame; erasing does not lower it.
    unsigned int GetNumShowFrameTags() const { return m_NumShowFrames; }

    /// The nth from 1, else the end.
    TagIter FindNthTagOfType(enuTagType type, unsigned int n) const;
    /// The first tag whose `GetCharacterId` is `id`, or null. 0 finds the first tag without an ID. Each tag in
    /// front is asked, since tags change their IDs by themselves; for many IDs walk the set once.
    VXSwfTag* FindTagByID(unsigned short id) const;
    /// The nth tag of a type, counted backward from the end of a frame and within it; null when there is
    /// none. With `strict` the frame must exist.
    ///
    /// Kept: the first tag of the list is never found, and nothing is when the frame ends at the first or
    /// second tag.
    VXSwfTag* FindNthTagOfTypeBeforeFrame(enuTagType type, unsigned int n, unsigned int frame,
                                          short strict) const;

    /// The depth itself, or for 0 the next free one from the bottom and for 0xFFFF the next from the top; 0
    /// when no depth is left there. An explicit depth moves the counter that lies nearer, the lower one
    /// upward only.
    unsigned short GetAbsTagDepth(unsigned short depth);
    unsigned short ReserveNextDepth();

    /// A placement that stands in no list yet: type 70 when there are filters, which it takes over, else
    /// type 26. `x` and `y` are pixels. Without a character it changes what is at the depth. Null when no tag
    /// could be made or no depth is left; the filters are then the caller's.
    VXSwfPlaceObject2Tag* CreateAndInitPlaceObjectTag(unsigned short id, const VXString& name, double x,
                                                      double y, unsigned short depth,
                                                      const std::vector<VXFlintFilter*>& filters);
    VXSwfPlaceObject2Tag* PlaceObject(unsigned short id, TagIter before, const VXString& name, double x,
                                      double y, unsigned short depth,
                                      const std::vector<VXFlintFilter*>& filters);
    VXSwfPlaceObject2Tag* PlaceObject(unsigned short id, int frame, const VXString& name, double x, double y,
                                      unsigned short depth, const std::vector<VXFlintFilter*>& filters);
    VXSwfPlaceObject2Tag* PlaceObject(VXSwfDefinitionTag* character, int frame, const VXString& name,
                                      double x, double y, unsigned short depth,
                                      const std::vector<VXFlintFilter*>& filters);
    /// Lets any integer, a literal 0 among them, mean an ID and not a null pointer.
    template <std::integral Id>
    requires(!std::same_as<Id, unsigned short>)
        VXSwfPlaceObject2Tag* PlaceObject(Id id, int frame, const VXString& name, double x, double y,
                                          unsigned short depth, const std::vector<VXFlintFilter*>& filters) {
        return PlaceObject(static_cast<unsigned short>(id), frame, name, x, y, depth, filters);
    }
    /// Places without filters and, when `removeFrame` is not 0, removes at the end of that frame.
    VXSwfPlaceObject2Tag* PlaceAndRemoveObject(unsigned short id, int placeFrame, int removeFrame,
                                               const VXString& name, double x, double y,
                                               unsigned short depth);
    VXSwfPlaceObject2Tag* PlaceAndRemoveObject(VXSwfDefinitionTag* character, int placeFrame, int removeFrame,
                                               const VXString& name, double x, double y,
                                               unsigned short depth);
    template <std::integral Id>
    requires(!std::same_as<Id, unsigned short>) VXSwfPlaceObject2Tag* PlaceAndRemoveObject(
        Id id, int placeFrame, int removeFrame, const VXString& name, double x, double y,
        unsigned short depth) {
        return PlaceAndRemoveObject(static_cast<unsigned short>(id), placeFrame, removeFrame, name, x, y,
                                    depth);
    }
    VXSwfRemoveObjectTag* RemoveObject(unsigned short depth, int frame);

    /// Lets each tag replace its references; see `VXSwfTag::UpdateReferenceIDs`.
    void UpdateReferenceIDs(VXFlintIDMap* map);

    // Merging.

    /// Turns a movie into one sprite of this set: its definitions come in front of the sprite under new IDs,
    /// its timeline goes inside with depths lifted by 100, and tags that name symbols follow it. All of it
    /// lands in front of the `frame`th ShowFrame tag, or at the end for 0 and for too large a frame. Scripts
    /// of the source's frames (type 12) are left out, as are its background, protection, file attributes,
    /// metadata and scenes.
    ///
    /// `exports` remembers, over any number of merges, which script packages this movie already has: a
    /// package that is there is left out. It belongs to the caller; null treats package exports as ordinary
    /// ones. Its values are the tags of the sources, and null for a source that was loaded raw. DoABC tags
    /// come along only when `includeABC` is exactly 1. `*hasFreeCharacter`, when given, is set to 1 if the
    /// source frees a character and left alone otherwise. `bindComponents` gives the component kinds IDs that
    /// the generator reserves for them. `convertJpegTables` joins the source's JPEG tables with each picture
    /// that needs them, up to 64 MiB or 16 times the pictures in all. Such pictures (type 6) become type 21
    /// in any case, with a byte of 0 behind.
    ///
    /// Copies are parsed as version 0, also those of a source that was loaded raw: clip actions of version 6
    /// and later are lost, and text outside ASCII is cut short. A damaged shape that came raw is no failure
    /// here, but can make the dump of this movie fail.
    ///
    /// Kept: a parsed placement of type 4 has no copy and is left out.
    ///
    /// All copies of one call may take 512 MiB and 16 times the bytes that are copied. Beyond that, and when
    /// memory runs out, std::bad_alloc is thrown; this set and `exports` are then what they were before, as
    /// after whatever else is thrown by a tag or a generator of the host. `source` is not changed. The sprite
    /// belongs to this set, except when `source` or `generator` is null: it is then empty and the caller's.
    VXSwfDefineSpriteTag* IncludeTagSetAsSprite(VXSwfTagSet* source, int frame, IVXSwfIdGenerator* generator,
                                                std::map<VXString, VXSwfExportAssetsTag*>* exports,
                                                short includeABC, short* hasFreeCharacter,
                                                short bindComponents, short convertJpegTables);
    /// Copies one character with what it needs, under new IDs, to the end of frame `frame`. Answers the copy,
    /// or null when `source` has no such character. A sprite inside a sprite comes once by itself and once in
    /// each sprite around it. The limit and what happens to a call that fails are those of
    /// `IncludeTagSetAsSprite`.
    ///
    /// What a character needs is what `BuildDependencyList` finds: neither the bitmaps of a shape, nor the
    /// fonts of a text, nor the characters of a button. A reference to such a one follows the ID that an
    /// earlier call gave it, so those are copied first. This set keeps these IDs, whatever the source: an ID
    /// that another source had before, and that is not copied anew, means the character of that other source.
    VXSwfTag* IncludeCharacter(VXSwfTagSet* source, const unsigned short& id, unsigned short& ignoredId,
                               IVXSwfIdGenerator* generator, unsigned int frame);
    /// The same for the character of the first placement with that instance name.
    VXSwfTag* IncludeSpriteByName(VXSwfTagSet* source, VXString name, IVXSwfIdGenerator* generator,
                                  unsigned int frame);
    /// ID of the character that the first placement with that name shows, or 0. The placement is stored when
    /// wanted.
    unsigned short FindSpriteId(const VXString& name, VXSwfPlaceObject2Tag** placement) const;
    /// ID that is exported under that name, or 0.
    unsigned short FindSpriteIdByExportName(const VXString& name) const;
    VXSwfDefineSpriteTag* FindSprite(const VXString& name) const;
    /// Closes a movie: appends a removal for every placement of type 26, then frees every lossless bitmap
    /// (type 36) and moves all other FreeCharacter tags behind that.
    void AddFreeCharacterAtEnd();

protected:
    /// A set inside a sprite, which counts as a level of nesting also when the sprite is loaded by itself.
    explicit VXSwfTagSet(unsigned char level);

private:
    friend class VXWholeMovie;
    friend class VXMovieCombiner;

    struct LoadLimits;
    class Inclusion;
    struct Merge;
    using TagOwner = std::unique_ptr<VXSwfTag>;

    void UpdateNewTagId(VXSwfDefineSpriteTag* sprite, const VXString& name, IVXSwfIdGenerator* generator,
                        tVXSwfReservedIDEnum reservedId, VXFlintIDMap& idMap, Inclusion& inclusion);
    VXErrorCodeEnum LoadTags(VXBitStream& in, unsigned char version, LoadLimits& limits);
    VXErrorCodeEnum LoadSprite(VXBitStream& in, unsigned char version, LoadLimits& limits, TagOwner& tag);
    /// The `frame`th ShowFrame tag, or the end. Walks on from where the last call ended.
    TagIter FindFrameEnd(unsigned int frame) const;
    void ForgetFrameEnd() const { m_FrameMark = end(); }
    /// False when the tag was refused.
    bool Insert(VXSwfTag* tag, TagIter before);
    /// Whether `tag` is this sprite or holds it, at any depth.
    bool IsIn(VXSwfTag* tag) const;
    bool IsUsedUp(unsigned short depth) const;
    static void Hold(VXSwfTag* tag);
    /// Ends a hold and leaves the tag to the caller.
    static void Drop(VXSwfTag* tag);
    static void Release(VXSwfTag* tag);
    void ReleaseAll();

    unsigned int m_ParsingMode = 0;
    TagList m_Tags;
    unsigned short m_NextDepth = 0;      // last one handed out from the bottom
    unsigned short m_TopDepth = 0xFFFF;  // last one handed out from the top
    unsigned int m_NumShowFrames = 0;
    VXFlintIDMap m_IdMap;
    // The tag in front of the place that `FindFrameEnd` found last, and the ShowFrame tags in front of that
    // tag. The end of the list when nothing is known.
    mutable TagIter m_FrameMark = m_Tags.end();
    mutable unsigned int m_NumFramesToMark = 0;
    LoadLimits* m_LoadLimits = nullptr;  // of the load that this set is part of, while it runs
    unsigned char m_Level = 0;           // sprites around this set
};
