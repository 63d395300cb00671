// Scripts: actions one by one, a function call, and a rename that scripts follow.
#include <algorithm>

#include "expect.h"

namespace {

void AddScript(VXMovieBuilder& builder) {
    VXActionWriter script;
    script.SetVariable("i", 0).Label("again");  // for (i = 0; i < 10; ++i) onReady("page.html");
    script.CallFunction("onReady", "page.html").Do(kVXActionPop);
    script.Push("i").GetVariable("i").Do(kVXActionIncrement).Do(kVXActionSetVariable);
    script.GetVariable("i").Push(10).Do(kVXActionLess2).If("again");
    script.CallMethod("_root", "stop").Do(kVXActionPop);
    builder.AddScript(script);
}

void AddBytecode(VXMovieBuilder& builder, const unsigned char* code, unsigned int size) {
    auto* copy = new unsigned char[size];
    std::copy_n(code, size, copy);
    auto& block = builder.Add<TAG_DOABC>();
    block.m_Name = "frame1";
    block.SetABCData(copy, size);                         // takes the array over; nothing looks into it
    builder.Add<TAG_SYMBOLCLASS>().AddSymbol("Main", 0);  // the class of the main timeline
}

/// Lets every script of the movie use the new name of something. Answers how often it stood there.
unsigned int Rename(VXFlintFile& movie, const VXString& from, const VXString& to) {
    VXScriptReplacer replacer;
    if (replacer.ReplaceString(movie, from, to) != kVXSuccess) std::cerr << replacer.GetErrorText() << '\n';
    return replacer.GetCount();
}

}  // namespace

int main() {
    VXFlintFile movie;
    VXMovieBuilder builder(movie, 320, 240);
    AddScript(builder);
    const unsigned char code[] = {0x10, 0x00, 0x2E, 0x00};
    AddBytecode(builder, code, sizeof code);
    Expect(Rename(movie, "page.html", "index.html") == 1, "the text is found once");

    VXFlintFile loaded;
    SaveAndLoad(builder, "scripts.swf", loaded);
    auto place = loaded.FindNthTagOfType(VXSwfTagFactory::TAG_DOACTION, 1);
    Expect(place != loaded.end(), "the script is there");
    const VXFlintActionRecords& actions = dynamic_cast<VXSwfDoActionTag&>(**place).m_ActionRecords;
    Expect(actions.size() == 20, "every call, loop and variable has its actions");
    place = loaded.FindNthTagOfType(VXSwfTagFactory::TAG_DOABC, 1);
    Expect(place != loaded.end() && (*place)->GetTagLen() == 15, "flags, name and bytecode are there");
    return 0;
}
