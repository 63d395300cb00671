#include "whole/TagMatcher.h"

#include <zlib.h>

#include "support/Test.h"

namespace {

using Span = std::span<const unsigned char>;

const std::set<unsigned int> kDefinitions = {2,  6,  7,  10, 11, 14, 20, 21, 22, 32, 33, 34, 35,
                                             36, 37, 39, 46, 48, 60, 75, 83, 84, 87, 90, 91};
const std::set<unsigned int> kReferences = {3, 4, 5, 13, 15, 17, 23, 40, 59, 61, 62, 73, 74, 78, 88};
// Those whose parsed class knows every ID of a body.
const std::set<unsigned int> kTold = {2, 11, 17, 22, 26, 32, 33, 34, 37, 56, 70, 76, 83};

unsigned short WordAt(Span bytes, std::size_t at) {
    return at + 2 > bytes.size() ? 0 : static_cast<unsigned short>(bytes[at] | bytes[at + 1] << 8);
}

TagViews TagsOf(Span tags) {
    TagViews views;
    while (tags.size() >= 2 && WordAt(tags, 0) >> 6 != 0) {
        const unsigned int header = WordAt(tags, 0);
        const bool isLong = (header & 63) == 63 && tags.size() >= 6;
        const std::size_t start = isLong ? 6 : 2;
        const std::size_t length =
            isLong ? WordAt(tags, 2) | std::size_t{WordAt(tags, 4)} << 16 : header & 63;
        const Span bytes = tags.first(std::min(tags.size(), start + length));
        views.push_back({header >> 6, bytes, bytes.subspan(start)});
        tags = tags.subspan(bytes.size());
    }
    return views;
}

TagViews Only(const TagViews& tags, const std::set<unsigned int>& types) {
    TagViews kept;
    std::ranges::copy_if(tags, std::back_inserter(kept),
                         [&](const auto& tag) { return types.contains(tag.type); });
    return kept;
}

/// The IDs that a tag defines.
std::vector<unsigned short> OwnIds(const TagView& tag) {
    if (kDefinitions.contains(tag.type)) return {WordAt(tag.body, 0)};
    std::vector<unsigned short> ids;
    const auto skipText = [&tag](std::size_t at) {
        while (at < tag.body.size() && tag.body[at] != 0) ++at;
        return at + 1;
    };
    std::size_t at = skipText(0) + (tag.type == 71 ? 2 : 0);
    for (unsigned int left = WordAt(tag.body, at); left != 0; --left) {
        ids.push_back(WordAt(tag.body, at += 2));
        at = skipText(at + 2) - 2;
    }
    return ids;
}

TagPtr Told(const TagView& tag, unsigned char version) {
    TagPtr told = MakeTag(tag.type, 1);
    told->SetFLVersion(version);
    VXIgnore(LoadInto(*told, Bytes(tag.bytes.begin(), tag.bytes.end())));  // both are then what was read
    return told;
}

}  // namespace

Bytes PlainMovie(Bytes file) {
    if (file.size() < 8 || file[0] != 'C') return file;
    Bytes plain(WordAt(file, 4) | std::size_t{WordAt(file, 6)} << 16);
    std::copy_n(file.begin(), 8, plain.begin());
    uLongf size = plain.size() - 8;
    EXPECT_EQ(uncompress(plain.data() + 8, &size, file.data() + 8, file.size() - 8), Z_OK);
    plain[0] = 'F';
    return plain;
}

TagViews TagsOfMovie(Span movie) {
    const std::size_t rectangle = (5u + 4u * (movie[8] >> 3) + 7u) / 8;
    return TagsOf(movie.subspan(8 + rectangle + 4));
}

TagViews TagsOfSprite(const TagView& sprite) {
    return TagsOf(sprite.body.subspan(std::min<std::size_t>(4, sprite.body.size())));
}

TagViews InsertedTags(const TagViews& destination, const TagViews& result, bool& isUnchanged) {
    const auto areSame = [](const TagView& a, const TagView& b) {
        return std::ranges::equal(a.bytes, b.bytes);
    };
    const auto [restOfDestination, added] =
        std::mismatch(destination.begin(), destination.end(), result.begin(), result.end(), areSame);
    const auto [first, last] =
        std::mismatch(destination.rbegin(), std::make_reverse_iterator(restOfDestination), result.rbegin(),
                      std::make_reverse_iterator(added), areSame);
    isUnchanged = first.base() == restOfDestination;
    return {added, last.base()};
}

unsigned short TagMatcher::NewId(unsigned short id) const {
    const auto entry = m_Ids.find(id);
    return entry == m_Ids.end() ? id : entry->second;
}

void TagMatcher::Learn(unsigned short oldId, unsigned short newId) {
    if (!m_Ids.try_emplace(oldId, newId).second && m_Ids[oldId] != newId)
        Faults.push_back(std::to_string(oldId) + " has several new IDs");
    if (!m_OldIds.try_emplace(newId, oldId).second && m_OldIds[newId] != oldId)
        Faults.push_back(std::to_string(newId) + " is the new ID of several");
}

void TagMatcher::LearnIds(const TagViews& source, const TagViews& found, const TagViews& taken) {
    std::set<unsigned int> types = kDefinitions;
    types.insert({57, 71});
    const TagViews from = Only(source, types);
    const TagViews to = Only(found, types);
    for (std::size_t i = 0; i < from.size(); ++i) {
        const std::vector<unsigned short> newIds =
            i < to.size() ? OwnIds(to[i]) : std::vector<unsigned short>();
        const std::vector<unsigned short> oldIds = OwnIds(from[i]);
        if (oldIds.size() != newIds.size())
            Faults.push_back("definition " + std::to_string(i) + " is missing");
        for (std::size_t id = 0; id < std::min(oldIds.size(), newIds.size()); ++id)
            Learn(oldIds[id], newIds[id]);
    }
    for (const TagView& tag : Only(taken, types)) {
        for (const unsigned short id : OwnIds(tag)) {
            if (m_OldIds.contains(id)) Faults.push_back(std::to_string(id) + " was taken");
        }
    }
    // Parsed classes take an ID that they do not know for 0.
    for (const TagView& tag : Only(source, kTold)) Told(tag, m_Version)->UpdateReferenceIDs(&m_Ids);
    for (const TagView& tag : Only(source, {39})) Told(tag, m_Version)->UpdateReferenceIDs(&m_Ids);
    for (auto& [oldId, newId] : m_Ids) newId = newId == 0 ? oldId : newId;
}

bool TagMatcher::DiffersInIds(const TagView& source, const TagView& found) const {
    if (source.type != found.type || source.bytes.size() != found.bytes.size()) return false;
    const Span& a = source.body;
    const Span& b = found.body;
    const auto isId = [&](std::size_t at) {
        const unsigned short id = WordAt(a, at);
        return at + 2 <= a.size() &&
               WordAt(b, at) == (id == 0 && source.type == 76 ? m_MainTimeline : NewId(id));
    };
    if ((kDefinitions.contains(source.type) || kReferences.contains(source.type)) && a.size() >= 2 &&
        !isId(0))
        return false;
    for (std::size_t at = 0, free = 0; at < a.size(); ++at) {
        if (a[at] == b[at]) continue;
        if (isId(at)) {
            free = ++at + 1;
        } else if (at > free && isId(at - 1)) {
            free = at + 1;
        } else {
            return false;
        }
    }
    return true;
}

bool TagMatcher::IsToldAlike(const TagView& source, const TagView& found) {
    if (source.type == 39) {
        const TagViews inside = TagsOfSprite(source);
        const TagViews foundInside = TagsOfSprite(found);
        return std::ranges::equal(inside, foundInside, [this](const TagView& a, const TagView& b) {
            return DiffersInIds(a, b) && IsToldAlike(a, b);
        });
    }
    if (!kTold.contains(source.type)) return true;
    const TagPtr renumbered = Told(source, m_Version);
    const TagPtr told = Told(found, m_Version);
    if (kDefinitions.contains(source.type)) renumbered->SetCharacterId(NewId(renumbered->GetCharacterId()));
    renumbered->UpdateReferenceIDs(&m_Ids);
    return DumpOf(*renumbered) == DumpOf(*told);
}

TagViews TagMatcher::Match(const TagViews& source, const std::vector<TagViews>& lists) {
    TagViews others;
    std::vector<std::size_t> next(lists.size(), 0);
    for (const TagView& tag : source) {
        bool isFound = false;
        for (std::size_t list = 0; list < lists.size() && !isFound; ++list) {
            const auto begin = lists[list].begin() + static_cast<std::ptrdiff_t>(next[list]);
            const auto at = std::find_if(begin, lists[list].end(),
                                         [&](const TagView& found) { return DiffersInIds(tag, found); });
            if (at == lists[list].end()) continue;
            isFound = IsToldAlike(tag, *at);
            if (!isFound) break;
            others.insert(others.end(), begin, at);
            next[list] = static_cast<std::size_t>(at - lists[list].begin()) + 1;
        }
        if (!isFound) {
            Faults.push_back("tag " + std::to_string(&tag - source.data()) + " of type " +
                             std::to_string(tag.type) + " is not found");
        }
    }
    for (std::size_t list = 0; list < lists.size(); ++list)
        others.insert(others.end(), lists[list].begin() + static_cast<std::ptrdiff_t>(next[list]),
                      lists[list].end());
    return others;
}
