#pragma once

#include <QApplication>
#include <QWidget>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace doubles {

// What a user does with one form and sees on it. A fixture derives from this beside its doubles. Controls are
// told by name; one that is not there, or not shown when it is clicked, ends the test with the names that
// are.
class FormUser {
  public:
    // Shows the form; the calls below are about it. The test keeps it.
    void Use(QWidget& form);

    template <class T = QWidget>
    T& Control(const std::string& name) {
        if (auto* control = Form().findChild<T*>(QString::fromStdString(name))) return *control;
        throw std::runtime_error(Missing(name));
    }
    // What a control shows: its text or caption; the lines of a list or tree as "first|*current|  child|".
    std::string Text(const std::string& name);
    std::string Texts(const std::vector<std::string>& names);  // "one|two|"

    void Click(const std::string& name);
    void ClickEach(const std::vector<std::string>& names);
    void ClickLine(const std::string& name, int row, bool isDouble = false);  // row of the top level
    void ClickTab(const std::string& name, const std::string& caption);
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {});  // at the control that has the focus
    void Type(const std::string& text);
    void TabTo(const std::string& name);
    std::string TabOrder();  // the names that Tab visits from the focus until it is back

    // One for each form that `open` shows modally, or several in a row for the same: done once the form is
    // open and its control `Ready` enabled. In it the calls above are about that form.
    struct Step {
        std::string Form;
        std::string Ready;
        std::function<void()> Do;
    };
    // Fails if a step finds no form, and closes a form that no step has closed.
    void Drive(const std::function<void()>& open, std::vector<Step> steps);

  private:
    QWidget& Form() const;
    QWidget& ShownControl(const std::string& name);
    std::string Missing(const std::string& name) const;

    QWidget* form_ = nullptr;
};

// What stands on a control; none on one that shows what is typed or listed.
QString CaptionOn(const QWidget& control);

// What keeps a user from the form that `make` makes, as "cut: Caption|", of every tab: captions that are not
// shown in whole with the program's font at 8 to 16 points; controls that have no name for who cannot see
// them ("no name"), or that Tab does not reach ("no Tab"); texts that are hard to read on a dark desktop
// ("pale").
std::string FormFaults(const std::function<std::unique_ptr<QWidget>()>& make);

template <class Form, class... Values>
std::string FormFaults(Values&&... values) {
    return FormFaults([&] { return std::make_unique<Form>(values...); });
}

// The first of these alone, of a window that stands.
std::string NamelessControls(QWidget& form);

}  // namespace doubles
