#include "editor/Recovery.h"

#include <algorithm>
#include <charconv>

#include "base/RunTimeError.h"

namespace editor {
namespace {

constexpr std::string_view mark = "KORVANE RECOVERY 1\n";
constexpr const char* pattern = "*.copy";

// A number and the line end behind it, taken off the head of `bytes`.
std::optional<std::size_t> TakeLength(std::string_view& bytes) {
    std::size_t value = 0;
    const auto result = std::from_chars(bytes.data(), bytes.data() + bytes.size(), value);
    if (result.ec != std::errc() || result.ptr == bytes.data() + bytes.size() || *result.ptr != '\n') return {};
    bytes.remove_prefix(static_cast<std::size_t>(result.ptr - bytes.data()) + 1);
    return value;
}

}  // namespace

std::string Recovery::Encode(const RecoveryCopy& copy) {
    std::string bytes(mark);
    for (const std::string* part : {&copy.Caption, &copy.FileName, &copy.Text}) {
        bytes += std::to_string(part->size()) + "\n" + *part;
    }
    return bytes;
}

std::optional<RecoveryCopy> Recovery::Decode(std::string_view bytes) {
    if (!bytes.starts_with(mark)) return std::nullopt;
    bytes.remove_prefix(mark.size());
    RecoveryCopy copy;
    for (std::string* part : {&copy.Caption, &copy.FileName, &copy.Text}) {
        const auto length = TakeLength(bytes);
        if (!length || *length > bytes.size()) return std::nullopt;
        part->assign(bytes.substr(0, *length));
        bytes.remove_prefix(*length);
    }
    return copy;
}

Recovery::Recovery(platform::FileSystem& files, std::string folder)
    : files_(files), folder_(std::move(folder)), writer_([this] { Work(); }) {
    // Names of an earlier run are not taken again before its copies are gone.
    for (const std::string& name : files_.List(folder_ + pattern)) {
        std::uint64_t number = 0;
        std::from_chars(name.data(), name.data() + name.size(), number);
        nextNumber_ = std::max(nextNumber_, number + 1);
    }
}

Recovery::~Recovery() {
    {
        const std::lock_guard lock(mutex_);
        isEnding_ = true;
    }
    changed_.notify_all();
    writer_.join();
}

std::vector<RecoveryCopy> Recovery::Find() const {
    std::vector<std::string> names = files_.List(folder_ + pattern);
    std::sort(names.begin(), names.end());
    std::vector<RecoveryCopy> copies;
    for (const std::string& name : names) {
        try {
            if (auto copy = Decode(files_.ReadFile(folder_ + name))) copies.push_back(std::move(*copy));
        } catch (const base::RunTimeError&) {
            // Unreadable: nothing to offer.
        }
    }
    return copies;
}

void Recovery::RemoveFound() {
    for (const std::string& name : files_.List(folder_ + pattern)) {
        bool isOurs = false;
        for (const auto& path : paths_) isOurs = isOurs || path.second == folder_ + name;
        if (!isOurs) Do({folder_ + name, std::nullopt});
    }
}

std::string Recovery::PathOf(const void* document) {
    std::string& path = paths_[document];
    if (path.empty()) {
        std::string number = std::to_string(nextNumber_++);
        path = folder_ + std::string(8 - std::min<std::size_t>(8, number.size()), '0') + number + ".copy";
    }
    return path;
}

void Recovery::Keep(const void* document, RecoveryCopy copy) { Put({PathOf(document), std::move(copy)}); }

void Recovery::Forget(const void* document) {
    const auto path = paths_.find(document);
    if (path == paths_.end()) return;
    Put({path->second, std::nullopt});
    paths_.erase(path);
}

void Recovery::Put(Job job) {
    {
        const std::lock_guard lock(mutex_);
        jobs_[job.Path] = std::move(job);
    }
    changed_.notify_all();
}

void Recovery::Flush() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return jobs_.empty() && !isBusy_; });
}

void Recovery::Work() {
    std::unique_lock lock(mutex_);
    while (true) {
        changed_.wait(lock, [this] { return !jobs_.empty() || isEnding_; });
        if (jobs_.empty()) return;
        const Job job = std::move(jobs_.begin()->second);
        jobs_.erase(jobs_.begin());
        isBusy_ = true;
        lock.unlock();
        Do(job);
        lock.lock();
        isBusy_ = false;
        changed_.notify_all();
    }
}

void Recovery::Do(const Job& job) {
    try {
        if (job.Copy) {
            files_.MakeDirectory(folder_);
            files_.WriteFile(job.Path, Encode(*job.Copy));
        } else {
            files_.DeleteFile(job.Path);
        }
    } catch (const std::exception&) {
        // Given up in silence, as told above.
    }
}

}  // namespace editor
