#include "editor/Recovery.h"

#include <algorithm>
#include <charconv>

#include "base/RunTimeError.h"

namespace editor {
namespace {

constexpr std::string_view mark = "KORVANE RECOVERY 1\n";
constexpr std::string_view unreadMark = "KORVANE RECOVERY 1 UNREAD\n";
constexpr std::string_view ending = ".copy";

// A number and the line end behind it, taken off the head of `bytes`.
std::optional<std::size_t> TakeLength(std::string_view& bytes) {
    std::size_t value = 0;
    const auto result = std::from_chars(bytes.data(), bytes.data() + bytes.size(), value);
    if (result.ec != std::errc() || result.ptr == bytes.data() + bytes.size() || *result.ptr != '\n')
        return {};
    bytes.remove_prefix(static_cast<std::size_t>(result.ptr - bytes.data()) + 1);
    return value;
}

}  // namespace

std::string Recovery::Encode(const RecoveryCopy& copy) {
    std::string bytes(copy.Unread ? unreadMark : mark);
    for (const std::string* part : {&copy.Caption, &copy.FileName, &copy.Text}) {
        bytes += std::to_string(part->size()) + "\n" + *part;
    }
    return bytes;
}

std::optional<RecoveryCopy> Recovery::Decode(std::string_view bytes) {
    RecoveryCopy copy;
    copy.Unread = bytes.starts_with(unreadMark);
    if (!copy.Unread && !bytes.starts_with(mark)) return std::nullopt;
    bytes.remove_prefix(copy.Unread ? unreadMark.size() : mark.size());
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
    for (const std::string& name : files_.List(folder_ + "*" + std::string(ending))) {
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

std::vector<FoundCopy> Recovery::Find() {
    std::vector<std::string> names = files_.List(folder_ + "*");
    std::sort(names.begin(), names.end());
    std::vector<FoundCopy> found;
    for (const std::string& name : names) {
        try {
            const std::string bytes = files_.ReadFile(folder_ + name);
            auto copy = name.ends_with(ending) ? Decode(bytes) : std::nullopt;
            if (copy) {
                found.push_back({folder_ + name, std::move(*copy)});
            } else {
                ClearAway(folder_ + name, bytes.empty());
            }
        } catch (const base::RunTimeError&) {
            // Unreadable today, perhaps not tomorrow.
        }
    }
    return found;
}

void Recovery::ClearAway(const std::string& path, bool isEmpty) {
    try {
        isEmpty ? files_.DeleteFile(path) : files_.TrashFile(path);
    } catch (const base::RunTimeError&) {
        // Stays: the next start tries again.
    }
}

void Recovery::Refuse(const std::string& path) { ClearAway(path, false); }

std::string Recovery::PathOf(const void* document) {
    std::string& path = paths_[document];
    if (path.empty()) {
        std::string number = std::to_string(nextNumber_++);
        path = folder_ + std::string(8 - std::min<std::size_t>(8, number.size()), '0') + number +
               std::string(ending);
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
        if (const auto failed = failed_.find(job.Path); failed != failed_.end()) failed->second.Again.reset();
        jobs_[job.Path] = std::move(job);
    }
    changed_.notify_all();
}

void Recovery::Retry() {
    {
        const std::lock_guard lock(mutex_);
        for (auto& [path, failed] : failed_) {
            if (failed.Again) jobs_[path] = std::move(*failed.Again);
            failed.Again.reset();
        }
    }
    changed_.notify_all();
}

void Recovery::Flush() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return jobs_.empty() && !isBusy_; });
}

std::string Recovery::Failure() {
    const std::lock_guard lock(mutex_);
    for (const auto& [path, failed] : failed_) {
        if (failed.IsCopy) return failed.Why;
    }
    return {};
}

void Recovery::Work() {
    std::unique_lock lock(mutex_);
    while (true) {
        changed_.wait(lock, [this] { return !jobs_.empty() || isEnding_; });
        if (jobs_.empty()) return;
        Job job = std::move(jobs_.begin()->second);
        jobs_.erase(jobs_.begin());
        isBusy_ = true;
        lock.unlock();
        std::string why = Do(job);
        lock.lock();
        isBusy_ = false;
        Note(std::move(job), std::move(why));
        changed_.notify_all();
    }
}

void Recovery::Note(Job job, std::string why) {
    const std::string path = job.Path;
    failed_.erase(path);
    if (why.empty()) return;
    Failed& failed = failed_[path];
    failed.IsCopy = job.Copy.has_value();
    failed.Why = std::move(why);
    if (!jobs_.contains(path)) failed.Again = std::move(job);  // what was handed over meanwhile is newer
}

// Empty if done, else why not.
std::string Recovery::Do(const Job& job) {
    try {
        if (job.Copy) {
            files_.MakeDirectory(folder_);
            files_.WriteFile(job.Path, Encode(*job.Copy));
        } else if (files_.FileExists(job.Path)) {
            files_.DeleteFile(job.Path);
        }
        return {};
    } catch (const std::exception& error) {
        return error.what();
    }
}

}  // namespace editor
