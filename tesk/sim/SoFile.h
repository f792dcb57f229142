#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "sim/Run.h"
#include "sim/Streams.h"

namespace sim {

// Writes the .SO text: the design's header, the listing (the numbered .SI text with its messages under the
// lines) if asked for, the messages that belong to no line, the names of the columns from top to bottom, and
// the vectors with the computed values: "0001: 1C LLHH", under it a line for each mismatch. Lines end CR LF.
class SoWriter {
  public:
    // The vectors go to `body` until all else is known. `vectors`: how many may come, for the width of their
    // numbers.
    SoWriter(const AbsDesign& design, const SiHead& head, std::size_t vectors, Spool& body);

    void Add(const VectorRecord& record);
    // Puts the whole text together. `listed` is the .SI text, null for no listing.
    void Finish(const RunResult& run, const std::vector<Message>& messages, Source* listed, Sink& so);

  private:
    void AddHeader();
    void AddListing(Source& source, const std::vector<Message>& messages, Sink& so);
    void AddMessages(const std::vector<Message>& messages, bool all);
    void AddCaptions();
    void Line(std::string_view line);
    void Flush(Sink& to, std::size_t above);

    const AbsDesign& design_;
    const SiHead& head_;
    std::size_t digits_;  // of a vector's number
    Spool& body_;
    std::string text_;  // not yet put
};

}  // namespace sim
