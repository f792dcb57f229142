#include <QGuiApplication>
#include <QRasterWindow>

// A tool whose window leaves the keys where they are.
int main(int argc, char** argv) {
    const QGuiApplication application(argc, argv);
    QRasterWindow window;
    window.setTitle("Calculator");
    window.setFlag(Qt::WindowDoesNotAcceptFocus);
    window.resize(100, 50);
    window.show();
    return QGuiApplication::exec();
}
