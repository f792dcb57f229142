#include <QApplication>
#include <QMessageBox>

// tellbox SENTENCE: shows it in a box, for a launcher that was started without a terminal.
int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QMessageBox::critical(nullptr, "Korvane", QCoreApplication::arguments().value(1));
    return 1;
}
