#include "framework/VXDependencyWalk_p.h"

#include <gmock/gmock.h>

#include <functional>

#include "framework/VXFlintIDMap.h"
#include "support/TagSets.h"
#include "timeline/VXSwfDefineSpriteTag.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// A frame of video, which refers to a character and is none.
Bytes Reference(unsigned int id) { return TagBytes(61, Word(id)); }

std::vector<unsigned int> IdsOf(const std::list<VXSwfTag*>& list) {
    std::vector<unsigned int> ids;
    for (const VXSwfTag* tag : list) ids.push_back(tag == nullptr ? 0u : tag->GetCharacterId());
    return ids;
}

/// What the character with that ID needs from a set of these tags.
std::vector<unsigned int> NeedsOf(unsigned short id, const Bytes& tags) {
    VXSwfTagSet set;
    LoadTags(set, tags);
    std::list<VXSwfTag*> list;
    set.FindTagByID(id)->BuildDependencyList(list, &set);
    return IdsOf(list);
}

/// A host's own tag.
class HostTag : public VXSwfTag {
public:
    using Walk = std::function<void(std::list<VXSwfTag*>&, VXSwfTagSet*)>;
    explicit HostTag(Walk walk) : VXSwfTag(VXSwfTagFactory::TAG_METADATA, 1), m_Walk(std::move(walk)) {}
    void BuildDependencyList(std::list<VXSwfTag*>& list, VXSwfTagSet* set) override { m_Walk(list, set); }

private:
    Walk m_Walk;
};

TEST(VXDependencyWalk, WhatIsNeededStandsInFront) {
    EXPECT_THAT(NeedsOf(1, Bitmap(1)), ElementsAre(1));
    EXPECT_THAT(NeedsOf(3, Join({Bitmap(1), Bitmap(2), Sprite(3, 0, Join({Reference(1), Reference(2)}))})),
                ElementsAre(2, 1, 3));
    EXPECT_THAT(NeedsOf(3, Join({Bitmap(1), Sprite(2, 0, Join({Reference(1), Reference(1)})), Bitmap(4),
                                 Sprite(3, 0, Join({Reference(2), Reference(4), Reference(2)}))})),
                ElementsAre(4, 1, 2, 3))
        << "each once, and what a sprite needs in front of it";
    EXPECT_THAT(
        NeedsOf(3, Join({Sprite(3, 0, Join({Reference(9), Reference(0), Reference(3), kShowFrame}))})),
        ElementsAre(3))
        << "nobody, nothing and itself";
    EXPECT_THAT(NeedsOf(1, Join({Sprite(1, 0, Reference(2)), Sprite(2, 0, Reference(1))})), ElementsAre(2, 1))
        << "a circle";
    EXPECT_THAT(
        NeedsOf(1, Join({Sprite(1, 0, Join({Bitmap(5), Reference(5)})), TagBytes(36, Hex("05 00 FF"))})),
        ElementsAre(5, 1))
        << "a definition inside a sprite stands for itself";
}

TEST(VXDependencyWalk, TheFirstDefinitionOfAnIdIsTheOne) {
    VXSwfTagSet set;
    LoadTags(set, Join({Sprite(1, 0, Join({Reference(3), Reference(2)})), Bitmap(2), Bitmap(3), Bitmap(2)}));
    set.IncludeTag(nullptr, 0);
    std::list<VXSwfTag*> list;
    set.FindTagByID(1)->BuildDependencyList(list, &set);
    EXPECT_THAT(list, ElementsAre(set.FindTagByID(2), set.FindTagByID(3), set.FindTagByID(1)));
}

TEST(VXDependencyWalk, ListsThatACallerFilledCount) {
    VXSwfTagSet set;
    LoadTags(set, Join({Bitmap(1), Bitmap(2), Sprite(3, 0, Join({Reference(1), Reference(2)}))}));
    VXSwfTagSet other;
    LoadTags(other, Bitmap(2));
    std::list<VXSwfTag*> list{nullptr, other.FindTagByID(2)};
    set.BuildDependencyList(list, &set);
    EXPECT_THAT(IdsOf(list), ElementsAre(3, 1, 0, 2)) << "the identity is the ID";
    list.clear();
    set.BuildDependencyList(list, &set);
    EXPECT_THAT(IdsOf(list), ElementsAre(3, 2, 1)) << "nothing is remembered from one walk to the next";
    list.clear();
    set.FindTagByID(3)->BuildDependencyList(list, &other);
    EXPECT_THAT(IdsOf(list), ElementsAre(2, 3)) << "found in another set";
    list.clear();
    set.FindTagByID(3)->BuildDependencyList(list, nullptr);
    EXPECT_THAT(IdsOf(list), ElementsAre(3));
    other.BuildDependencyList(list, nullptr);
    EXPECT_THAT(IdsOf(list), ElementsAre(2, 3));
}

TEST(VXDependencyWalk, LongChainsTakeNoStack) {
    constexpr unsigned int kLast = 65535;
    Bytes tags;
    for (unsigned int id = 1; id <= kLast; ++id) {
        const Bytes tag = id == kLast ? Bitmap(id) : Sprite(id, 0, Join({Reference(id + 1), Reference(1)}));
        tags.insert(tags.end(), tag.begin(), tag.end());
    }
    VXSwfTagSet set;
    LoadTags(set, tags);
    std::list<VXSwfTag*> list;
    set.FindTagByID(1)->BuildDependencyList(list, &set);
    ASSERT_EQ(list.size(), kLast);
    unsigned int id = kLast;
    for (const VXSwfTag* tag : list) ASSERT_EQ(tag->GetCharacterId(), id--);
}

TEST(VXDependencyWalk, HostTagsMayChangeListAndSet) {
    VXSwfTagSet set;
    LoadTags(set, Join({Bitmap(1), Bitmap(2), Sprite(4, 0, Join({Reference(1), Reference(2)}))}));
    auto* sprite = dynamic_cast<VXSwfDefineSpriteTag*>(set.FindTagByID(4));
    ASSERT_NE(sprite, nullptr);
    VXSwfTagSet late;
    LoadTags(late, Bitmap(3));

    // Behind the reference to 1: takes 1 out of the list, so that a second reference brings it back.
    sprite->IncludeTag(new HostTag([](std::list<VXSwfTag*>& list, VXSwfTagSet*) { list.pop_front(); }),
                       std::next(sprite->begin()));
    LoadTags(*sprite, Join({Reference(3), Reference(1)}));
    // In front of all: defines 3, which would not be found else.
    sprite->IncludeTag(new HostTag([&late](std::list<VXSwfTag*>&, VXSwfTagSet* movie) {
                           movie->InsertTags(movie->begin(), late.begin(), late.end());
                       }),
                       0);
    std::list<VXSwfTag*> list;
    sprite->BuildDependencyList(list, &set);
    EXPECT_THAT(IdsOf(list), ElementsAre(1, 3, 2, 4));
}

TEST(VXDependencyWalk, HostTagsSeeWhatTheyAskFor) {
    VXSwfTagSet set;
    LoadTags(set, Join({Bitmap(1), Bitmap(2), Sprite(3, 0, Join({Reference(1), Reference(2)})),
                        Sprite(4, 0, Join({Reference(1), Reference(2)}))}));
    std::vector<unsigned int> seen;
    std::vector<unsigned int> apart;
    auto* asks = new HostTag([&](std::list<VXSwfTag*>& list, VXSwfTagSet* movie) {
        list.clear();
        movie->FindTagByID(3)->BuildDependencyList(list, movie);
        seen = IdsOf(list);
        list.remove(movie->FindTagByID(2));
        movie->FindTagByID(2)->BuildDependencyList(list, movie);
        // A list of its own is a walk of its own.
        std::list<VXSwfTag*> own;
        movie->FindTagByID(3)->BuildDependencyList(own, movie);
        apart = IdsOf(own);
        list.remove(movie->FindTagByID(1));
    });
    auto* sprite = dynamic_cast<VXSwfDefineSpriteTag*>(set.FindTagByID(4));
    ASSERT_NE(sprite, nullptr);
    sprite->IncludeTag(asks, std::next(sprite->begin()));
    LoadTags(*sprite, Join({Reference(1)}));
    std::list<VXSwfTag*> list;
    sprite->BuildDependencyList(list, &set);
    EXPECT_THAT(seen, ElementsAre(2, 1, 3));
    EXPECT_THAT(apart, ElementsAre(2, 1, 3));
    EXPECT_THAT(IdsOf(list), ElementsAre(1, 2, 3)) << "2 is there, and 1 is missed again";
}

TEST(VXDependencyWalk, ReferencesOfNestedTagsFollowTheMap) {
    VXSwfTagSet set;
    LoadTags(set, Join({Sprite(1, 0, Join({Reference(1), Sprite(2, 0, Reference(5)), Reference(7)})),
                        Reference(7), Reference(0)}));
    set.IncludeTag(nullptr, 0);
    VXFlintIDMap map;
    map.Set(1, 11);
    map.Set(7, 0x0702);
    set.UpdateReferenceIDs(nullptr);
    set.UpdateReferenceIDs(&map);
    EXPECT_EQ(DumpOf(set),
              Join({Sprite(1, 0, Join({Reference(11), Sprite(2, 0, Reference(5)), Reference(0x0702)})),
                    Reference(0x0702), Reference(0)}))
        << "IDs of the sprites themselves stay";
    EXPECT_EQ(map.size(), 3u) << "an entry for 5, and none for 0";
    EXPECT_EQ(map.GetNewId(9), 0);
    EXPECT_EQ(map.size(), 4u);
}

}  // namespace
