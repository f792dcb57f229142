#include "shell/windows/HelpFilter.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

#include "platform/qt/Guard.h"
#include "shell/HelpTopics.h"

namespace shell {

HelpFilter::HelpFilter(session::App& app) : app_(app) { qApp->installEventFilter(this); }

bool HelpFilter::eventFilter(QObject* watched, QEvent* event) {
    auto* widget = qobject_cast<QWidget*>(watched);
    if (event->type() != QEvent::KeyPress || widget == nullptr) return false;
    if (static_cast<QKeyEvent*>(event)->key() != Qt::Key_F1) return false;
    const char* topic = HelpTopicOf(widget->window()->objectName().toStdString());
    if (topic == nullptr) return false;
    platform::qt::Guarded([&] { ShowHelpTopic(app_.Host.Boxes, topic); });
    return true;
}

}  // namespace shell
