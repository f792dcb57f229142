#include "sim/SoFile.h"

#include <algorithm>
#include <map>

#include "base/Text.h"
#include "sim/TextLines.h"

namespace sim {
namespace {

constexpr std::string_view lineEnd = "\r\n";
constexpr std::size_t pieceBytes = 1u << 16;

bool IsOfDesign(const Message& message) { return FileExtension(message) != ".SI"; }

}  // namespace

SoWriter::SoWriter(const AbsDesign& design, const SiHead& head, std::size_t vectors, Spool& body)
    : design_(design),
      head_(head),
      digits_(std::max<std::size_t>(std::to_string(vectors).size(), 4)),
      body_(body) {}

void SoWriter::Line(std::string_view line) { text_.append(line).append(lineEnd); }

void SoWriter::Flush(Sink& to, std::size_t above) {
    if (text_.size() <= above) return;
    to.Put(text_);
    text_.clear();
}

void SoWriter::AddHeader() {
    for (const auto& keyword : model::headerWords) {
        const auto text = design_.Header.find(std::string(keyword.Name));
        if (text == design_.Header.end()) continue;
        Line(base::PadRight(std::string(keyword.Name), 10) + " " + text->second);
    }
    Line("");
}

void SoWriter::AddListing(Source& source, const std::vector<Message>& messages, Sink& so) {
    std::multimap<int, const Message*> under;
    for (const auto& message : messages)
        if (message.At.Line > 0 && !IsOfDesign(message)) under.emplace(message.At.Line, &message);
    int number = 0;
    TextLines lines(source);
    for (std::string_view line; lines.Next(line);) {
        std::string text = base::PadLeft(std::to_string(++number), 4) + ": ";
        text += line.substr(0, line.size() - (line.ends_with('\r') ? 1 : 0));
        std::replace(text.begin(), text.end(), '\r', ' ');
        Line(text);
        const auto range = under.equal_range(number);
        for (auto it = range.first; it != range.second; ++it) Line(ListLine(*it->second, ""));
        Flush(so, pieceBytes);
    }
    Line("");
}

void SoWriter::AddMessages(const std::vector<Message>& messages, bool all) {
    bool any = false;
    for (const auto& message : messages) {
        if (message.Number == "0301vs") continue;  // stands under its vector
        if (!all && message.At.Line != 0 && !IsOfDesign(message)) continue;
        Line(ListLine(message, FileExtension(message)));
        any = true;
    }
    if (any) Line("");
}

// The names from top to bottom, their last characters above the values.
void SoWriter::AddCaptions() {
    std::size_t height = 0;
    for (const auto net : head_.Columns) height = std::max(height, design_.Nets[net].Name.size());
    for (std::size_t row = 0; row < height; ++row) {
        std::string line(digits_ + 2, ' ');
        for (const auto& item : head_.Order) {
            line.append(item.Blanks, ' ');
            for (const auto net : item.Nets) {
                const auto& name = design_.Nets[net].Name;
                const auto above = height - name.size();
                line += row < above ? ' ' : name[row - above];
            }
        }
        Line(line.substr(0, line.find_last_not_of(' ') + 1));
    }
    Line("");
}

void SoWriter::Add(const VectorRecord& record) {
    text_ += record.Notes;
    text_ += base::PadLeft(std::to_string(record.Number), digits_, '0');
    text_ += ": ";
    std::size_t column = 0;
    for (const auto& item : head_.Order) {
        text_.append(item.Blanks, ' ');
        text_.append(record.Found, column, item.Nets.size());
        column += item.Nets.size();
    }
    Line(record.Simulated ? "" : "  (not simulated)");
    for (const auto i : MismatchesOf(record)) {
        Line("   >> " + design_.Nets[head_.Columns[i]].Name + ": expected " + record.Given[i] + ", found " +
             record.Found[i]);
    }
    Flush(body_, pieceBytes);
}

void SoWriter::Finish(const RunResult& run, const std::vector<Message>& messages, Source* listed, Sink& so) {
    Flush(body_, 0);
    AddHeader();
    if (listed != nullptr) AddListing(*listed, messages, so);
    AddMessages(messages, listed == nullptr);
    if (!head_.Columns.empty()) AddCaptions();
    Flush(so, 0);
    Source& vectors = body_.Back();
    for (auto piece = vectors.Next(); !piece.empty(); piece = vectors.Next()) so.Put(piece);
    text_ += run.LastNotes;
    Line("");
    Line(std::to_string(run.Vectors) + " vectors, " + std::to_string(run.Mismatches) + " mismatches");
    Flush(so, 0);
}

}  // namespace sim
