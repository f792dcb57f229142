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
};

// Copies of unsaved texts in a folder of the user's, one file a document, written by a thread of its own so
// that nobody waits for the disk. After a normal end none is left; what a next start finds was never saved.
// A copy that can't be written is given up in silence: the text itself is still in its window.
class Recovery {
  public:
    // `folder` is a logic path with final backslash. It is made when the first copy is written.
    Recovery(platform::FileSystem& files, std::string folder);
    ~Recovery();  // waits for the writer; leaves the files
    Recovery(const Recovery&) = delete;
    Recovery& operator=(const Recovery&) = delete;

    // The copies of an earlier run, in the order of their names. Damaged files are passed over and stay.
    std::vector<RecoveryCopy> Find() const;
    // Removes the copies that Find gives, and any that were cut while being written.
    void RemoveFound();

    // Hands a copy to the writer, in the place of an earlier one of the same document.
    void Keep(const void* document, RecoveryCopy copy);
    // The document was saved, or closed on purpose: its copy goes.
    void Forget(const void* document);
    // Waits until all that was handed over is on disk.
    void Flush();

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
    void Do(const Job& job);

    platform::FileSystem& files_;
    std::string folder_;
    std::map<const void*, std::string> paths_;
    std::uint64_t nextNumber_ = 1;

    std::mutex mutex_;
    std::condition_variable changed_;
    std::map<std::string, Job> jobs_;  // by path: the newest wins
    bool isBusy_ = false;
    bool isEnding_ = false;
    std::thread writer_;
};

}  // namespace editor
