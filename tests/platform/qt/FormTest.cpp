#include "platform/qt/Form.h"

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QTest>

#include "base/RunTimeError.h"
#include "platform/qt/HostApplication.h"
#include "support/Doubles.h"
#include "support/FormUser.h"
#include "support/QtMain.h"

namespace platform::qt {
namespace {

// Controls in another order than they are laid out.
class frmSample : public Form {
  public:
    std::string Pressed;
    int Steps = 0;
    bool CancelFails = false;

    frmSample() : Form("frmSample", "A sample", nullptr) {
        auto* upDown = new UpDown("UpDownSize", "txtSize", [this](int step) { Steps += step; });
        auto* name = Named("txtName", new QLineEdit);
        auto* box = CheckBox({"chkKeep", "&Keep everything that was there"});
        auto* options = RadioButtons(ControlArray("opt", std::vector<const char*>{"One", "Two"}), this);
        options->button(1)->setChecked(true);
        LayOut(
            {Fields({{"Label1", "&Name:", name}, {"Label2", "&Size:", upDown}}),
             Tabs("SSTab1", {{"First", Column({box})},
                             {"Second", Column({Frame("Frame1", "Which", Row(Items(options->buttons())))})}}),
             Buttons({{"OK", "OK", [this] { accept(); }},
                      {"Cancel", "Cancel", [this] { Cancel_Click(); }},
                      {"cmdApply", "&Apply", [this] { Pressed += "Apply "; }}})});
    }
    void Cancel_Click() override {
        if (CancelFails) throw base::RunTimeError(5);
        Form::Cancel_Click();
    }
};

class FormBase : public testing::Test, protected doubles::FormUser {
  protected:
    FormBase() { Use(Sample); }
    frmSample Sample;
};

TEST_F(FormBase, KeysLeadThroughTheControlsInTheOrderOfTheLayout) {
    EXPECT_EQ(TabOrder(), "txtName UpDownSize SSTab1 chkKeep OK Cancel cmdApply ");
    Key(Qt::Key_S, Qt::AltModifier);
    Type("14");
    Key(Qt::Key_Up);
    Key(Qt::Key_Up);
    Key(Qt::Key_Down);
    EXPECT_EQ(Sample.Steps, 1);
    EXPECT_EQ(Text("txtSize"), "14") << "the form's rules alone change the text";
    Key(Qt::Key_A, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Sample.Pressed == "Apply "; }));
    Key(Qt::Key_N, Qt::AltModifier);
    Key(Qt::Key_Return);
    EXPECT_FALSE(Sample.isVisible());
    EXPECT_FALSE(Sample.Cancelled);
}

TEST_F(FormBase, EscapeTheButtonAndTheTitleBarCancel) {
    const std::function<void()> ways[] = {[&] { Key(Qt::Key_Escape); }, [&] { Click("Cancel"); },
                                          [&] { Sample.close(); }};
    doubles::Dialogs boxes;
    auto& application = *static_cast<HostApplication*>(qApp);
    for (const auto& cancel : ways) {
        application.ShowErrorsWith(&boxes);
        Sample.Cancelled = false;
        Sample.CancelFails = true;
        Use(Sample);
        cancel();
        QApplication::processEvents();
        EXPECT_TRUE(Sample.isVisible());
        EXPECT_EQ(boxes.LastText(), "Invalid procedure call or argument");
        boxes.Shown.clear();
        application.ShowErrorsWith(&UnexpectedErrors());
        Sample.CancelFails = false;
        cancel();
        EXPECT_TRUE(Sample.Cancelled && !Sample.isVisible());
    }
}

// The check that all forms go through finds what it is for.
TEST_F(FormBase, FaultsOfAFormAreFound) {
    EXPECT_EQ(doubles::FormFaults([] {
                  auto form = std::make_unique<frmSample>();
                  form->findChild<QWidget*>("opt1")->setFixedWidth(20);
                  form->findChild<QWidget*>("Label1")->setFixedWidth(4);
                  form->findChild<QCheckBox*>("chkKeep")->setText("");
                  form->findChild<QWidget*>("cmdApply")->setFocusPolicy(Qt::NoFocus);
                  form->findChild<QWidget*>("Label2")->setForegroundRole(QPalette::Window);
                  return form;
              }),
              "cut: &Name:|cut: Two|no name: chkKeep|no Tab: cmdApply|pale: Label2|");
}

TEST_F(FormBase, ModalFormsAreDrivenWhileTheyAreOpen) {
    std::vector<std::string> seen;
    bool isAccepted = false;
    const auto open = [&] { isAccepted = Modal(new frmSample).Run(); };
    Drive(open, {{"frmSample", "OK", [&] {
                      Drive(open, {{"frmSample", "OK", [&] {
                                        seen.push_back("inner " + Text("Label1"));
                                        Click("Cancel");
                                    }}});
                      seen.push_back(isAccepted ? "accepted" : "cancelled");
                      Click("OK");
                  }}});
    EXPECT_EQ(seen, (std::vector<std::string>{"inner &Name:", "cancelled"}));
    EXPECT_TRUE(isAccepted);
}

}  // namespace
}  // namespace platform::qt
