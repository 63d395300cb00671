#include "InfoTree.h"

#include <algorithm>
#include <map>
#include <ostream>
#include <string>
#include <vector>

#include "MovieRecords.h"
#include "Report.h"
#include "TagFields.h"

namespace {

constexpr int kDeepest = 64;          // what lies further in is listed behind the timeline
constexpr std::size_t kMostUses = 8;  // told of one character

class Tree {
public:
    Tree(const VXFlintFile& movie, std::ostream& out) : m_Movie(movie), m_Out(out) {}

    void Write() {
        Survey(m_Movie, "the movie");
        WriteTimeline(m_Movie, 0);
        // What is opened only now may open others.
        bool hasTitle = false;
        for (auto& [id, character] : m_Characters) {
            if (character.isShown) continue;
            if (!hasTitle) Line(0, "not on the timeline");
            hasTitle = true;
            WriteCharacter(id, "", 1);
        }
    }

private:
    struct Character {
        VXSwfTag* tag = nullptr;
        std::string title;              // its type and ID
        std::string name;               // that it is exported under
        std::vector<std::string> uses;  // the first ones
        std::size_t numUses = 0;
        std::vector<unsigned short> needs;
        bool isShown = false;
    };

    void AddUse(unsigned short id, const std::string& use) {
        const auto found = m_Characters.find(id);
        if (found == m_Characters.end()) return;
        Character& character = found->second;
        if (!character.uses.empty() && character.uses.back() == use) return;
        if (++character.numUses <= kMostUses) character.uses.push_back(use);
    }

    /// Collects the characters and where they are used. Definitions come in front of their uses.
    void Survey(const VXSwfTagSet& tags, const std::string& timeline) {
        unsigned int frame = 1;
        for (VXSwfTag* tag : tags) {
            if (tag == nullptr) continue;
            const LoadedTag framed(*tag);
            const std::string place = "frame " + std::to_string(frame) + " of " + timeline;
            if (framed->type == VXSwfTagFactory::TAG_SHOWFRAME) ++frame;
            if (const unsigned short id = framed->GetCharacterId(); id != 0) {
                Define(id, *tag);
            } else if (IsPlacement(framed->type)) {
                if (const auto character = ReadPlacement(*framed).character) AddUse(*character, place);
            } else if (framed->type == 56 || framed->type == 76) {
                for (const auto& [exported, name] : ReadExports(framed->body)) {
                    if (const auto found = m_Characters.find(exported); found != m_Characters.end())
                        found->second.name = name;
                }
            } else if (framed->type == VXSwfTagFactory::TAG_STARTSOUND) {
                AddUse(ByteReader(framed->body).U16(), place);
            }
        }
    }

    void Define(unsigned short id, VXSwfTag& tag) {
        const auto [entry, isNew] = m_Characters.try_emplace(id);
        if (!isNew) return;  // the first of two counts
        Character& character = entry->second;
        character.tag = &tag;
        character.title = LoadedTag(tag)->Describe() + ' ' + std::to_string(id);
        if (const auto* sprite = dynamic_cast<VXSwfDefineSpriteTag*>(&tag)) {
            Survey(*sprite, character.title);
            return;
        }
        // An empty map changes nothing, and has an entry for each reference afterwards.
        VXFlintIDMap references;
        tag.UpdateReferenceIDs(&references);
        for (const auto& [needed, ignored] : references) {
            if (needed == id || !m_Characters.contains(needed)) continue;
            character.needs.push_back(needed);
            AddUse(needed, character.title);
        }
    }

    void Line(int level, const std::string& text) {
        m_Out << std::string(static_cast<std::size_t>(2 * level), ' ') << Printable(text) << '\n';
    }

    void WriteCharacter(unsigned short id, const std::string& place, int level) {
        const auto found = m_Characters.find(id);
        if (found == m_Characters.end())
            return Line(level, place + "character " + std::to_string(id) + ", which is not defined");
        Character& character = found->second;
        const std::string name = place + character.title;
        if (character.isShown) return Line(level, name + ", see above");
        if (level >= kDeepest) return Line(level, name + ", see below");
        character.isShown = true;
        std::string text = name;
        if (!character.name.empty()) text += " \"" + character.name + '"';
        for (std::size_t i = 0; i < character.uses.size(); ++i)
            text += (i == 0 ? ", used by " : "; ") + character.uses[i];
        if (character.numUses > kMostUses)
            text += "; and " + std::to_string(character.numUses - kMostUses) + " more";
        Line(level, text);
        if (const auto* sprite = dynamic_cast<VXSwfDefineSpriteTag*>(character.tag))
            return WriteTimeline(*sprite, level + 1);
        for (const unsigned short needed : character.needs) WriteCharacter(needed, "", level + 1);
    }

    void WriteTimeline(const VXSwfTagSet& tags, int level) {
        unsigned int frame = 1;
        bool hasTitle = false;
        const auto writeTitle = [&](const std::string& label) {
            if (!hasTitle || !label.empty()) Line(level, "frame " + std::to_string(frame) + label);
            hasTitle = true;
        };
        for (VXSwfTag* tag : tags) {
            if (tag == nullptr) continue;
            const LoadedTag framed(*tag);
            if (framed->type == VXSwfTagFactory::TAG_SHOWFRAME) {
                ++frame;
                hasTitle = false;
            } else if (framed->type == VXSwfTagFactory::TAG_FRAMELABEL) {
                writeTitle(" \"" + ByteReader(framed->body).Text() + '"');
            } else if (IsPlacement(framed->type)) {
                const Placement placement = ReadPlacement(*framed);
                if (!placement.character) continue;
                writeTitle("");
                std::string place = "depth " + std::to_string(placement.depth);
                if (!placement.name.empty()) place += " \"" + placement.name + '"';
                WriteCharacter(*placement.character, place + ": ", level + 1);
            } else if (framed->type == VXSwfTagFactory::TAG_STARTSOUND) {
                writeTitle("");
                WriteCharacter(ByteReader(framed->body).U16(), "sound: ", level + 1);
            }
        }
    }

    const VXFlintFile& m_Movie;
    std::ostream& m_Out;
    std::map<unsigned short, Character> m_Characters;
};

}  // namespace

void ListAsTree(const VXFlintFile& movie, std::ostream& out) { Tree(movie, out).Write(); }
