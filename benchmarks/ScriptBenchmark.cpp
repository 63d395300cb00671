// Loads and dumps of a movie that is all scripts, each in a process of its own, against `TagCopy`.

#include <vector>

#include "support/MovieWork.h"
#include "vxswf.h"

namespace {

constexpr unsigned int kNumScripts = 20000;
constexpr unsigned int kNumStatements = 8;

/// Five actions for each statement, `a = b + n`.
std::vector<unsigned char> MakeScripts() {
    std::vector<unsigned char> tags;
    for (unsigned int i = 0; i < kNumScripts; ++i) {
        std::vector<unsigned char> body;
        for (unsigned int statement = 0; statement < kNumStatements; ++statement) {
            const auto letter = static_cast<unsigned char>('a' + (i + statement) % 26);
            body.insert(body.end(), {0x96, 6, 0, 0, letter, 0, 0, 'b', 0});                    // Push
            body.push_back(0x1C);                                                              // GetVariable
            body.insert(body.end(), {0x96, 5, 0, 7, static_cast<unsigned char>(i), 0, 0, 0});  // Push
            body.push_back(0x47);                                                              // Add2
            body.push_back(0x1D);                                                              // SetVariable
        }
        body.push_back(0);
        AppendTag(tags, VXSwfTagFactory::TAG_DOACTION, body.data(), body.size());
    }
    return tags;
}

void Scripts(benchmark::State& state, From from, bool isDumped) {
    CompareWithCopy(state, MovieFile(MakeScripts), from, isDumped);
}

/// A load by a host that then looks into every action.
void ScriptsRead(benchmark::State& state) {
    const MovieFile movie(MakeScripts);
    const auto loadAndRead = [&movie](ColdClock& clock) {
        VXFlintFile file;
        unsigned int numActions = 0;
        clock.Start();
        CVXStreamReadWrite source(movie.GetPath(), CVXStreamReadWrite::kOpenExisting);
        Require(file.LoadFromStream(&source) == kVXSuccess);
        for (VXSwfTag* tag : file) {
            VXFlintActionRecords* actions = nullptr;
            static_cast<VXSwfDoActionTag*>(tag)->GetActionRecords(&actions);
            for (const VXFlintActionRecord* action : *actions)
                numActions += action->m_ActionCode != 0 ? 1 : 0;
        }
        clock.Stop();
        Require(numActions == kNumScripts * kNumStatements * 5);
    };
    CompareCold(state, CopyOf(movie), loadAndRead, movie.GetSize());
}

}  // namespace

// The bounds: 14 to load and 17 to load and dump, with 12 times the movie in memory. Actions that are looked
// into have none.
BENCHMARK_CAPTURE(Scripts, load, From::kFile, false)->Apply(ColdRuns);
BENCHMARK_CAPTURE(Scripts, load_from_memory, From::kMemory, false)->Apply(ColdRuns);
BENCHMARK_CAPTURE(Scripts, load_and_dump, From::kFile, true)->Apply(ColdRuns);
BENCHMARK(ScriptsRead)->Apply(ColdRuns);
