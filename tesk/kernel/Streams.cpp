#include "kernel/Streams.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "base/RunTimeError.h"
#include "kernel/Paths.h"

namespace kernel {

namespace {

constexpr std::size_t kPieceBytes = 1u << 16;
constexpr std::size_t kKeptBytes = 1u << 20;

// What is read next of an open file; empty at its end.
std::string_view Read(const base::Descriptor& file, std::vector<char>& piece, bool& failed) {
    piece.resize(kPieceBytes);
    ssize_t count = 0;
    do {
        count = ::read(file.Get(), piece.data(), piece.size());
    } while (count < 0 && errno == EINTR);
    failed = failed || count < 0;
    return {piece.data(), count < 0 ? 0 : static_cast<std::size_t>(count)};
}

bool Rewind(const base::Descriptor& file) { return ::lseek(file.Get(), 0, SEEK_SET) == 0; }

// A file that goes when it is closed.
int OpenNameless(const std::string& folder) {
    const int descriptor = ::open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
    if (descriptor >= 0) return descriptor;
    std::string name = folder + "/.korvane-XXXXXX";
    const int named = ::mkostemp(name.data(), O_CLOEXEC);
    if (named >= 0) ::unlink(name.c_str());
    return named;
}

}  // namespace

std::unique_ptr<DiskSource> DiskSource::Open(std::string_view name) {
    std::unique_ptr<DiskSource> source(new DiskSource(HostPath(name)));
    try {
        struct stat status {};
        base::OpenRegular(source->path_, source->file_, status);
    } catch (const base::RunTimeError&) {
        return nullptr;
    }
    return source;
}

std::string_view DiskSource::Next() { return Read(file_, piece_, failed_); }

void DiskSource::Restart() { failed_ = !Rewind(file_) || failed_; }

DiskSink::DiskSink(std::string_view name) : path_(HostPath(name)) {}

void DiskSink::Put(std::string_view piece) {
    if (!failure_.empty()) return;
    try {
        if (!file_) file_.emplace(path_);
        file_->Write(piece);
    } catch (const base::RunTimeError& error) {
        failure_ = WhyNotWritten(path_, error);
    }
}

std::string DiskSink::Done() {
    try {
        if (file_ && failure_.empty()) file_->Commit(base::AtomicFile::Durability::Quick);
    } catch (const base::RunTimeError& error) {
        failure_ = WhyNotWritten(path_, error);
    }
    file_.reset();
    return failure_;
}

class DiskSpool::Reader : public sim::Source {
  public:
    explicit Reader(DiskSpool& spool) : spool_(spool) {}

    std::string_view Next() override {
        if (spool_.file_.Get() < 0) return std::exchange(rest_, {});
        bool failed = false;
        const std::string_view piece = Read(spool_.file_, piece_, failed);
        if (failed) spool_.failure_ = "it cannot be read back";
        return piece;
    }
    void Restart() override {
        rest_ = spool_.kept_;
        if (spool_.file_.Get() >= 0 && !Rewind(spool_.file_)) spool_.failure_ = "it cannot be read back";
    }

  private:
    DiskSpool& spool_;
    std::string_view rest_;
    std::vector<char> piece_;
};

DiskSpool::DiskSpool(std::string_view name) : path_(HostPath(name)) {}
DiskSpool::~DiskSpool() = default;

void DiskSpool::Write() {
    try {
        if (file_.Get() < 0) file_.Reset(OpenNameless(base::FolderOf(path_)));
        if (file_.Get() < 0) base::RaiseErrno(errno, path_);
        base::WriteBytes(file_, path_, kept_);
    } catch (const base::RunTimeError& error) {
        failure_ = error.Description();
    }
    kept_.clear();
}

void DiskSpool::Put(std::string_view piece) {
    if (!failure_.empty()) return;
    kept_ += piece;
    if (kept_.size() > kKeptBytes) Write();
}

sim::Source& DiskSpool::Back() {
    if (file_.Get() >= 0 && failure_.empty()) Write();
    back_ = std::make_unique<Reader>(*this);
    back_->Restart();
    return *back_;
}

}  // namespace kernel
