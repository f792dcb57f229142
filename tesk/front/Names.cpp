#include "front/Names.h"

#include <algorithm>
#include <array>

#include "base/Text.h"
#include "front/Constant.h"
#include "front/Limits.h"

namespace front {

namespace {

constexpr int kMaxIndex = 31;
constexpr std::size_t kLongest = 40;  // names are looked at as near up to here

// Edit distance with swaps of neighbours, given up beyond `most`.
std::size_t Distance(std::string_view a, std::string_view b, std::size_t most) {
    if (std::max(a.size(), b.size()) - std::min(a.size(), b.size()) > most) return most + 1;
    if (std::max(a.size(), b.size()) > kLongest) return most + 1;
    std::array<std::array<std::size_t, kLongest + 1>, kLongest + 1> d;
    for (std::size_t i = 0; i <= a.size(); ++i) {
        for (std::size_t j = 0; j <= b.size(); ++j) {
            if (i == 0 || j == 0) {
                d[i][j] = i + j;
                continue;
            }
            d[i][j] = std::min({d[i - 1][j] + 1, d[i][j - 1] + 1, d[i - 1][j - 1] + (a[i - 1] != b[j - 1])});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                d[i][j] = std::min(d[i][j], d[i - 2][j - 2] + 1);
        }
    }
    return d[a.size()][b.size()];
}

}  // namespace

std::optional<IndexedName> SplitIndex(std::string_view name) {
    std::size_t cut = name.size();
    while (cut > 0 && name[cut - 1] >= '0' && name[cut - 1] <= '9') --cut;
    if (cut == name.size() || cut == 0) return std::nullopt;
    const auto index = ParseDecimal(name.substr(cut), kMaxIndex);
    if (!index) return std::nullopt;
    return IndexedName{name.substr(0, cut), *index};
}

std::vector<int> WeightsOf(const std::vector<std::string>& names) {
    std::vector<int> byIndex;
    std::vector<int> byPosition;
    std::optional<IndexedName> first;
    for (const std::string& name : names) {
        const auto indexed = SplitIndex(name);
        if (!first) first = indexed;
        if (indexed && indexed->Stem == first->Stem) byIndex.push_back(indexed->Index);
        byPosition.push_back(static_cast<int>(names.size() - 1 - byPosition.size()));
    }
    return byIndex.size() == names.size() ? byIndex : byPosition;
}

void Names::AppendSpan(const Expr& span, bool inverted, std::vector<ListedName>& out) const {
    const auto first = SplitIndex(span.Text);
    const auto lastName = SplitIndex(span.Last);
    const auto lastNumber = ParseDecimal(span.Last, kMaxIndex);
    const bool oneStem = first && (lastNumber || (lastName && lastName->Stem == first->Stem));
    if (!oneStem) {
        report_.Add(Code::BadList, span.At, std::string(span.Text) + ".." + std::string(span.Last));
        return;
    }
    const int last = lastNumber ? *lastNumber : lastName->Index;
    const bool padded = span.Text.size() - first->Stem.size() == 2;
    for (int index = first->Index;; index += index < last ? 1 : -1) {
        std::string digits = std::to_string(index);
        if (padded && span.Text[first->Stem.size()] == '0' && digits.size() < 2) digits.insert(0, "0");
        out.push_back({std::string(first->Stem) + digits, inverted, span.Ext, span.At});
        if (index == last) break;
    }
}

std::vector<ListedName> Names::Listed(ExprId names) const {
    const Expr& list = syntax_.Exprs[static_cast<std::size_t>(names)];
    std::vector<ListedName> result;
    if (list.What == Op::Name) return {{std::string(list.Text), false, list.Ext, list.At}};
    for (std::uint32_t i = 0; i < list.KidCount; ++i) {
        const Expr* item = &syntax_.Exprs[static_cast<std::size_t>(syntax_.Kids[list.FirstKid + i])];
        const bool inverted = item->What == Op::Not;
        if (inverted) item = &syntax_.Exprs[static_cast<std::size_t>(syntax_.Kids[item->FirstKid])];
        if (item->What == Op::Span)
            AppendSpan(*item, inverted, result);
        else
            result.push_back({std::string(item->Text), inverted, item->Ext, item->At});
    }
    for (ListedName& name : result)
        if (name.Ext == Extension::None) name.Ext = list.Ext;
    return result;
}

std::vector<ListedName> Names::Members(ExprId names) const {
    std::vector<ListedName> result;
    for (ListedName& name : Listed(names)) {
        const auto symbol = Find(name.Name);
        if (!symbol || symbol->Kind != SymbolKind::Field) {
            result.push_back(std::move(name));
            continue;
        }
        for (int member : design_.Fields[static_cast<std::size_t>(symbol->Index)].Members)
            result.push_back(
                {design_.Variables[static_cast<std::size_t>(member)].Name, name.Inverted, name.Ext, name.At});
    }
    if (result.size() > Limits::ListMembers) {
        report_.Add(Code::ListTooLong, result.front().At);
        result.resize(Limits::ListMembers);
    }
    return result;
}

bool Names::Declare(const std::string& name, Symbol symbol, Place at) {
    if (symbols_.emplace(name, symbol).second) return true;
    report_.Add(Code::Redeclared, at, name);
    return false;
}

int Names::AddVariable(const Variable& variable) {
    const int index = static_cast<int>(design_.Variables.size());
    if (variable.Name.size() > Limits::NameLength) report_.Add(Code::NameTooLong, variable.At, variable.Name);
    if (!Declare(variable.Name, {SymbolKind::Variable, index}, variable.At)) return -1;
    design_.Variables.push_back(variable);
    return index;
}

std::optional<Symbol> Names::Find(std::string_view name) const {
    const auto entry = symbols_.find(name);
    if (entry == symbols_.end()) return std::nullopt;
    return entry->second;
}

std::optional<int> Names::FindVariable(std::string_view name) const {
    const auto symbol = Find(name);
    if (!symbol || symbol->Kind != SymbolKind::Variable) return std::nullopt;
    return symbol->Index;
}

void Names::ReportUnknown(std::string_view name, Place at) const {
    std::string_view best;
    std::size_t least = 1 + std::min<std::size_t>(2, name.size() / 2);
    for (const auto& [known, symbol] : symbols_) {
        const std::size_t distance = base::EqualNoCase(known, name) ? 0 : Distance(known, name, least);
        if (distance >= least) continue;
        least = distance;
        best = known;
    }
    std::string detail = "\"" + std::string(name) + "\"";
    if (!best.empty()) detail += "; did you mean \"" + std::string(best) + "\"?";
    report_.Add(Code::UnknownName, at, detail);
}

}  // namespace front
