#include "front/Run.h"

namespace front {

void Run::Write(const std::string& path, std::string_view text) {
    Said.Info(FileName(path));
    if (WriteUnnoted(path, text)) Written.emplace_back(FileName(path));
}

bool Run::WriteUnnoted(const std::string& path, std::string_view text) {
    const std::string failure = Disk.Write(path, text);
    if (!failure.empty()) Said.Add(Code::CannotWrite, {}, std::string(FileName(path)) + ": " + failure);
    return failure.empty();
}

}  // namespace front
