#pragma once

#include "bench/Report.hpp"
#include "bench/Workshop.hpp"

#include <vector>

/// The roads, each a function that measures and adds its results.
namespace corvane::bench {

/// From .db sources to import documents.
void measureImportDocuments(const Workshop& workshop, std::vector<Result>& results);

/// Documents to projects, re-imports, changes, saving, loading, memory.
void measureProjects(const Workshop& workshop, std::vector<Result>& results);

/// What measureProjects asks of a fresh process: the verb, and what it does, which is to load a
/// project and print how many more bytes are resident with it than without.
inline constexpr const char* kResidentVerb = "--resident";
int printResidentBytes(const char* projectFile);

/// Address texts, good and bad.
void measureAddresses(std::vector<Result>& results);

/// Whole processes: the start, and the peak memory of an import.
void measureProcesses(const Workshop& workshop, std::vector<Result>& results);

/// How the time of each road grows with its input.
void measureGrowth(const Workshop& workshop, std::vector<Result>& results);

/// What measureGrowth asks of fresh processes: to go the roads of an import once, and to load a
/// project. Each prints the seconds that it takes.
inline constexpr const char* kImportTimesVerb = "--import-times";
inline constexpr const char* kLoadTimeVerb = "--load-time";
int printImportTimes(const char* source);
int printLoadTime(const char* project);

} // namespace corvane::bench
