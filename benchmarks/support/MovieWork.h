#pragma once

#include "support/ColdRun.h"
#include "support/MovieFile.h"

/// Where the library loads a movie from.
enum class From { kFile, kMemory };

/// What `TagCopy` takes for a movie that is in memory.
ColdWork CopyOf(const MovieFile& movie);

/// What the library takes for a load in full mode, and for a dump into memory where asked.
ColdWork LoadOf(const MovieFile& movie, From from, bool isDumped);

/// The same for a movie that is carried as bytes.
ColdWork WholeLoadOf(const MovieFile& movie, From from, bool isDumped);

/// `CompareCold` of the first two, with memory counted in sizes of the movie.
void CompareWithCopy(benchmark::State& state, const MovieFile& movie, From from, bool isDumped);
