// Scripts: actions one by one, a function call, and a rename that scripts follow.
#include <algorithm>
#include <iterator>

#include "kit.h"

namespace {

void AddScript(VXFlintFile& movie) {
    auto& script = Add<VXSwfDoActionTag>(movie, VXSwfTagFactory::TAG_DOACTION);
    VXIgnore(script.PushActionRecord(new VXFlintActionRecord(kVXActionStop)));  // the tag takes it over

    auto* url = new VXFlintActionRecord(kVXActionGetURL);  // an address and a window, each up to a NUL
    const unsigned char payload[] = "page.html\0_self";
    url->SetData(payload, sizeof payload);
    VXIgnore(script.PushActionRecord(url));

    script.m_ActionRecords.InsertCallFunction("onReady", 1);  // onReady(1), its result thrown away
}

void AddBytecode(VXFlintFile& movie, const unsigned char* code, unsigned int size) {
    auto* copy = new unsigned char[size];
    std::copy_n(code, size, copy);
    auto& block = Add<VXSwfDoABCTag>(movie, VXSwfTagFactory::TAG_DOABC);
    block.m_Name = "frame1";
    block.SetABCData(copy, size);  // takes the array over; nothing looks into it
    auto& symbols = Add<VXSwfSymbolClassTag>(movie, VXSwfTagFactory::TAG_SYMBOLCLASS);
    symbols.AddSymbol("Main", 0);  // the class of the main timeline
}

/// Lets every script of the timeline use the new name of something.
void Rename(VXFlintFile& movie, const VXString& from, const VXString& to) {
    for (VXSwfTag* tag : movie) {
        auto* script = dynamic_cast<VXSwfDoActionTag*>(tag);
        if (script == nullptr) continue;
        for (VXFlintActionRecord* action : script->m_ActionRecords) {
            int delta = 0;  // of the action's length; the tag's own length is worked out by the dump
            action->ReplaceString(from, to, delta);
        }
    }
}

}  // namespace

int main() {
    VXFlintFile movie;
    Begin(movie);
    AddScript(movie);
    const unsigned char code[] = {0x10, 0x00, 0x2E, 0x00};
    AddBytecode(movie, code, sizeof code);
    Rename(movie, "page.html", "index.html");

    VXFlintFile loaded;
    Finish(movie, "scripts.swf", loaded);
    auto place = loaded.FindNthTagOfType(VXSwfTagFactory::TAG_DOACTION, 1);
    Expect(place != loaded.end(), "the script is there");
    const VXFlintActionRecords& actions = dynamic_cast<VXSwfDoActionTag&>(**place).m_ActionRecords;
    Expect(actions.size() == 5, "a call takes three actions");
    const VXFlintActionRecord& url = **std::next(actions.begin());
    Expect(url.m_ActionCode == kVXActionGetURL && url.m_Length == 17, "the address is one letter longer");
    place = loaded.FindNthTagOfType(VXSwfTagFactory::TAG_DOABC, 1);
    Expect(place != loaded.end() && (*place)->GetTagLen() == 15, "flags, name and bytecode are there");
    return 0;
}
