#include "support/QtMain.h"

#include <gtest/gtest.h>

#include "platform/qt/HostApplication.h"
#include "support/Doubles.h"

namespace {

class FailingBoxes : public doubles::Dialogs {
    platform::Answer MessageBox(const platform::MessageBoxRequest& request) override {
        ADD_FAILURE() << "not trapped: " << request.Text;
        return doubles::Dialogs::MessageBox(request);
    }
};

// Errors that wait for the event loop belong to the test that ends.
class ErrorListener : public testing::EmptyTestEventListener {
    void OnTestEnd(const testing::TestInfo&) override {
        QCoreApplication::sendPostedEvents(qApp, QEvent::MetaCall);
    }
};

}  // namespace

platform::Dialogs& UnexpectedErrors() {
    static FailingBoxes boxes;
    return boxes;
}

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    platform::qt::HostApplication application(argc, argv);
    application.ShowErrorsWith(&UnexpectedErrors());
    testing::UnitTest::GetInstance()->listeners().Append(new ErrorListener);
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
