#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/AtomicFile.h"
#include "base/PosixFile.h"
#include "sim/Streams.h"

// Files of the host that are read and written piece by piece. Names as in Paths.h.
namespace kernel {

class DiskSource : public sim::Source {
  public:
    // Null if there is no such file, or if it cannot be read.
    static std::unique_ptr<DiskSource> Open(std::string_view name);

    // A fault of the disk ends the text.
    std::string_view Next() override;
    void Restart() override;
    bool Failed() const { return failed_; }

  private:
    explicit DiskSource(std::string path) : path_(std::move(path)) {}

    std::string path_;
    base::Descriptor file_;
    std::vector<char> piece_;
    bool failed_ = false;
};

// Stands under its name once it is done. Nothing put: the file stays as it is.
class DiskSink : public sim::Sink {
  public:
    explicit DiskSink(std::string_view name);

    void Put(std::string_view piece) override;
    // Empty if done, else why not.
    std::string Done();

  private:
    std::string path_;
    std::optional<base::AtomicFile> file_;
    std::string failure_;
};

// A few pieces are kept in memory, more in a file without a name.
class DiskSpool : public sim::Spool {
  public:
    // `name` is a file beside which there is room.
    explicit DiskSpool(std::string_view name);
    ~DiskSpool() override;

    void Put(std::string_view piece) override;
    sim::Source& Back() override;
    // Why not all of it could be kept; empty if it is.
    const std::string& Failure() const { return failure_; }

  private:
    class Reader;

    void Write();

    std::string path_;
    std::string kept_;
    base::Descriptor file_;
    std::string failure_;
    std::unique_ptr<Reader> back_;
};

}  // namespace kernel
