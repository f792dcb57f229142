#include "shell/SettingsTable.h"

namespace shell {
namespace {

using T = SettingsTarget;
using N = std::size_t;

constexpr Default trueValue{.Number = -1};
constexpr Default found{.From = Source::Found};

constexpr Default Shared(const char* text) { return {.Text = text, .From = Source::SharedDir}; }

const Setting singles[] = {
    {"MainLeft", [](T t, N) -> Field { return &t.Main.Left; }, {1000}},
    {"MainTop", [](T t, N) -> Field { return &t.Main.Top; }, {1000}},
    {"MainWidth", [](T t, N) -> Field { return &t.Main.Width; }, {6500}},
    {"MainHeight", [](T t, N) -> Field { return &t.Main.Height; }, {6500}},
    {"EFontName", [](T t, N) -> Field { return &t.State.EditorFont.Name; }, found},
    {"EFontSize", [](T t, N) -> Field { return &t.State.EditorFont.Size; }, {8}},
    {"EFontBold", [](T t, N) -> Field { return &t.State.EditorFont.Bold; }},
    {"EFontItalic", [](T t, N) -> Field { return &t.State.EditorFont.Italic; }},
    {"MFontName", [](T t, N) -> Field { return &t.State.MessageFont.Name; }, found},
    {"MFontSize", [](T t, N) -> Field { return &t.State.MessageFont.Size; }, {8}},
    {"MFontBold", [](T t, N) -> Field { return &t.State.MessageFont.Bold; }},
    {"MFontItalic", [](T t, N) -> Field { return &t.State.MessageFont.Italic; }},
    {"PFontName", [](T t, N) -> Field { return &t.State.ProjectFont.Name; }, found},
    {"PFontSize", [](T t, N) -> Field { return &t.State.ProjectFont.Size; }, {8}},
    {"PFontBold", [](T t, N) -> Field { return &t.State.ProjectFont.Bold; }},
    // Kept: written under one name and read under another, so this font is never italic after a start.
    {"PFontItalic", [](T t, N) -> Field { return &t.State.ProjectFont.Italic; }, {}, {}, Use::WrittenOnly},
    {"MPontItalic", [](T t, N) -> Field { return &t.State.ProjectFont.Italic; }, {}, {}, Use::ReadOnly},
    // Kept: the text colour starts black in every run.
    {"ForeColor", [](T t, N) -> Field { return &t.State.EditorFont.ForeColor; }, {}, {}, Use::WrittenOnly},
    // Kept: the two defaults of both paths differ, in the doubled backslash and in the case of a name.
    {"LibraryName", [](T t, N) -> Field { return &t.State.LibraryName; }, Shared("\\tesk.dl"),
     Shared("tesk.dl")},
    {"DeviceCatalog", [](T t, N) -> Field { return &t.State.DeviceCatalog; }, Shared("\\Device.cat"),
     Shared("device.cat")},
    {"WorkDir", [](T t, N) -> Field { return &t.State.WorkDir; }, {.From = Source::ProgramDir}},
    {"Schematic", [](T t, N) -> Field { return &t.State.SchematicTool; }, {.Text = "Protel For Windows"}},
    {"Syntax", [](T t, N) -> Field { return &t.State.HighlightEnabled; }, trueValue},
    {"AutoArrange", [](T t, N) -> Field { return &t.State.AutoArrange; }, trueValue},
    {"AutoSymbolUpdate", [](T t, N) -> Field { return &t.State.AutoSymbolUpdate; }},
    {"Initialized", [](T, N) -> Field { return {}; }, {}, {}, Use::WrittenOnly},  // read before all others
};

const Setting stdUtilRow[] = {
    {"StdUtil#M", [](T t, N n) -> Field { return &t.State.StdUtils[n].Menu; }},
    {"StdUtil#T", [](T t, N n) -> Field { return &t.State.StdUtils[n].Toolbar; }},
};

const Setting custUtilRow[] = {
    {"CustUtil#P", [](T t, N n) -> Field { return &t.State.CustUtils[n].Program; }},
    {"CustUtil#N", [](T t, N n) -> Field { return &t.State.CustUtils[n].Name; }},
    {"CustUtil#M", [](T t, N n) -> Field { return &t.State.CustUtils[n].Menu; }},
    {"CustUtil#T", [](T t, N n) -> Field { return &t.State.CustUtils[n].Toolbar; }},
};

const Setting lastPathway[] = {
    // Kept: Main has just written it; if that failed, InstallRoot takes the damage and LastPath stays.
    {"LastPathway", [](T t, N) -> Field { return &t.State.LastPath; }, {.From = Source::Misplaced}},
};

const Setting mruRow[] = {
    {"MRU#", [](T t, N n) -> Field { return &t.State.RecentFiles[n - 1]; }},
};

const SettingGroup table[] = {
    {0, 0, singles}, {0, 6, stdUtilRow}, {0, 5, custUtilRow}, {0, 0, lastPathway}, {1, 6, mruRow},
};

}  // namespace

std::span<const SettingGroup> SettingsTable() { return table; }

}  // namespace shell
