#include "front/Run.h"

namespace front {

void Run::Write(const std::string& path, std::string_view text) {
    Said.Info(FileName(path));
    if (Disk.Write(path, text))
        Written.emplace_back(FileName(path));
    else
        Said.Add(Code::CannotWrite, {}, path);
}

}  // namespace front
