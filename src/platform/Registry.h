#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

// The per-user store of typed values, in keys such as Software\Brennick Labs\Korvane\5.0\Settings.
// No operation throws; a store that can't be read or written answers with nothing or false.
class Registry {
  public:
    enum class Access { Read, Write };
    using Key = int;

    virtual ~Registry() = default;

    virtual std::optional<Key> Open(std::string_view key, Access access) = 0;  // none if there is no such key
    virtual std::optional<Key> Create(std::string_view key,
                                      std::string_view className) = 0;  // opens or makes it
    virtual std::optional<std::string> QueryText(Key key, std::string_view name) const = 0;
    virtual std::optional<std::uint32_t> QueryNumber(Key key, std::string_view name) const = 0;
    virtual bool SetText(Key key, std::string_view name, std::string_view value) = 0;
    virtual bool SetNumber(Key key, std::string_view name, std::uint32_t value) = 0;
    virtual bool Flush(Key key) = 0;  // false if the store could not be written; what was there stays
    virtual void Close(Key key) = 0;
};

}  // namespace platform
