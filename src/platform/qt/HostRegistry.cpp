#include "platform/qt/HostRegistry.h"

#include <QStandardPaths>
#include <cerrno>
#include <filesystem>

#include "base/AtomicFile.h"
#include "base/RunTimeError.h"

namespace platform::qt {
namespace {

constexpr std::size_t MaxTextLength = 1 << 16;  // bytes of one value

}  // namespace

HostRegistry::HostRegistry(std::string hostPath) : path_(std::move(hostPath)) {}

HostRegistry::~HostRegistry() { Save(); }

std::string HostRegistry::DefaultPath() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation).toStdString() +
           "/korvane/settings.ini";
}

bool HostRegistry::Load() {
    if (changed_) return true;
    readable_ = true;
    try {
        struct stat status {};
        const bool missing = ::stat(path_.c_str(), &status) != 0 && errno == ENOENT;
        text_ = RegistryText(missing ? "" : base::ReadWhole(path_, MaxSize));
    } catch (const base::RunTimeError&) {
        readable_ = false;
    }
    return readable_;
}

bool HostRegistry::Save() {
    if (!changed_) return true;
    try {
        const std::string bytes = text_.Bytes();
        if (bytes.size() > MaxSize) return false;
        std::error_code ignored;  // the file's own error tells
        std::filesystem::create_directories(std::filesystem::path(path_).parent_path(), ignored);
        base::AtomicFile file(path_);
        file.Write(bytes);
        file.Commit(base::AtomicFile::Durability::Quick);  // the start of the program waits for this
        changed_ = false;
        return true;
    } catch (const base::RunTimeError&) {
        return false;
    }
}

bool HostRegistry::CanWrite() const {
    try {
        return base::CanReplace(path_);
    } catch (const base::RunTimeError&) {
        return false;
    }
}

Registry::Key HostRegistry::Hand(std::string_view key, Access access) {
    open_[next_] = {std::string(key), access};
    return next_++;
}

std::optional<Registry::Key> HostRegistry::Open(std::string_view key, Access access) {
    if (!Load() || !text_.HasKey(key)) return std::nullopt;
    if (access == Access::Write && !CanWrite()) return std::nullopt;
    return Hand(key, access);
}

std::optional<Registry::Key> HostRegistry::Create(std::string_view key, std::string_view className) {
    if (!RegistryText::IsKey(key) || !Load() || !CanWrite()) return std::nullopt;
    if (!text_.HasKey(key)) {
        text_.AddKey(key, className);
        changed_ = true;
    }
    return Hand(key, Access::Write);
}

const RegistryValue* HostRegistry::Find(Key key, std::string_view name) const {
    const auto found = open_.find(key);
    return found == open_.end() || name.empty() ? nullptr : text_.Find(found->second.Path, name);
}

std::optional<std::string> HostRegistry::QueryText(Key key, std::string_view name) const {
    const auto* value = Find(key, name);
    const auto* text = value == nullptr ? nullptr : std::get_if<std::string>(value);
    return text == nullptr ? std::nullopt : std::optional(*text);
}

std::optional<std::uint32_t> HostRegistry::QueryNumber(Key key, std::string_view name) const {
    const auto* value = Find(key, name);
    const auto* number = value == nullptr ? nullptr : std::get_if<std::uint32_t>(value);
    return number == nullptr ? std::nullopt : std::optional(*number);
}

bool HostRegistry::Set(Key key, std::string_view name, RegistryValue value) {
    const auto found = open_.find(key);
    if (found == open_.end() || found->second.Allowed != Access::Write || !readable_ ||
        !RegistryText::IsName(name))
        return false;
    const std::string& path = found->second.Path;
    const auto* old = text_.Find(path, name);
    if (old != nullptr && *old == value) return true;
    if (!text_.HasKey(path)) text_.AddKey(path, "");  // taken out of the file while it was open
    text_.Set(path, name, std::move(value));
    changed_ = true;
    return true;
}

bool HostRegistry::SetText(Key key, std::string_view name, std::string_view value) {
    return value.size() <= MaxTextLength && Set(key, name, std::string(value));
}

bool HostRegistry::SetNumber(Key key, std::string_view name, std::uint32_t value) {
    return Set(key, name, value);
}

bool HostRegistry::Flush(Key key) { return open_.contains(key) && Save(); }

void HostRegistry::Close(Key key) {
    if (open_.erase(key) > 0) Save();
}

}  // namespace platform::qt
