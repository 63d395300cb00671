#include "framework/VXDependencyWalk_p.h"
#include "support/Test.h"

using testing::ElementsAre;

namespace {

using Ids = std::vector<unsigned int>;

/// A frame of video, which refers to a character and is none.
Bytes Reference(unsigned int id) { return TagBytes(61, Word(id)); }

Ids IdsOf(const std::list<VXSwfTag*>& list) {
    Ids ids;
    for (const VXSwfTag* tag : list) ids.push_back(tag == nullptr ? 0u : tag->GetCharacterId());
    return ids;
}

/// What a tag or a set of tags needs from `set`, behind what the list holds already.
template <typename Walked>
Ids NeedsOf(Walked& walked, VXSwfTagSet* set, std::list<VXSwfTag*> list = {}) {
    walked.BuildDependencyList(list, set);
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
    const struct {
        const char* what;
        Ids needs;  // of the last
        Bytes tags;
    } rows[] = {
        {"each once, and what a sprite needs in front of it",
         {4, 1, 2, 3},
         Join({Bitmap(1), Sprite(2, 0, Join({Reference(1), Reference(1)})), Bitmap(4),
               Sprite(3, 0, Join({Reference(2), Reference(4), Reference(2)}))})},
        {"nobody, nothing and itself",
         {3},
         Sprite(3, 0, Join({Reference(9), Reference(0), Reference(3), kShowFrame}))},
        {"a circle", {2, 1}, Join({Sprite(1, 0, Reference(2)), Sprite(2, 0, Reference(1))})},
        {"a definition inside a sprite stands for itself",
         {5, 1},
         Join({Sprite(1, 0, Join({Bitmap(5), Reference(5)})), TagBytes(36, Hex("05 00 FF"))})},
    };
    for (const auto& row : rows) {
        VXSwfTagSet set;
        LoadTags(set, row.tags);
        EXPECT_EQ(NeedsOf(*set.FindTagByID(static_cast<unsigned short>(row.needs.back())), &set), row.needs)
            << row.what;
    }
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
    VXSwfTag& sprite = *set.FindTagByID(3);
    EXPECT_THAT(NeedsOf(set, &set, {nullptr, other.FindTagByID(2)}), ElementsAre(3, 1, 0, 2))
        << "the identity is the ID";
    EXPECT_THAT(NeedsOf(set, &set), ElementsAre(3, 2, 1)) << "nothing is remembered of the last walk";
    EXPECT_THAT(NeedsOf(sprite, &other), ElementsAre(2, 3)) << "found in another set";
    EXPECT_THAT(NeedsOf(sprite, nullptr), ElementsAre(3));
    EXPECT_THAT(NeedsOf(sprite, &set, {nullptr, other.FindTagByID(2), &sprite}), ElementsAre(1, 0, 2, 3))
        << "it is there already, and so is 2";
    EXPECT_THAT(NeedsOf(other, nullptr, {&sprite}), ElementsAre(2, 3));
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
    const Ids needs = NeedsOf(*set.FindTagByID(1), &set);
    ASSERT_EQ(needs.size(), kLast);
    for (unsigned int i = 0; i < kLast; ++i) ASSERT_EQ(needs[i], kLast - i);
}

TEST(VXDependencyWalk, HostTagsSeeWhatTheyAskFor) {
    VXSwfTagSet set;
    LoadTags(set, Join({Bitmap(1), Bitmap(2), Sprite(3, 0, Join({Reference(1), Reference(2)})),
                        Sprite(4, 0, Reference(1))}));
    Ids seen;
    auto& sprite = dynamic_cast<VXSwfDefineSpriteTag&>(*set.FindTagByID(4));
    sprite.AppendTag(new HostTag([&seen](std::list<VXSwfTag*>& list, VXSwfTagSet* movie) {
        list.clear();
        movie->FindTagByID(3)->BuildDependencyList(list, movie);
        seen = IdsOf(list);
        list.remove(movie->FindTagByID(2));
        movie->FindTagByID(2)->BuildDependencyList(list, movie);
        EXPECT_EQ(NeedsOf(*movie->FindTagByID(3), movie), seen) << "a list of its own is a walk of its own";
        list.remove(movie->FindTagByID(1));
    }));
    LoadTags(sprite, Join({Reference(2), Reference(1)}));
    EXPECT_THAT(NeedsOf(sprite, &set), ElementsAre(1, 2, 3)) << "2 is there, and 1 is missed again";
    EXPECT_THAT(seen, ElementsAre(2, 1, 3));
}

TEST(VXDependencyWalk, ReferencesOfNestedTagsFollowTheMap) {
    const auto tags = [](unsigned int one, unsigned int seven) {
        return Join({Sprite(1, 0, Join({Reference(one), Sprite(2, 0, Reference(5)), Reference(seven)})),
                     Reference(seven), Reference(0)});
    };
    VXSwfTagSet set;
    LoadTags(set, tags(1, 7));
    set.IncludeTag(nullptr, 0);
    VXFlintIDMap map;
    map.Set(1, 11);
    map.Set(7, 0x0702);
    set.UpdateReferenceIDs(nullptr);
    set.UpdateReferenceIDs(&map);
    EXPECT_EQ(DumpOf(set), tags(11, 0x0702)) << "IDs of the sprites themselves stay";
    EXPECT_EQ(map.size(), 3u) << "an entry for 5, and none for 0";
    EXPECT_EQ(map.GetNewId(9), 0);
    EXPECT_EQ(map.size(), 4u) << "what is asked for is entered";
}

}  // namespace
