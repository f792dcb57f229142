#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "front/Design.h"
#include "front/Report.h"
#include "front/Syntax.h"

namespace front {

// A name that ends in a decimal number from 0 to 31.
struct IndexedName {
    std::string_view Stem;
    int Index = 0;
};
std::optional<IndexedName> SplitIndex(std::string_view name);

// A name as it stands in a list, ranges spelled out.
struct ListedName {
    std::string Name;
    bool Inverted = false;
    Extension Ext = Extension::None;
    Place At;
};

// The weights by which a constant meets the names: their indices where all are indexed names of one stem,
// else 0 for the last, 1 for the one before it, and so on.
std::vector<int> WeightsOf(const std::vector<std::string>& names);

enum class SymbolKind { Variable, Field, Function };
struct Symbol {
    SymbolKind Kind = SymbolKind::Variable;
    int Index = 0;
};

// What is declared. Variables and fields lie in the design, functions in the syntax.
class Names {
  public:
    Names(const Syntax& syntax, Design& design, Report& report)
        : syntax_(syntax), design_(design), report_(report) {}

    // The names of a Name or List, with the list's extension where a member has none of its own. Faults in
    // ranges are reported; what is right of the list comes back.
    std::vector<ListedName> Listed(ExprId names) const;
    // The same with fields replaced by their members.
    std::vector<ListedName> Members(ExprId names) const;

    // False (and reported) if the name is taken.
    bool Declare(const std::string& name, Symbol symbol, Place at);
    int AddVariable(const Variable& variable);  // -1 if the name is taken

    std::optional<Symbol> Find(std::string_view name) const;
    std::optional<int> FindVariable(std::string_view name) const;

    // Reports the name as unknown, with the nearest name that is known.
    void ReportUnknown(std::string_view name, Place at) const;

  private:
    void AppendSpan(const Expr& span, bool inverted, std::vector<ListedName>& out) const;

    const Syntax& syntax_;
    Design& design_;
    Report& report_;
    std::map<std::string, Symbol, std::less<>> symbols_;
};

}  // namespace front
