// Visits the character IDs of a body, gives them others, and visits them again.
//
//     u8     type of the tag
//     u16    length to which the body is cut
//     bytes  body

#include <algorithm>
#include <utility>
#include <vector>

#include "Support.h"
#include "vxswf.h"

namespace {

using Bytes = std::vector<std::uint8_t>;
using Role = VXCharacterIds::Role;
using Places = std::vector<std::pair<unsigned int, Role>>;

/// Keeps 0 and 0xFFFF, and swaps neighbours among the others.
void Change(std::uint8_t* place) {
    const unsigned int id = place[0] | static_cast<unsigned int>(place[1]) << 8;
    if (id == 0 || id == 0xFFFF) return;
    const unsigned int other = ((id - 1) ^ 1) + 1;
    place[0] = static_cast<std::uint8_t>(other & 0xFF);
    place[1] = static_cast<std::uint8_t>(other >> 8);
}

VXErrorCodeEnum Visit(unsigned int type, Bytes& body, Places& places, bool isChanged) {
    return VXCharacterIds::Visit(type, body.data(), static_cast<unsigned int>(body.size()),
                                 [&](unsigned int offset, Role role) {
                                     places.emplace_back(offset, role);
                                     if (isChanged) Change(&body[offset]);
                                 });
}

/// Whether an image may be placed without a class name, here or in a sprite. What follows decides there, so that
/// another ID or a shorter body may tell otherwise.
bool MayPlaceImage(unsigned int type, const Bytes& body) {
    if (type == 70 || type == 94) return body.size() > 1 && (body[1] & 0x18) == 0x10;
    for (std::size_t i = 1; type == 39 && i < body.size(); ++i) {
        const unsigned int inner = (body[i - 1] | static_cast<unsigned int>(body[i]) << 8) >> 6;
        if (inner == 70 || inner == 94) return true;
    }
    return false;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    const unsigned int type = input.Byte();
    const std::size_t cut = input.Word();
    VXBitStream rest = input.Rest();
    Bytes body(rest.GetBuffer(), rest.GetBuffer() + rest.GetSize());

    Places places;
    const VXErrorCodeEnum result = Visit(type, body, places, false);
    for (std::size_t i = 0; i < places.size(); ++i) {
        Require(std::size_t{places[i].first} + 2 <= body.size());
        Require(i == 0 || places[i].first >= places[i - 1].first + 2);
    }
    Require(!VXCharacterIds::DefinesCharacter(type) || body.size() < 2 ||
            places.at(0) == std::pair(0u, Role::kOwn));

    if (MayPlaceImage(type, body)) return 0;

    // Other IDs, written to their places meanwhile, move no place.
    Bytes changed = body;
    for (const bool isChanged : {true, false}) {
        Places again;
        Require(Visit(type, changed, again, isChanged) == result && again == places);
    }
    for (const auto& [offset, role] : places) Change(&changed[offset]);
    Require(changed == body);

    // A body that ends early has the places that it still holds.
    Bytes head(body.begin(), body.begin() + static_cast<std::ptrdiff_t>(std::min(cut, body.size())));
    Places left;
    const VXErrorCodeEnum headResult = Visit(type, head, left, false);
    std::erase_if(places, [&](const auto& place) { return place.first + 2 > head.size(); });
    Require(left == places);
    Require(headResult == kVXSuccess || result != kVXSuccess || head.size() < body.size());
    return 0;
}
