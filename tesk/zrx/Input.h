#pragma once

#include "zrx/Work.h"

// What the calls read.
namespace zrx {

inline constexpr const char* solutionsExtension = ".ZSL";

std::optional<Document> LoadDocument(const Call& call);
std::optional<Database> LoadDatabase(const Call& call);

// The devices that a text names, one time each, as far as their limits are known; the others are told of.
std::vector<Candidate> CandidatesOf(const Call& call, const Database& database, std::string_view names);

// The design over the candidates, its sums parted at so many terms (0: not). Nothing if a register has no
// clock.
std::unique_ptr<Problem> MakeProblem(const Call& call, const Document& document, const Database& database,
                                     std::vector<Candidate> candidates, std::size_t splitAt);

SolutionFile LoadSolutions(const Call& call);

}  // namespace zrx
