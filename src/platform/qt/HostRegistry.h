#pragma once

#include <map>
#include <string>

#include "platform/Registry.h"
#include "platform/qt/HostRegistryText.h"

namespace platform::qt {

// The settings in one file of the user's configuration folder. It is read anew when a key is opened and
// nothing is unwritten, and written as a whole by Flush, Close and the end of this object. A file that can't
// be read, or is larger than MaxSize, is left alone: no key opens. One that can't be written opens for
// reading only.
class HostRegistry : public Registry {
  public:
    static constexpr std::uint64_t MaxSize = 1 << 24;  // bytes

    explicit HostRegistry(std::string hostPath = DefaultPath());
    ~HostRegistry() override;
    HostRegistry(const HostRegistry&) = delete;
    HostRegistry& operator=(const HostRegistry&) = delete;

    static std::string DefaultPath();  // $XDG_CONFIG_HOME/korvane/settings.ini

    std::optional<Key> Open(std::string_view key, Access access) override;
    std::optional<Key> Create(std::string_view key, std::string_view className) override;
    std::optional<std::string> QueryText(Key key, std::string_view name) const override;
    std::optional<std::uint32_t> QueryNumber(Key key, std::string_view name) const override;
    bool SetText(Key key, std::string_view name, std::string_view value) override;
    bool SetNumber(Key key, std::string_view name, std::uint32_t value) override;
    bool Flush(Key key) override;
    void Close(Key key) override;

  private:
    struct OpenKey {
        std::string Path;
        Access Allowed;
    };

    bool Load();
    bool Save();
    bool CanWrite() const;
    Key Hand(std::string_view key, Access access);
    const RegistryValue* Find(Key key, std::string_view name) const;
    bool Set(Key key, std::string_view name, RegistryValue value);

    std::string path_;
    RegistryText text_;
    bool changed_ = false;
    bool readable_ = false;  // what cannot be read is not written over
    std::map<Key, OpenKey> open_;
    Key next_ = 1;
};

}  // namespace platform::qt
