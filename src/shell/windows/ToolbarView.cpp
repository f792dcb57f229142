#include "shell/windows/ToolbarView.h"

#include <QAction>
#include <QIcon>
#include <QMouseEvent>
#include <QToolBar>
#include <algorithm>

#include "platform/qt/Captions.h"
#include "platform/qt/Guard.h"

namespace shell {

ToolbarView::ToolbarView(QToolBar& bar) : QObject(&bar), bar_(bar) {
    bar.setIconSize(QSize(24, 24));
    const auto table = ToolbarTable();
    for (std::size_t i = 0; i < buttons_.size(); ++i) {
        const std::string key = table[i].Key;
        QAction* button = key.empty() ? bar.addSeparator() : bar.addAction(QString());
        buttons_[i] = button;
        ShowButton(i, shown_.Buttons[i]);
        if (key.empty()) continue;
        button->setObjectName(QString::fromStdString(key));
        platform::qt::On(button, &QAction::triggered, this, [this, key] {
            if (OnClick) OnClick(key);
        });
        if (QWidget* widget = bar.widgetForAction(button)) widget->installEventFilter(this);
    }
}

void ToolbarView::ShowButton(std::size_t index, const ButtonState& state) {
    QAction* button = buttons_[index];
    button->setVisible(state.Visible);
    if (button->isSeparator()) return;
    button->setEnabled(state.Enabled);
    button->setText(platform::qt::CaptionOf(state.Tip));
    button->setToolTip(platform::qt::TipOf(state.Tip));
    if (state.Image != 0) button->setIcon(QIcon(QString::fromStdString(ImageName(state.Image))));
}

void ToolbarView::Show(const ToolbarState& state) {
    for (std::size_t i = 0; i < buttons_.size(); ++i) {
        if (state.Buttons[i] == shown_.Buttons[i]) continue;
        ShowButton(i, state.Buttons[i]);
    }
    shown_ = state;
}

bool ToolbarView::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonRelease &&
        static_cast<QMouseEvent*>(event)->button() == Qt::RightButton) {
        const auto button = std::find_if(buttons_.begin(), buttons_.end(), [&](QAction* each) {
            return bar_.widgetForAction(each) == watched;
        });
        const auto index = static_cast<std::size_t>(button - buttons_.begin());
        if (button != buttons_.end() && OnRightClick)
            platform::qt::Guarded([&] { OnRightClick(shown_.Buttons[index].Tip); });
    }
    return QObject::eventFilter(watched, event);
}

}  // namespace shell
