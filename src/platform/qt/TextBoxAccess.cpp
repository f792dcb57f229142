#include <QAccessible>
#include <QAccessibleWidget>

#include "platform/qt/TextBox.h"

// The control's service to screen readers counts the characters from the start of the text at every key and
// every painting: 40 ms a key in 10 MB. So it is there only while a screen reader is.

namespace platform::qt {
namespace {

QAccessibleInterface* PlainAccessible(const QString&, QObject* object) {
    auto* box = qobject_cast<TextBox*>(object);
    if (box == nullptr || QAccessible::isActive()) return nullptr;
    return new QAccessibleWidget(box, QAccessible::EditableText);
}

}  // namespace

void TextBox::ListenToModifications() {
    static const bool installed = (QAccessible::installFactory(PlainAccessible), true);
    static_cast<void>(installed);
    constexpr long ours = SC_MOD_BEFOREINSERT | SC_MOD_BEFOREDELETE;
    constexpr long screenReaders = SC_MOD_INSERTTEXT | SC_MOD_DELETETEXT;
    Sci(SCI_SETMODEVENTMASK, QAccessible::isActive() ? ours | screenReaders : ours);
}

void TextBox::accessibilityActiveChanged(bool) {
    ListenToModifications();
    // Asked again, the factories give the service that fits.
    if (auto* service = QAccessible::queryAccessibleInterface(this))
        QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(service));
}

}  // namespace platform::qt
