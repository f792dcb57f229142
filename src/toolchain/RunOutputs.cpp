#include "toolchain/RunOutputs.h"

#include <locale>
#include <sstream>

#include "base/RunTimeError.h"
#include "base/Text.h"

namespace toolchain {
namespace {

constexpr std::size_t mostFiles = 5000;  // of all designs; then the record starts anew

}  // namespace

RunOutputs::Stamps RunOutputs::StampsOf(const std::string& design) const {
    Stamps stamps;
    const std::string folder = design.substr(0, design.rfind('\\') + 1);
    for (const std::string& name : files_.List(design + ".*")) {
        if (const auto stamp = files_.Stamp(folder + name)) stamps[base::Upper(folder + name)] = *stamp;
    }
    return stamps;
}

void RunOutputs::End(const std::string& design) {
    Load();
    Stamps now = StampsOf(design);
    std::erase_if(now, [&](const auto& file) {
        const auto old = before_.find(file.first);
        const auto known = written_.find(file.first);
        const bool isNew = old == before_.end() || old->second != file.second;
        return !isNew && (known == written_.end() || known->second != file.second);
    });
    const std::string head = base::Upper(design) + ".";
    std::erase_if(written_, [&](const auto& file) { return file.first.starts_with(head); });
    if (written_.size() > mostFiles) written_.clear();
    written_.merge(now);
    Save();
}

bool RunOutputs::Wrote(const std::string& path) {
    Load();
    const auto file = written_.find(base::Upper(path));
    return file != written_.end() && files_.Stamp(path) == file->second;
}

// One line a file: size, time, path.
void RunOutputs::Load() {
    if (isLoaded_ || file_.empty()) return;
    isLoaded_ = true;
    try {
        std::istringstream lines(files_.ReadFile(file_));
        lines.imbue(std::locale::classic());
        platform::FileStamp stamp;
        for (std::string path;
             lines >> stamp.Size >> stamp.Modified && lines.get() == ' ' && std::getline(lines, path);)
            written_[path] = stamp;
    } catch (const base::RunTimeError&) {
        // Told in the header.
    }
}

void RunOutputs::Save() const {
    if (file_.empty()) return;
    std::string text;
    for (const auto& [path, stamp] : written_) {
        if (path.find('\n') != path.npos) continue;
        text += std::to_string(stamp.Size) + " " + std::to_string(stamp.Modified) + " " + path + "\n";
    }
    try {
        files_.MakeDirectory(file_.substr(0, file_.rfind('\\')));
        files_.WriteFile(file_, text);
    } catch (const base::RunTimeError&) {
        // Told in the header.
    }
}

}  // namespace toolchain
