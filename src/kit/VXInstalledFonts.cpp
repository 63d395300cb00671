#include "kit/VXInstalledFonts.h"

#include <algorithm>
#include <numeric>
#include <set>
#include <string>
#include <utility>

#include "binding/BNDTypeEngine.h"
#include "framework/VXSwfParserComponent.h"
#include "text/VXFontPublishManager.h"

namespace {

constexpr std::size_t kLongestName = 100;  // units that are compared

std::u16string Fold(const VXString& name) {
    std::u16string folded(name.GetUnits().substr(0, kLongestName));
    for (char16_t& unit : folded) {
        if (unit >= u'A' && unit <= u'Z') unit = static_cast<char16_t>(unit + (u'a' - u'A'));
    }
    return folded;
}

/// How many units are to be added, taken out or changed.
std::size_t Distance(const std::u16string& left, const std::u16string& right) {
    std::vector<std::size_t> row(right.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < left.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i + 1);
        for (std::size_t j = 0; j < right.size(); ++j) {
            const std::size_t changed = diagonal + (left[i] == right[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({changed, row[j] + 1, diagonal + 1});
        }
    }
    return row.back();
}

}  // namespace

VXTypeEngineSession::VXTypeEngineSession() { GetSwfParserComponent()->Startup(); }
VXTypeEngineSession::~VXTypeEngineSession() { GetSwfParserComponent()->Shutdown(); }

std::vector<VXString> VXInstalledFonts::List() {
    using namespace BND_NT_NMT;
    std::set<VXString> names;
    const CTYFontSet set = TYFontSetNew();
    const CTYFamilyList families = TYFamilyListNewList(set);
    const int numFamilies = TYFamilyListGetNumFams(families);
    for (int i = 0; i < numFamilies; ++i) {
        const CTYFamily family = TYFamilyListGetNthFamily(families, i);
        const int numFonts = TYFamilyGetNumFonts(family);
        for (int j = 0; j < numFonts; ++j) names.insert(TYFontDictGetFontName(TYFamilyGetNthFont(family, j)));
    }
    names.erase(VXString());
    return {names.begin(), names.end()};
}

bool VXInstalledFonts::Has(const VXString& name) {
    BND_NT_NMT::CTYFontDict font;
    return VXFontPublishManager::GetFontDict({name, false, false, 0}, font);
}

std::vector<VXString> VXInstalledFonts::FindNearest(const VXString& name, unsigned int count) {
    const std::u16string wanted = Fold(name);
    std::vector<std::pair<std::size_t, VXString>> ranked;
    for (VXString& candidate : List()) {
        const std::u16string folded = Fold(candidate);
        // One name inside the other is nearer than any other.
        const bool isInside = folded.find(wanted) != folded.npos || wanted.find(folded) != wanted.npos;
        ranked.emplace_back(isInside ? 0 : Distance(wanted, folded), std::move(candidate));
    }
    std::stable_sort(ranked.begin(), ranked.end(),
                     [](const auto& left, const auto& right) { return left.first < right.first; });
    std::vector<VXString> nearest;
    for (auto& [distance, candidate] : ranked) {
        if (nearest.size() == count) break;
        nearest.push_back(std::move(candidate));
    }
    return nearest;
}
