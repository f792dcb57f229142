#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace platform::qt {

using RegistryValue = std::variant<std::string, std::uint32_t>;

// The text of a settings file:
//
//     ; a comment
//     [Software\Brennick Labs\Korvane\5.0\Settings]
//     @class="Korvane"
//     MainLeft=number:1000
//     EFontName="Courier New"
//
// Numbers are written signed; texts know the escapes \\ \" \n \r \t \xHH. Keys and names are found without
// regard to case. Lines that are none of these, or are damaged, count as absent and stay where they are.
class RegistryText {
  public:
    explicit RegistryText(std::string_view bytes = {});

    bool HasKey(std::string_view key) const { return FindKey(key) != nullptr; }
    void AddKey(std::string_view key, std::string_view className);
    const RegistryValue* Find(std::string_view key, std::string_view name) const;
    void Set(std::string_view key, std::string_view name, RegistryValue value);  // of a key that is there

    std::string Bytes() const;

    // Whether the text can stand as a key or as a name in the file.
    static bool IsKey(std::string_view text);
    static bool IsName(std::string_view text);

  private:
    struct Line {
        std::string Raw;
        std::string Name = {};  // empty: no value line
        std::optional<RegistryValue> Value = {};
    };
    struct Section {
        std::string Key;  // empty: what stands ahead of the first key
        std::vector<Line> Lines = {};
    };

    const Section* FindKey(std::string_view key) const;
    static Line ParseLine(std::string_view raw);
    static Line MakeLine(std::string_view name, RegistryValue value);

    std::vector<Section> sections_;
};

}  // namespace platform::qt
