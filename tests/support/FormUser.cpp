#include "support/FormUser.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QComboBox>
#include <QDeadlineTimer>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QTimer>

#include "base/ScopeExit.h"

namespace doubles {
namespace {

constexpr int patience = 40'000;  // milliseconds for all steps of a form
constexpr int stuck = 100;        // turns of the event loop that a form may stay after its last step

std::string Lines(const QAbstractItemView& view, const QModelIndex& parent = {}, int depth = 0) {
    std::string lines;
    const auto& model = *view.model();
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const QModelIndex line = model.index(row, 0, parent);
        lines += std::string(static_cast<std::size_t>(2 * depth), ' ');
        lines += (line == view.currentIndex() ? "*" : "") + line.data().toString().toStdString() + "|";
        lines += Lines(view, line, depth + 1);
    }
    return lines;
}

// Of the control that a part of it, such as the bar of tabs, belongs to.
std::string NameOf(const QWidget& widget) {
    const QString name = widget.objectName();
    const bool isPart = name.isEmpty() || name.startsWith("qt_");
    return isPart && widget.parentWidget() != nullptr ? NameOf(*widget.parentWidget()) : name.toStdString();
}

// Gives the steps their turn in every event loop, also in one that a step itself starts.
class Steps {
  public:
    Steps(FormUser& user, std::vector<FormUser::Step> steps) : user_(user), steps_(std::move(steps)) {
        Wait();
    }
    ~Steps() {
        for (std::size_t i = done_; i < steps_.size(); ++i)
            ADD_FAILURE() << steps_[i].Form << " does not open";
    }
    Steps(const Steps&) = delete;
    Steps& operator=(const Steps&) = delete;

  private:
    void Wait() {
        QTimer::singleShot(1, &context_, [this] { Turn(); });
    }
    void Turn() {
        QPointer<QDialog> form = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (form == nullptr) return Wait();
        if (deadline_.hasExpired() || (done_ == steps_.size() && ++idle_ > stuck)) return GiveUp(*form);
        if (done_ == steps_.size() || !IsReady(*form)) return Wait();
        const auto& step = steps_[done_++];
        try {
            user_.Use(*form);
            Wait();  // a timer of its own: the step may open the next form
            step.Do();
        } catch (const std::exception& error) {
            ADD_FAILURE() << error.what();
            if (form != nullptr) form->done(QDialog::Rejected);
        }
        idle_ = 0;
    }
    bool IsReady(const QDialog& form) {
        if (form.objectName().toStdString() != steps_[done_].Form) return false;
        const auto* control = form.findChild<QWidget*>(QString::fromStdString(steps_[done_].Ready));
        return control != nullptr && control->isEnabled();
    }
    void GiveUp(QDialog& form) {
        ADD_FAILURE() << form.objectName().toStdString() << " stays open";
        form.done(QDialog::Rejected);
        Wait();
    }

    FormUser& user_;
    std::vector<FormUser::Step> steps_;
    std::size_t done_ = 0;
    int idle_ = 0;
    QDeadlineTimer deadline_{patience};
    QObject context_;
};

}  // namespace

QString CaptionOn(const QWidget& control) {
    if (const auto* label = qobject_cast<const QLabel*>(&control)) return label->text();
    if (const auto* button = qobject_cast<const QAbstractButton*>(&control)) return button->text();
    if (const auto* frame = qobject_cast<const QGroupBox*>(&control)) return frame->title();
    if (const auto* tabs = qobject_cast<const QTabBar*>(&control)) return tabs->tabText(tabs->currentIndex());
    return {};
}

QWidget& FormUser::Form() const {
    if (form_ == nullptr) throw std::runtime_error("no form is in use");
    return *form_;
}

void FormUser::Use(QWidget& form) {
    form_ = &form;
    form.show();
    form.activateWindow();
    if (!QTest::qWaitForWindowActive(&form)) throw std::runtime_error("the form is not shown");
}

std::string FormUser::Missing(const std::string& name) const {
    std::string text = Form().objectName().toStdString() + " has no such control: " + name + ". It has:";
    for (const QWidget* control : Form().findChildren<QWidget*>()) {
        const QString known = control->objectName();
        if (!known.isEmpty() && !known.startsWith("qt_")) text += " " + known.toStdString();
    }
    return text;
}

QWidget& FormUser::ShownControl(const std::string& name) {
    auto& control = Control<>(name);
    if (!control.isVisible()) throw std::runtime_error(name + " is not shown now");
    return control;
}

std::string FormUser::Text(const std::string& name) {
    QWidget& control = Control<>(name);
    if (const auto* edit = qobject_cast<QLineEdit*>(&control)) return edit->text().toStdString();
    if (const auto* edit = qobject_cast<QPlainTextEdit*>(&control)) return edit->toPlainText().toStdString();
    if (const auto* combo = qobject_cast<QComboBox*>(&control)) return combo->currentText().toStdString();
    if (const auto* view = qobject_cast<QAbstractItemView*>(&control)) return Lines(*view);
    if (const auto* tabs = qobject_cast<QTabWidget*>(&control))
        return tabs->tabText(tabs->currentIndex()).toStdString();
    return CaptionOn(control).toStdString();
}

std::string FormUser::Texts(const std::vector<std::string>& names) {
    std::string texts;
    for (const std::string& name : names) texts += Text(name) + "|";
    return texts;
}

// A button is clicked near its left end: a wide check box reacts there alone.
void FormUser::Click(const std::string& name) {
    QWidget& control = ShownControl(name);
    const int inset = control.height() / 2;
    const bool isButton = qobject_cast<QAbstractButton*>(&control) != nullptr;
    QTest::mouseClick(&control, Qt::LeftButton, {}, isButton ? QPoint(inset, inset) : QPoint());
}

void FormUser::ClickEach(const std::vector<std::string>& names) {
    for (const std::string& name : names) Click(name);
}

void FormUser::ClickLine(const std::string& name, int row, bool isDouble) {
    ShownControl(name);
    auto& view = Control<QAbstractItemView>(name);
    const QModelIndex line = view.model()->index(row, 0);
    if (!line.isValid()) throw std::runtime_error(name + " has no line " + std::to_string(row));
    view.scrollTo(line);
    const QPoint place = view.visualRect(line).center();
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, place);
    if (isDouble) QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, place);
}

void FormUser::ClickTab(const std::string& name, const std::string& caption) {
    auto& tabs = *Control<QTabWidget>(name).tabBar();
    for (int i = 0; i < tabs.count(); ++i) {
        if (!tabs.isTabVisible(i) || tabs.tabText(i).toStdString() != caption) continue;
        QTest::mouseClick(&tabs, Qt::LeftButton, {}, tabs.tabRect(i).center());
        return;
    }
    throw std::runtime_error(name + " shows no tab " + caption);
}

void FormUser::Key(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QWidget* focus = Form().focusWidget();
    QTest::keyClick(focus == nullptr ? &Form() : focus, key, modifiers);
}

void FormUser::Type(const std::string& text) {
    QTest::keyClicks(Form().focusWidget(), QString::fromStdString(text));
}

void FormUser::TabTo(const std::string& name) {
    const QWidget& control = ShownControl(name);
    for (qsizetype left = Form().findChildren<QWidget*>().size(); left > 0; --left) {
        if (Form().focusWidget() == &control) return;
        Key(Qt::Key_Tab);
    }
    throw std::runtime_error("Tab does not lead to " + name);
}

std::string FormUser::TabOrder() {
    std::string names;
    const QWidget* start = Form().focusWidget();
    do {
        if (Form().focusWidget() == nullptr) throw std::runtime_error("nothing has the focus");
        names += NameOf(*Form().focusWidget()) + " ";
        Key(Qt::Key_Tab);
    } while (Form().focusWidget() != start);
    return names;
}

void FormUser::Drive(const std::function<void()>& open, std::vector<Step> steps) {
    const base::ScopeExit restore([this, form = form_] { form_ = form; });
    const Steps user(*this, std::move(steps));
    open();
}

}  // namespace doubles
