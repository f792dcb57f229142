#include "shell/Settings.h"

#include <algorithm>
#include <limits>
#include <type_traits>

#include "base/Number.h"
#include "base/Text.h"
#include "shell/SettingsTable.h"
#include "shell/StartUp.h"

namespace shell {
namespace {

using platform::Registry;
using session::Session;

constexpr const char* noKorvaneKey = "Unable to create registration database entries for Korvane!";
constexpr std::size_t writeLimit = 256;  // bytes of a text: the buffer of 257 without the final NUL
constexpr std::size_t readLimit = 254;   // of the 255 that are read, likewise

bool IsContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

// The head of a text that fits the buffer, never with half a UTF-8 character at its end.
std::string CutText(std::string_view text, std::size_t limit) {
    text = text.substr(0, text.find('\0'));
    if (text.size() <= limit) return std::string(text);
    std::size_t end = limit;
    while (end > limit - 3 && IsContinuation(text[end])) --end;
    return std::string(text.substr(0, IsContinuation(text[end]) ? limit : end));
}

// A length far outside every screen is stored as the nearest number that can be.
std::int32_t WholeTwips(float twips) {
    constexpr double least = std::numeric_limits<std::int32_t>::min();
    constexpr double most = std::numeric_limits<std::int32_t>::max();
    return base::RoundToInt32(std::clamp(static_cast<double>(twips), least, most));
}

bool WriteNumber(Registry& store, Registry::Key key, std::string_view name, std::int32_t value) {
    return store.SetNumber(key, name, static_cast<std::uint32_t>(value));
}

void Write(Registry& store, Registry::Key key, const std::string& name, const Field& field) {
    std::visit(
        [&](auto place) {
            using P = decltype(place);
            if constexpr (std::is_same_v<P, std::monostate>) {
                WriteNumber(store, key, name, -1);
            } else if constexpr (std::is_same_v<P, std::string*>) {
                store.SetText(key, name, CutText(*place, writeLimit));
            } else if constexpr (std::is_same_v<P, bool*>) {
                WriteNumber(store, key, name, *place ? -1 : 0);
            } else if constexpr (std::is_same_v<P, float*>) {
                WriteNumber(store, key, name, WholeTwips(*place));
            } else {
                WriteNumber(store, key, name, *place);
            }
        },
        field);
}

bool Assign(const Field& field, const std::string& text) {
    *std::get<std::string*>(field) = text;
    return true;
}

// False if the number does not fit.
bool Assign(const Field& field, std::int32_t number) {
    if (const auto* truth = std::get_if<bool*>(&field)) {
        **truth = number != 0;
    } else if (const auto* small = std::get_if<std::int16_t*>(&field)) {
        if (number != static_cast<std::int16_t>(number)) return false;
        **small = static_cast<std::int16_t>(number);
    } else if (const auto* length = std::get_if<float*>(&field)) {
        **length = static_cast<float>(number);
    } else {
        *std::get<std::int32_t*>(field) = number;
    }
    return true;
}

bool HoldsText(const Field& field) { return std::holds_alternative<std::string*>(field); }

// False if there is no such value of the field's type and range.
bool Read(const Registry& store, Registry::Key key, const std::string& name, const Field& field) {
    if (HoldsText(field)) {
        const auto text = store.QueryText(key, name);
        return text && Assign(field, CutText(*text, readLimit));
    }
    const auto number = store.QueryNumber(key, name);
    return number && Assign(field, static_cast<std::int32_t>(*number));
}

std::string ProgramFolder(const Session& state) {
    const std::string& folder = state.ProgramDir;
    return folder.ends_with('\\') ? folder.substr(0, folder.size() - 1) : folder;
}

void TakeDefault(Session& state, const Field& field, const Default& value) {
    switch (value.From) {
        case Source::Found:
            break;
        case Source::Misplaced:
            state.InstallRoot.clear();
            break;
        case Source::SharedDir:
            Assign(field, state.SharedDir + value.Text);
            break;
        case Source::ProgramDir:
            Assign(field, ProgramFolder(state));
            break;
        case Source::Given:
            if (HoldsText(field)) {
                Assign(field, std::string(value.Text));
            } else {
                Assign(field, value.Number);
            }
    }
}

// Calls visit(setting, its name, its place) for every value in the order of writing.
template <typename Visit>
void Walk(SettingsTarget target, Visit visit) {
    for (const SettingGroup& group : SettingsTable()) {
        for (int row = group.First; row <= group.Last; ++row) {
            for (const Setting& setting : group.Members) {
                visit(setting, base::ReplaceAll(setting.Name, "#", std::to_string(row)),
                      setting.Place(target, static_cast<std::size_t>(row)));
            }
        }
    }
}

void ReadValues(SettingsTarget target, const Registry& store, Registry::Key key) {
    Walk(target, [&](const Setting& setting, const std::string& name, const Field& field) {
        if (setting.How == Use::WrittenOnly || Read(store, key, name, field)) return;
        TakeDefault(target.State, field, setting.Absent);
    });
}

void TakeFirstRunValues(SettingsTarget target, const Registry& store, Registry::Key key) {
    Walk(target, [&](const Setting& setting, const std::string& name, const Field& field) {
        if (setting.How == Use::WrittenOnly) return;
        // The one value that Main has written already.
        if (setting.Absent.From == Source::Misplaced && Read(store, key, name, field)) return;
        TakeDefault(target.State, field, setting.FirstRun.value_or(setting.Absent));
    });
}

void SetDefaultFonts(Session& state, const platform::System& desktop) {
    std::string proportional = "MS Sans Serif";
    std::string fixed = proportional;
    for (const std::string& name : desktop.ScreenFonts()) {
        if (name == "Arial") proportional = name;
        if (name == "Courier New") fixed = name;
    }
    state.EditorFont.Name = fixed;
    state.MessageFont.Name = state.ProjectFont.Name = proportional;
    state.EditorFont.Size = state.MessageFont.Size = state.ProjectFont.Size = 8;
}

void RunFirst(Session& state, const platform::Host& host, MainWindowState& window) {
    // The handle stays open until the program ends.
    const auto key = host.Settings.Create(settingsKey, "Korvane");
    if (!key) return host.Boxes.Say(noKorvaneKey);
    TakeFirstRunValues({state, window.Place}, host.Settings, *key);
    SaveSettings(state, host, window);
}

}  // namespace

void LoadSettings(Session& state, const platform::Host& host, MainWindowState& window) {
    SetDefaultFonts(state, host.Desktop);
    Registry& store = host.Settings;
    auto key = store.Open(settingsKey, Registry::Access::Read);
    if (!key) key = store.Create(settingsKey, "Initialized");
    // Kept: this one message names the companion.
    if (!key) return host.Boxes.Say("Unable to create registration database entries for Stavrik!");

    const bool initialized = store.QueryNumber(*key, "Initialized").value_or(0) != 0;
    if (initialized) ReadValues({state, window.Place}, store, *key);
    store.Close(*key);
    if (!initialized) RunFirst(state, host, window);
}

void SaveSettings(Session& state, const platform::Host& host, const MainWindowState& window) {
    Registry& store = host.Settings;
    if (const auto key = store.Open(settingsKey, Registry::Access::Write)) {
        session::Placement place = window.Place;
        Walk({state, place}, [&](const Setting& setting, const std::string& name, const Field& field) {
            if (setting.How == Use::ReadOnly) return;
            const bool isPlace = std::holds_alternative<float*>(field);
            if (isPlace && (window.Minimized || window.Maximized)) return;
            Write(store, *key, name, field);
        });
        store.Flush(*key);
        store.Close(*key);
        return;
    }
    // Kept: a key that had to be made stays empty, so the next start is a first run.
    const auto made = store.Create(settingsKey, "Korvane");
    if (!made) return host.Boxes.Say(noKorvaneKey);
    store.Flush(*made);
    store.Close(*made);
}

void SaveToolPlacement(const platform::Host& host, const std::string& name, float top, float left,
                       float width, float height) {
    Registry& store = host.Settings;
    const std::string path = "Software\\Brennick Labs\\" + name + "\\1.0\\Settings";
    auto key = store.Open(path, Registry::Access::Write);
    if (!key) key = store.Create(path, name);
    if (!key) return host.Boxes.Say("Unable to create registration database entries for " + name);
    WriteNumber(store, *key, "MainLeft", WholeTwips(left));
    WriteNumber(store, *key, "MainTop", WholeTwips(top));
    WriteNumber(store, *key, "MainWidth", WholeTwips(width));
    WriteNumber(store, *key, "MainHeight", WholeTwips(height));
    store.Flush(*key);
    store.Close(*key);
}

}  // namespace shell
