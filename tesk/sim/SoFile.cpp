#include "sim/SoFile.h"

#include <algorithm>
#include <map>

#include "base/Text.h"

namespace sim {
namespace {

constexpr std::string_view lineEnd = "\r\n";
constexpr std::size_t margin = 6;  // of the columns: "0001: "

std::string Padded(std::string text, std::size_t width, char fill) {
    if (text.size() < width) text.insert(0, width - text.size(), fill);
    return text;
}

class Writer {
  public:
    Writer(const AbsDesign& design, const SiFile& file) : design_(design), file_(file) {}

    void AddHeader() {
        for (const auto& keyword : HeaderKeywords()) {
            const auto text = design_.Header.find(std::string(keyword.Name));
            if (text == design_.Header.end()) continue;
            std::string label(keyword.Name);
            label.resize(10, ' ');
            Line(label + " " + text->second);
        }
        Line("");
    }

    void AddListing(std::string_view source, const std::vector<Message>& messages) {
        std::multimap<int, const Message*> under;
        for (const auto& message : messages) {
            if (message.Line > 0 && !IsOfDesign(message)) under.emplace(message.Line, &message);
        }
        int number = 0;
        for (const auto& line : base::Lines(source)) {
            Line(Padded(std::to_string(++number), 4, ' ') + ": " + line);
            const auto range = under.equal_range(number);
            for (auto it = range.first; it != range.second; ++it) Line(ListLine(*it->second, ""));
        }
        Line("");
    }

    void AddMessages(const std::vector<Message>& messages, bool all) {
        const auto before = text_.size();
        for (const auto& message : messages) {
            if (message.Code == "0301vs") continue;  // stands under its vector
            if (all || message.Line == 0 || IsOfDesign(message))
                Line(ListLine(message, FileExtension(message)));
        }
        if (text_.size() != before) Line("");
    }

    // The names from top to bottom, their last characters above the values.
    void AddCaptions() {
        std::size_t height = 0;
        for (const auto net : file_.Columns) height = std::max(height, design_.Nets[net].Name.size());
        for (std::size_t row = 0; row < height; ++row) {
            std::string line(margin, ' ');
            for (const auto& item : file_.Order) {
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

    void AddVector(std::size_t number, const VectorRecord& record) {
        for (const auto& note : record.Notes) Line(note);
        std::string line = Padded(std::to_string(number), 4, '0') + ": ";
        std::size_t column = 0;
        for (const auto& item : file_.Order) {
            line.append(item.Blanks, ' ');
            line += record.Found.substr(column, item.Nets.size());
            column += item.Nets.size();
        }
        Line(line + (record.Simulated ? "" : "  (not simulated)"));
        for (const auto i : MismatchesOf(record)) {
            Line("   >> " + design_.Nets[file_.Columns[i]].Name + ": expected " + record.Given[i] +
                 ", found " + record.Found[i]);
        }
    }

    void AddResults(const RunResult& run) {
        std::size_t number = 0;
        for (const auto& record : run.Vectors) AddVector(++number, record);
        for (const auto& note : run.LastNotes) Line(note);
        Line("");
        Line(std::to_string(run.Vectors.size()) + " vectors, " + std::to_string(run.Mismatches) +
             " mismatches");
    }

    std::string Text() && { return std::move(text_); }

  private:
    static bool IsOfDesign(const Message& message) { return FileExtension(message) != ".SI"; }

    void Line(std::string_view line) {
        text_ += line;
        text_ += lineEnd;
    }

    const AbsDesign& design_;
    const SiFile& file_;
    std::string text_;
};

}  // namespace

std::string WriteSo(const AbsDesign& design, const SiFile& file, const RunResult& run,
                    const std::vector<Message>& messages, std::string_view siText, bool listing) {
    Writer writer(design, file);
    writer.AddHeader();
    if (listing) writer.AddListing(siText, messages);
    writer.AddMessages(messages, !listing);
    if (!file.Columns.empty()) writer.AddCaptions();
    writer.AddResults(run);
    return std::move(writer).Text();
}

}  // namespace sim
