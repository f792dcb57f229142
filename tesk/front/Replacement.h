#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "front/Arithmetic.h"

namespace front {

// Calls `visit(word)` for every word of the text outside base prefixes ('b' and the like, with their digits)
// and writes what it returns in its place; a null pointer keeps the word. True if something was replaced.
bool ReplaceWords(std::string_view text, const std::function<const std::string*(std::string_view)>& visit,
                  std::string& out);

// What `$DEFINE` knows.
class Definitions {
  public:
    // False if the name had another text.
    bool Define(std::string_view name, std::string_view text);
    void Undefine(std::string_view name);
    bool Has(std::string_view name) const { return texts_.find(name) != texts_.end(); }

    enum class Outcome { Same, Changed, TooLong };
    // Replaces defined words, in what comes in their place too; a name inside its own text stays.
    Outcome Apply(std::string_view text, std::string& out) const;

  private:
    bool Expand(std::string_view text, std::vector<std::string_view>& active, std::size_t& count,
                std::string& out) const;

    std::map<std::string, std::string, std::less<>> texts_;
};

// Names of a macro call (replaced everywhere as whole words) and of `$REPEAT`s (known inside braces).
struct Scope {
    std::vector<std::pair<std::string, std::string>> Words;
    Bindings Values;
    bool Empty() const { return Words.empty() && Values.empty(); }
};

// Applies a scope: words first, then each {expr} that is an expression by its value; other braces stay.
// False if an expression divides by zero or leaves the range.
bool ApplyScope(std::string_view text, const Scope& scope, std::string& out);

}  // namespace front
