#include "launcher/UserTree.h"

#include <fcntl.h>
#include <sys/file.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <filesystem>
#include <optional>
#include <thread>

#include "base/AtomicFile.h"
#include "base/RunTimeError.h"
#include "base/ScopeExit.h"
#include "launcher/TreeRecord.h"

namespace launcher {
namespace {

namespace fs = std::filesystem;

constexpr std::uint64_t largestCopy = 1 << 18;  // bytes: beyond, no user edits it
constexpr std::uint64_t largestFile = 1 << 26;
constexpr auto lockPatience = std::chrono::seconds(30);
constexpr auto lockPause = std::chrono::milliseconds(50);

// One file of the installation and what is to be done for it.
struct Task {
    std::string Path;  // below the installation
    fs::path Source;
    fs::path Target;
    Brought File;
    bool IsDue = false;  // else the record alone is renewed
};

struct Plan {
    TreeRecord Record;  // as it will be
    std::vector<Task> Tasks;
    std::vector<fs::path> Folders;   // that are missing, outer ones first
    std::vector<fs::path> Outdated;  // brought earlier, and no part of the installation any more
    Upkeep Result;
    bool IsEmpty = false;
};

std::string Bytes(const fs::path& path) { return base::ReadWhole(path.string(), largestFile); }

// Of what the user may have put in the place of a file: 0 for what is none of ours by its looks.
std::uint64_t DigestAt(const fs::path& path) {
    return fs::is_regular_file(path) && fs::file_size(path) <= largestFile ? DigestOf(Bytes(path)) : 0;
}

bool IsLink(const fs::path& path) { return fs::is_symlink(fs::symlink_status(path)); }

// Programs and libraries are linked whatever their size: some find their neighbours from their own place.
bool IsToBeLinked(const fs::path& source, std::uint64_t size) {
    if (size > largestCopy) return true;
    return Bytes(source).starts_with(
        "\x7f"
        "ELF");
}

class Planner {
  public:
    Planner(const Folders& folders, const TreeRecord& before) : folders_(folders), before_(before) {}

    Plan Make() {
        plan_.Record.Version = KORVANE_VERSION;
        plan_.Record.Installation = folders_.Installation;
        AddFolder(folders_.Tree);
        const fs::path root = folders_.Installation;
        for (auto entry = fs::recursive_directory_iterator(root); entry != fs::end(entry); ++entry) {
            const fs::path path = entry->path().lexically_relative(root);
            if (entry.depth() == 0 && path == "bin")
                entry.disable_recursion_pending();
            else if (entry->is_directory())
                AddFolder(TargetOf(path));
            else
                AddFile(path, *entry);
        }
        AddExamplesLink();
        FindOutdated();
        plan_.IsEmpty =
            plan_.Tasks.empty() && plan_.Folders.empty() && plan_.Outdated.empty() && plan_.Record == before_;
        return std::move(plan_);
    }

  private:
    // The examples lie in the user's documents; the tree has a link to that folder.
    fs::path TargetOf(const fs::path& path) const {
        const auto first = path.begin();
        if (*first != "Examples") return folders_.Tree / path;
        fs::path target = folders_.Examples;
        for (auto part = std::next(first); part != path.end(); ++part) target /= *part;
        return target;
    }

    void AddFolder(const fs::path& folder) {
        if (!fs::is_directory(folder)) plan_.Folders.push_back(folder);
    }

    void AddExamplesLink() {
        const fs::path link = fs::path(folders_.Tree) / "Examples";
        if (fs::is_directory(link)) return;
        plan_.Tasks.push_back({"", folders_.Examples, link, {.IsLink = true}, true});
    }

    void AddFile(const fs::path& path, const fs::directory_entry& entry) {
        Task task{path.string(), entry.path(), TargetOf(path), {}};
        task.File.Size = entry.file_size();
        task.File.Time = std::chrono::nanoseconds(entry.last_write_time().time_since_epoch()).count();
        const auto brought = before_.Files.find(task.Path);
        const Brought* earlier = brought == before_.Files.end() ? nullptr : &brought->second;
        const bool isKnown =
            earlier != nullptr && earlier->Size == task.File.Size && earlier->Time == task.File.Time;
        task.File.IsLink = isKnown ? earlier->IsLink : IsToBeLinked(entry.path(), task.File.Size);
        if (isKnown)
            task.File.Digest = earlier->Digest;
        else if (!task.File.IsLink)
            task.File.Digest = DigestOf(Bytes(entry.path()));
        if (IsUsers(task, earlier, isKnown)) PutBeside(task, isKnown);
        plan_.Record.Files[path.string()] = task.File;
        if (task.IsDue) plan_.Tasks.push_back(std::move(task));
    }

    // Decides what is due; true if the user has a file of his own there.
    bool IsUsers(Task& task, const Brought* earlier, bool isKnown) const {
        if (!fs::exists(task.Target)) {  // nor what a link there leads to
            task.IsDue = true;
            return false;
        }
        if (IsLink(task.Target) && IsOurLink(task)) return false;
        if (task.File.IsLink) {
            // A copy of an earlier version became a link.
            task.IsDue = earlier != nullptr && !earlier->IsLink && !IsLink(task.Target) &&
                         DigestAt(task.Target) == earlier->Digest;
            return !task.IsDue;
        }
        if (isKnown) return false;  // changed or not, there is nothing new to bring
        const std::uint64_t found = DigestAt(task.Target);
        task.IsDue = found != task.File.Digest && earlier != nullptr && found == earlier->Digest;
        return found != task.File.Digest && !task.IsDue;
    }

    // A link into an installation; one into an earlier installation is renewed.
    bool IsOurLink(Task& task) const {
        const fs::path to = fs::read_symlink(task.Target);
        const bool isEarlier =
            !before_.Installation.empty() && to == before_.Installation / fs::path(task.Path);
        task.IsDue = task.File.IsLink ? isEarlier && to != task.Source : isEarlier || to == task.Source;
        return to == task.Source || isEarlier;
    }

    void PutBeside(Task& task, bool isKnown) {
        if (isKnown) return;  // it has been, and the user may have thrown it away
        task.IsDue = true;
        plan_.Result.Beside.push_back(task.Target.string());
        task.Target += ".new";
    }

    void FindOutdated() {
        for (const auto& [path, file] : before_.Files) {
            if (plan_.Record.Files.contains(path)) continue;
            const fs::path target = TargetOf(path);
            const bool isAsBrought = file.IsLink ? IsLink(target) && fs::read_symlink(target) ==
                                                                         before_.Installation / fs::path(path)
                                                 : !IsLink(target) && DigestAt(target) == file.Digest;
            if (isAsBrought) plan_.Outdated.push_back(target);
        }
    }

    const Folders& folders_;
    const TreeRecord& before_;
    Plan plan_;
};

// Everything is on the disk before the first file takes its place, so that a full home shows in time.
class Worker {
  public:
    explicit Worker(const fs::path& tree) : tree_(tree), incoming_(tree / ".incoming") {}

    void Do(const Plan& plan) {
        base::ScopeExit undo([this] { Undo(); });
        for (const fs::path& folder : plan.Folders) MakeFolder(folder);
        fs::remove_all(incoming_);  // of a start that was cut short
        fs::create_directory(incoming_);
        for (std::size_t i = 0; i < plan.Tasks.size(); ++i) Stage(plan.Tasks[i], Staged(i));
        const std::string record = WriteRecord(plan.Record);
        base::AtomicFile file((tree_ / ".installed").string());
        file.Write(record);
        undo.Cancel();
        const base::ScopeExit clear([this] { fs::remove_all(incoming_); });
        for (std::size_t i = 0; i < plan.Tasks.size(); ++i) Place(Staged(i), plan.Tasks[i]);
        for (const fs::path& path : plan.Outdated) fs::remove(path);
        file.Commit(base::AtomicFile::Durability::Quick);
    }

  private:
    fs::path Staged(std::size_t i) const { return incoming_ / std::to_string(i); }

    void MakeFolder(const fs::path& folder) {
        for (fs::path missing = folder; !missing.empty() && !fs::exists(missing);
             missing = missing.parent_path())
            made_.push_back(missing);
        fs::create_directories(folder);
    }

    void Undo() {
        std::error_code error;
        fs::remove_all(incoming_, error);
        std::sort(made_.begin(), made_.end());
        for (auto folder = made_.rbegin(); folder != made_.rend(); ++folder) fs::remove(*folder, error);
    }

    static void Stage(const Task& task, const fs::path& staged) {
        if (task.File.IsLink) return fs::create_symlink(task.Source, staged);
        Write(staged, Bytes(task.Source));
        fs::permissions(staged, fs::status(task.Source).permissions() | fs::perms::owner_write);
        fs::last_write_time(staged, fs::last_write_time(task.Source));
    }

    // The documents may lie on another disk.
    static void Place(const fs::path& staged, const Task& task) {
        std::error_code error;
        fs::rename(staged, task.Target, error);
        if (error != std::errc::cross_device_link) {
            if (error) throw fs::filesystem_error("rename", task.Target, error);
            return;
        }
        Write(task.Target, Bytes(staged));
    }

    static void Write(const fs::path& path, const std::string& bytes) {
        base::AtomicFile file(path.string());
        file.Write(bytes);
        file.Commit(base::AtomicFile::Durability::Quick);
    }

    const fs::path tree_;
    const fs::path incoming_;
    std::vector<fs::path> made_;
};

TreeRecord RecordOf(const fs::path& tree) {
    std::error_code error;
    const fs::path file = tree / ".installed";
    return fs::exists(file, error) ? ReadRecord(Bytes(file)) : TreeRecord{};
}

// Held by one start at a time, beside the tree. A file system that knows no locks goes without.
class Lock {
  public:
    explicit Lock(const fs::path& tree) {
        const std::string name = (tree.parent_path() / ".korvane.lock").string();
        file_.Reset(::open(name.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
        if (file_.Get() < 0) throw fs::filesystem_error("lock", name, {errno, std::generic_category()});
        const auto end = std::chrono::steady_clock::now() + lockPatience;
        while (::flock(file_.Get(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
            if (std::chrono::steady_clock::now() > end)
                throw TreeError("Another start of Korvane is still busy with " + tree.string() + ".");
            std::this_thread::sleep_for(lockPause);
        }
    }

  private:
    base::Descriptor file_;
};

std::string Sentence(const fs::path& tree, const std::error_code& code, const std::string& what) {
    if (code == std::errc::no_space_on_device || code.value() == EDQUOT || code.value() == EFBIG)
        return "There is not enough room for your files of Korvane in " + tree.string() + ".";
    if (code == std::errc::read_only_file_system || code == std::errc::permission_denied)
        return "Your files of Korvane belong into " + tree.string() + ", but nothing can be written there.";
    return "Your files of Korvane can't be brought to " + tree.string() + ": " + what + ".";
}

std::error_code CodeOf(const base::RunTimeError& error) {
    const bool isFull = error.Number() == base::errDiskFull;
    return std::make_error_code(isFull ? std::errc::no_space_on_device : std::errc::permission_denied);
}

Upkeep Work(const Folders& folders) {
    TreeRecord before = RecordOf(folders.Tree);
    if (IsNewer(before.Version, KORVANE_VERSION)) return {.IsOfNewerVersion = true, .Beside = {}};
    if (!before.Version.empty() && Planner(folders, before).Make().IsEmpty) return {};
    fs::create_directories(fs::path(folders.Tree).parent_path());
    const Lock lock(folders.Tree);
    before = RecordOf(folders.Tree);  // another start may have done it
    Plan plan = Planner(folders, before).Make();
    if (!plan.IsEmpty) Worker(folders.Tree).Do(plan);
    return std::move(plan.Result);
}

}  // namespace

Upkeep KeepUp(const Folders& folders) {
    std::string sentence;
    try {
        return Work(folders);
    } catch (const fs::filesystem_error& error) {
        const std::string what = error.code().message() + " (" + error.path1().string() + ")";
        sentence = Sentence(folders.Tree, error.code(), what);
    } catch (const base::RunTimeError& error) {
        sentence = Sentence(folders.Tree, CodeOf(error), error.what());
    }
    std::error_code none;
    TreeError error(sentence);
    error.HasTree =
        fs::exists(fs::path(folders.Tree) / ".installed", none) && fs::exists(folders.Program(), none);
    throw error;
}

}  // namespace launcher
