#include "sim/SiOrder.h"

#include <set>
#include <unordered_map>

#include "base/Text.h"
#include "base/modLib.h"
#include "model/Number.h"

namespace sim {
namespace {

struct Entry {
    std::string Text;         // without blanks
    std::string BeforeComma;  // what a "," is missing behind, if one is
};

// Whether `next` begins a name, list or blanks of its own though no "," parts it from `text`.
bool BeginsAnew(std::string_view text, bool blank, char next) {
    if (text.empty() || (!base::IsWordChar(text.back()) && text.back() != ']')) return false;
    if (next == '[' || next == '!' || next == '%') return true;
    return base::IsWordChar(next) && (blank || text.back() == ']');
}

// Splits at the commas outside of brackets.
std::vector<Entry> SplitEntries(std::string_view text) {
    std::vector<Entry> entries(1);
    bool inList = false;
    bool blank = false;
    for (const char c : text) {
        if (c == '[' || c == ']') inList = c == '[';
        Entry& entry = entries.back();
        if (c == ',' && !inList) {
            entries.emplace_back();
        } else if (!base::IsBlankChar(c) || (static_cast<unsigned char>(c) >= 127)) {
            if (entry.BeforeComma.empty() && BeginsAnew(entry.Text, blank, c)) entry.BeforeComma = entry.Text;
            entry.Text += c;
        }
        blank = base::IsBlankChar(c);
    }
    return entries;
}

// 0 to 999, or -1 if the text is no such number.
int SmallNumber(std::string_view text) {
    const int value = model::WholeNumber<int>(text).value_or(-1);
    return value <= 999 ? value : -1;
}

struct IndexedName {
    std::string_view Stem;
    int Index = -1;
};

IndexedName SplitIndex(std::string_view name) {
    auto digits = name.size();
    while (digits > 0 && base::IsDigitChar(name[digits - 1])) --digits;
    return {name.substr(0, digits), SmallNumber(name.substr(digits))};
}

class Reader {
  public:
    Reader(const AbsDesign& design, int line, MessageLog& log) : design_(design), line_(line), log_(log) {
        for (std::size_t i = 0; i < design.Nets.size(); ++i) nets_.emplace(design.Nets[i].Name, i);
        for (const auto& field : design.Fields) fields_.emplace(field.Name, &field);
    }

    std::vector<OrderItem> Read(std::string_view text) {
        for (const auto& entry : SplitEntries(text)) {
            if (entry.BeforeComma.empty())
                TakeEntry(entry.Text);
            else
                Fault("0206va", "\",\" missing behind \"" + entry.BeforeComma + "\"");
        }
        return std::move(items_);
    }

  private:
    void Fault(MessageCode code, std::string_view detail) {
        log_.Add(code, line_, base::DisplayUtf8(detail.substr(0, 120)));
    }

    void TakeEntry(std::string_view entry) {
        if (entry.empty()) return Fault("0206va", "empty entry");
        if (entry[0] == '%') return TakeBlanks(entry.substr(1));
        OrderItem item;
        if (entry[0] == '!') entry.remove_prefix(1);
        item.Caption = entry;
        if (entry.size() > 1 && entry.front() == '[' && entry.back() == ']') {
            if (!TakeList(entry.substr(1, entry.size() - 2), item)) return;
        } else if (const auto field = fields_.find(entry); field != fields_.end()) {
            for (const auto member : field->second->Members) {
                if (!AddNet(item, member)) return;
            }
        } else if (!AddName(item, entry)) {
            return;
        }
        items_.push_back(std::move(item));
    }

    void TakeBlanks(std::string_view text) {
        const int blanks = SmallNumber(text);
        if (blanks < 0 || blanks > SiLimits::Blanks) return Fault("0206va", "%" + std::string(text));
        if (items_.size() >= 2 * AbsLimits::Nets) return Fault("0206va", "too many entries");
        items_.push_back({"", static_cast<std::size_t>(blanks), {}});
    }

    bool TakeList(std::string_view text, OrderItem& item) {
        for (std::size_t at = 0; at <= text.size();) {
            const auto comma = std::min(text.find(',', at), text.size());
            const auto part = text.substr(at, comma - at);
            const auto dots = part.find("..");
            const bool good = dots == part.npos ? AddName(item, part)
                                                : AddRange(item, part.substr(0, dots), part.substr(dots + 2));
            if (!good) return false;
            at = comma + 1;
        }
        return true;
    }

    bool AddRange(OrderItem& item, std::string_view from, std::string_view to) {
        const auto first = SplitIndex(from);
        auto last = SplitIndex(to);
        if (last.Stem.empty()) last.Stem = first.Stem;
        if (first.Index < 0 || last.Index < 0 || first.Stem != last.Stem) {
            Fault("0206va", std::string(from) + ".." + std::string(to));
            return false;
        }
        const int step = first.Index <= last.Index ? 1 : -1;
        for (int i = first.Index;; i += step) {
            if (!AddName(item, std::string(first.Stem) + std::to_string(i))) return false;
            if (i == last.Index) return true;
        }
    }

    bool AddName(OrderItem& item, std::string_view name) {
        const auto net = nets_.find(name);
        if (net != nets_.end()) return AddNet(item, net->second);
        Fault("0207va", name);
        return false;
    }

    bool AddNet(OrderItem& item, std::size_t net) {
        item.Nets.push_back(net);
        if (listed_.insert(net).second) return true;
        Fault("0206va", design_.Nets[net].Name + " twice");
        return false;
    }

    const AbsDesign& design_;
    int line_;
    MessageLog& log_;
    std::unordered_map<std::string_view, std::size_t> nets_;
    std::unordered_map<std::string_view, const Field*> fields_;
    std::set<std::size_t> listed_;
    std::vector<OrderItem> items_;
};

}  // namespace

std::vector<OrderItem> ReadOrder(std::string_view text, int line, const AbsDesign& design, MessageLog& log) {
    return Reader(design, line, log).Read(text);
}

}  // namespace sim
