#pragma once

#include <condition_variable>
#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "platform/FileSystem.h"

namespace editor {

// An unsaved text as it stood.
struct RecoveryCopy {
    std::string Caption;
    std::string FileName;
    std::string Text;
    bool Unread = false;  // session::Document's: the file is another text, to be replaced only when asked
};

// A copy that an earlier run left.
struct FoundCopy {
    std::string Path;
    RecoveryCopy Copy;
};

// Copies of unsaved texts in a folder of the user's, one file a document, written by a thread of its own so
// that nobody waits for the disk. After a normal end none is left; what a next start finds was never saved.
// What can't be written is kept for another try.
class Recovery {
  public:
    // `folder` is a logic path with final backslash. It is made when the first copy is written. `files` has
    // to bear calls from two threads.
    Recovery(platform::FileSystem& files, std::string folder);
    ~Recovery();  // waits for the writer; leaves the files
    Recovery(const Recovery&) = delete;
    Recovery& operator=(const Recovery&) = delete;

    // The copies of an earlier run, in the order of their names; to be called before the first Keep. What a
    // crash cut while it was written is no copy: it goes to the trash, if it is empty for good.
    std::vector<FoundCopy> Find();
    // The found copy is the document's from now on: it stays until a newer one has taken its place.
    void Adopt(const void* document, const std::string& path) { paths_[document] = path; }
    // The found copy goes to the trash; it stays where there is none.
    void Refuse(const std::string& path);

    // Hands a copy to the writer, in the place of an earlier one of the same document.
    void Keep(const void* document, RecoveryCopy copy);
    // The document was saved, or closed on purpose: its copy goes.
    void Forget(const void* document);
    // Hands over again what could not be done.
    void Retry();
    // Waits until all that was handed over was tried.
    void Flush();
    // Why the copy of some document is not on disk, as far as it was tried; empty if none is missing.
    std::string Failure();

    static std::string Encode(const RecoveryCopy& copy);
    static std::optional<RecoveryCopy> Decode(std::string_view bytes);

  private:
    struct Job {
        std::string Path;
        std::optional<RecoveryCopy> Copy;  // none: remove the file
    };

    std::string PathOf(const void* document);
    void Put(Job job);
    void Work();
    std::string Do(const Job& job);
    void Note(Job job, std::string why);
    void ClearAway(const std::string& path, bool isEmpty);

    platform::FileSystem& files_;
    std::string folder_;
    std::map<const void*, std::string> paths_;
    std::uint64_t nextNumber_ = 1;

    std::mutex mutex_;
    std::condition_variable changed_;
    std::map<std::string, Job> jobs_;  // by path: the newest wins
    struct Failed {
        bool IsCopy = false;
        std::string Why;
        std::optional<Job> Again;  // none while it is tried again, or a newer job for the path
    };
    std::map<std::string, Failed> failed_;  // by path, until one went well
    bool isBusy_ = false;
    bool isEnding_ = false;
    std::thread writer_;
};

}  // namespace editor
