#pragma once

#include "bench/Report.hpp"
#include "bench/Setup.hpp"

#include <vector>

/// The roads, each a function that measures and adds its results.
namespace corvane::bench {

/// From .db sources to import documents.
void measureImportDocuments(const Setup& setup, std::vector<Result>& results);

/// Documents to projects, re-imports, changes, saving, loading, memory.
void measureProjects(const Setup& setup, std::vector<Result>& results);

/// What measureProjects asks of a fresh process: the verb, and what it does, which is to load a
/// project and print how many more bytes are resident with it than without.
inline constexpr const char* kResidentVerb = "--resident";
int printResidentBytes(const char* projectFile);

/// Address texts, good and bad.
void measureAddresses(std::vector<Result>& results);

/// Whole processes: the start, and the peak memory of an import.
void measureProcesses(const Setup& setup, std::vector<Result>& results);

/// How the instructions of each road grow with its input, and how many there are beside those of a
/// reference where their times differ too little. They are counted, since times tell more of the
/// memory than of the work: few items fit into the processor's cache, many do not, and how soon a
/// virtual machine gets pages for them is up to its host.
void measureGrowth(const Setup& setup, std::vector<Result>& results);

/// What measureGrowth asks of fresh processes: to go the roads of an import once, which saves the
/// project beside the source, and to load a project and write its text.
inline constexpr const char* kImportRoadsVerb = "--import-roads";
inline constexpr const char* kLoadRoadsVerb = "--load-roads";
int goImportRoads(const char* source);
int goLoadRoads(const char* project);

} // namespace corvane::bench
