#include <filesystem>

#include "support/Test.h"
#include "whole/TagMatcher.h"

namespace {

using Role = VXCharacterIds::Role;
using Places = std::vector<std::pair<unsigned int, Role>>;
using std::string;

const std::map<string, Role> kRoles = {
    {"own", Role::kOwn}, {"entry", Role::kOwnEntry}, {"ref", Role::kReference}, {"named", Role::kNamedEntry}};

struct Row {
    string name;
    unsigned int type;
    string body;
    VXErrorCodeEnum result = kVXSuccess;
};

/// A body from words: hexadecimal digits, `n:` and a number of zero bytes, `bits:` and bits, and IDs behind
/// their roles, which are the places.
Bytes Parse(const string& text, Places& places) {
    Bytes body;
    std::istringstream words(text);
    for (string word; words >> word;) {
        const std::size_t colon = word.find(':');
        const string kind = colon == string::npos ? "" : word.substr(0, colon);
        string value = word.substr(colon + 1);
        std::ranges::replace(value, '_', ' ');
        if (kRoles.contains(kind)) places.emplace_back(body.size(), kRoles.at(kind));
        const Bytes bytes = kind == "bits" ? Bits(value)
                            : kind == "n"  ? Repeat(std::stoul(value), 0)
                                           : Hex(value);
        body.insert(body.end(), bytes.begin(), bytes.end());
    }
    return body;
}

const string kMatrix = " bits:1_00011_010_001_1_00010_01_11_00100_0101_1011 ";
const string kRect = " bits:00010_01_10_11_01 ";
const string kEdges =
    " 31 bits:"
    "0_01111_00011_010_110_001_010_1_"  // a move, both fills of 3 bits, a line of 1
    "1_1_0010_1_0101_1010_"             // any direction
    "1_1_0010_0_1_0101_"                // down
    "1_0_0010_0001_0010_1101_1110_";    // a curve

const Row kRows[] = {
    {"no tag", 1023, "0700"},
    {"placement", 4, "ref:0700 0100 00"},
    {"placement 2", 26, "06 0100 ref:0700 00"},
    {"placement 2 that moves", 26, "05 0100 0000"},
    {"placement 3", 70, "02 00 0100 ref:0700 00"},
    {"placement 3 with a class", 70, "02 08 0100 414200 ref:0700 00"},
    {"placement 3 of an image", 70, "02 10 0100 414200 ref:0700 00"},
    {"placement 3 of a class alone", 70, "00 18 0100 414200 00"},
    {"placement 4", 94, "02 08 0100 414200 ref:0700 00 0A"},
    {"exports", 56, "0200 named:0100 414200 named:0200 00"},
    {"imports", 57, "757600 0200 entry:0100 4100 entry:0200 00"},
    {"imports 2", 71, "757600 0100 0200 entry:0100 4100 entry:0200 00"},
    {"symbols", 76, "0200 named:0000 414200 named:0200 00"},
    {"button", 7, "own:0100 0F ref:0200 0100" + kMatrix + "3F ref:0300 0200 00 00 07 00"},
    {"button 2", 34,
     "own:0100 00 0000 0F ref:0200 0100" + kMatrix +
         "bits:1_1_0011_001_010_011_111_001_010_011_111"
         " 1F ref:0300 0200 00 bits:0_1_0010_00_01_10_11"
         " 08 00 n:23 01 n:9 02 n:15 03 n:27 04 02 n:29 05 03 02 n:37 06 n:80 07 01 n:24"
         " 2F ref:0400 0300 00 00 05 0F ref:0500 0400 00 00 00 07 00"},
    {"an unknown filter", 34, "own:0100 00 0000 1F ref:0200 0100 00 00 01 08 n:99", kVXFailure},
    {"button sounds", 17, "ref:0100 ref:0200 0F n:10 02 n:16 ref:0000 ref:0300 00 ref:0400 01 n:4"},
    {"text", 11,
     "own:0100" + kRect +
         "00 04 05 8F ref:0200 102030 0500 0600 F000 02 n:3 81 0700 01 n:2"
         " 88 ref:0300 F000 00 00"},
    {"text 2", 33,
     "own:0100 00" + kMatrix + "04 05 8C ref:0200 10203040 F000 01 n:2 8A ref:0300 0700 F000 00 00"},
    {"edit text", 37, "own:0100" + kRect + "01 00 ref:0200 F000"},
    {"edit text without a font", 37, "own:0100 00 FE FF 414200"},
    {"shape", 2,  // knows no long counts of fills and no new styles
     "own:0100" + kRect + "FF n:1012 10 00 02 n:8 41 ref:0900 00 01 1400 n:3" + kEdges + "0_10000_0_00000"},
    {"shape 2", 22,
     "own:0100 00 FF 0100 40 ref:FFFF 00 FF 0100 1400 n:3" + kEdges +
         "0_10000 01 43 ref:0A00 00 00 2B"
         " bits:0_11010_11_11111111111 01 42 ref:0B00 00 00 00 bits:0_00000"},
    {"shape 3", 32,
     "own:0100 00 03 00 n:4 12" + kMatrix + "01 n:5 41 ref:0900 00 01 1400 n:4" + kEdges +
         "0_10000 01 43 ref:0A00 00 00 00 00"},
    {"shape 4", 83,
     "own:0100" + kRect +
         "00 03 02 13 00 F2 n:10 8000 40 ref:0900 00 04 1400 0000 n:4 1400 2700 0300 n:4"
         " 1400 0800 41 ref:0A00 00 1400 EB07 0300 42 ref:0B00 00" +
         kEdges + "0_10000 01 43 ref:0C00 00 01 1400 DB07 43 ref:0D00 00 00 00"},
    {"an unknown fill", 2, "own:0100 00 02 40 ref:0200 00 44 0300 00", kVXFailure},
    {"morph shape", 46,
     "own:0100 00" + kRect + "01000000 FF 0300 00 n:8 10 00" + kMatrix + "02 n:20 41 ref:0900" + kMatrix +
         "00 01 n:12"},
    {"morph shape 2", 84,
     "own:0100 00 00 00" + kRect +
         "03 01000000 02 13 00 00 F1 n:10 80008000 41 ref:0900 00 00"
         " 03 n:6 n:8 n:4 2000 0300 n:8 n:4 0800 43 ref:0A00 00 00"},
    {"sprite", 39,
     "own:0100 0200 8506 02 0100 ref:0200"  // a placement
     " 7F01 04000000 ref:0300 0100 4000"    // a removal under a long header
     " 0000 C203 0500"},                    // bytes behind the end
    {"a sprite inside", 39, "own:0100 0200 CA09 own:0600 0100 C203 ref:0400 0000 C203 ref:0500 0000"},
    {"a sprite without an end", 39, "own:0100 0200 C203 ref:0400", kVXFailure},
    {"a tag inside that ends early", 39, "own:0100 0200 C103 04 C203 ref:0400 0000", kVXFailure},
};

std::vector<Row> Rows() {
    std::vector<Row> rows(std::begin(kRows), std::end(kRows));
    for (const unsigned int type : Bytes{6, 10, 14, 20, 21, 35, 36, 48, 60, 75, 87, 90, 91})
        rows.push_back({"definition", type, "own:0700 00"});
    for (const unsigned int type : Bytes{3, 5, 13, 15, 23, 40, 59, 61, 62, 73, 74, 78, 88})
        rows.push_back({"reference", type, "ref:0700 0100"});
    for (const unsigned int type : Bytes{0,  1,  8,  9,  12, 18, 19, 24, 28, 31, 41, 43, 45,
                                         56, 58, 63, 64, 65, 66, 69, 72, 77, 82, 86, 89, 93})
        rows.push_back({"no ID", type, "0000 0100"});
    return rows;
}

TEST(VXCharacterIds, VisitsEachPlaceOnceAndNoneBehindTheEnd) {
    for (const Row& row : Rows()) {
        Places places;
        const Bytes body = Parse(row.body, places);
        for (std::size_t size = body.size() + 1; size-- > 0;) {
            SCOPED_TRACE(row.name + " of type " + std::to_string(row.type) + ", " + std::to_string(size));
            const Bytes cut = Head(body, size);  // of its own size, so that a read behind the end is seen
            Places seen;
            const VXErrorCodeEnum result = VXCharacterIds::Visit(
                row.type, cut.data(), static_cast<unsigned int>(size),
                [&seen](unsigned int offset, Role role) { seen.emplace_back(offset, role); });
            Places there = places;
            std::erase_if(there, [size](const auto& place) { return place.first + 2 > size; });
            EXPECT_EQ(seen, there);
            const bool isLost = there.size() < places.size();
            EXPECT_TRUE(isLost ? result == kVXFailure : size < body.size() || result == row.result);
        }
    }
}

TEST(VXCharacterIds, SeesWhetherAnImageHasAClassName) {
    for (const char* text : {"06 10 0100 ref:4100 11 46 88", "06 10 0100 4100 ref:0700 11 46 88",
                             "A6 10 0100 ref:0700 00 4100 0000 00000000 00000000"}) {
        Places places;
        const Bytes body = Parse(text, places);
        Places seen;
        EXPECT_EQ(
            VXCharacterIds::Visit(70, body.data(), static_cast<unsigned int>(body.size()),
                                  [&](unsigned int offset, Role role) { seen.emplace_back(offset, role); }),
            kVXSuccess);
        EXPECT_EQ(seen, places) << text;
    }
}

TEST(VXCharacterIds, StopsInSpritesThatAreTooDeep) {
    for (const unsigned int depth : {VXCharacterIds::kDeepest, VXCharacterIds::kDeepest + 1}) {
        Bytes body = Hex("0100 0000 0000");
        for (unsigned int around = 0; around != depth; ++around)
            body = Join({Hex("0100 0000"), LongTagBytes(39, body), Hex("0000")});
        unsigned int sprites = 0;
        EXPECT_EQ(VXCharacterIds::Visit(39, body.data(), static_cast<unsigned int>(body.size()),
                                        [&sprites](unsigned int, Role) { ++sprites; }),
                  depth == VXCharacterIds::kDeepest ? kVXSuccess : kVXFailure);
        EXPECT_EQ(sprites, VXCharacterIds::kDeepest + 1);
    }
}

TEST(VXCharacterIds, KnowsDefinitionsAndDepths) {
    for (unsigned int type = 0; type != 1024; ++type) {
        const std::map<unsigned int, unsigned int> depths = {{4, 2},  {5, 2},  {26, 1},
                                                             {28, 0}, {70, 2}, {94, 2}};
        EXPECT_EQ(VXCharacterIds::GetDepthOffset(type),
                  depths.contains(type) ? depths.at(type) : VXCharacterIds::kNoDepth);
        const auto isDefinition = [type](const Row& row) {
            return row.type == type && row.body.starts_with("own");
        };
        EXPECT_EQ(VXCharacterIds::DefinesCharacter(type), std::ranges::any_of(Rows(), isDefinition)) << type;
    }
}

struct MoviePlace {
    std::size_t offset;
    unsigned int type;
};

/// A movie whose tags have other IDs, but at one place, and all these places.
Bytes Renumbered(const Bytes& movie, std::vector<MoviePlace>& places, std::size_t except = ~std::size_t{0}) {
    Bytes result = movie;
    places.clear();
    for (const TagView& tag : TagsOfMovie(movie)) {
        const auto visit = [&](unsigned int offset, Role) {
            const auto start = static_cast<std::size_t>(tag.body.data() - movie.data());
            unsigned char* place = &result[start + offset];
            const unsigned int id = place[0] | static_cast<unsigned int>(place[1]) << 8;
            if (id == 0 || id == 0xFFFF) return;
            if (places.size() != except) std::ranges::copy(Word(id + 1000), place);
            places.push_back({start + offset, tag.type});
        };
        VXIgnore(VXCharacterIds::Visit(tag.type, tag.body.data(), static_cast<unsigned int>(tag.body.size()),
                                       visit));
    }
    return result;
}

std::vector<string> FaultsOf(const Bytes& movie, const Bytes& result) {
    TagMatcher matcher(movie[3]);
    const TagViews source = TagsOfMovie(movie);
    const TagViews found = TagsOfMovie(result);
    matcher.LearnIds(source, found, {});
    if (!matcher.Match(source, {found}).empty()) matcher.Faults.push_back("more tags");
    return matcher.Faults;
}

TEST(VXCharacterIds, AreThePlacesThatParsedClassesKnow) {
    // Characters 1 to 15 and a placement of each, so that no ID is unknown or unused, and then all rows.
    Bytes tags;
    for (unsigned int id = 1; id != 16; ++id)
        tags = Join({tags, TagBytes(75, Word(id)), TagBytes(26, Join({Hex("02 0100"), Word(id)}))});
    for (const Row& row : Rows()) {
        Places ignored;
        if (row.result == kVXSuccess) tags = Join({tags, TagBytes(row.type, Parse(row.body, ignored))});
    }
    const Bytes movie = MovieBytes(8, tags);
    std::vector<MoviePlace> places;
    EXPECT_EQ(FaultsOf(movie, Renumbered(movie, places)), std::vector<string>());
    const std::set<unsigned int> unknown = {7, 46, 83, 84,
                                            94};  // to parsed classes; 83 because of its kinds of fills
    for (std::size_t place = 0; place != places.size(); ++place) {
        std::vector<MoviePlace> same;
        if (unknown.contains(places[place].type)) continue;
        EXPECT_NE(FaultsOf(movie, Renumbered(movie, same, place)), std::vector<string>())
            << places[place].offset << " of type " << places[place].type;
    }
    // The movies of a folder, for tries by hand.
    const char* folder = std::getenv("VXSWF_MOVIES");
    if (folder == nullptr) return;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() != ".swf") continue;
        std::ifstream file(entry.path(), std::ios::binary);
        const Bytes played = PlainMovie({std::istreambuf_iterator<char>(file), {}});
        EXPECT_EQ(FaultsOf(played, Renumbered(played, places)), std::vector<string>()) << entry.path();
    }
}

}  // namespace
