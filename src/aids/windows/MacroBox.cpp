#include "aids/windows/MacroBox.h"

#include <QMouseEvent>
#include <array>

#include "platform/qt/Controls.h"
#include "platform/qt/Guard.h"

namespace aids {

MacroBox::MacroBox(const char* name, const session::FontRecord& font) {
    setObjectName(QString::fromUtf8(name));
    SetDefaultFont(font.Name, font.Size);
    SendScintilla(SCI_SETMARGINS, 0UL);
    setMinimumSize(platform::qt::InCharacters(30, 4));
}

void MacroBox::ShowMacro(const MacroRecord& macro) {
    SendScintilla(SCI_SETREADONLY, 0UL);
    SetText(macro.Args + "\r\n" + macro.Definition);
    SendScintilla(SCI_SETREADONLY, 1UL);
    const auto args = static_cast<std::int32_t>(macro.Args.size());
    ApplyFormats(std::array<platform::FormatRun, 2>{
        {{0, args, {.Color = session::LightBlue, .Bold = true}}, {args, TextLength() - args, {}}}});
}

bool MacroBox::focusNextPrevChild(bool next) { return QAbstractScrollArea::focusNextPrevChild(next); }

void MacroBox::mouseReleaseEvent(QMouseEvent* event) {
    TextBox::mouseReleaseEvent(event);
    platform::qt::Guarded([&] {
        if (event->button() == Qt::LeftButton) emit Clicked();
    });
}

}  // namespace aids
