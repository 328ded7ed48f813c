#include "driver/sample/SampleWindow.h"

#include <QApplication>
#include <QTimer>

#include <cstring>

// Arguments: --no-widgets for a program that has none, --no-window for one that ends without a
// window.
int main(int argc, char *argv[])
{
    const char *option = argc > 1 ? argv[1] : "";
    if (std::strcmp(option, "--no-widgets") == 0) {
        QGuiApplication application(argc, argv);
        return application.exec();
    }
    QApplication application(argc, argv);
    SampleWindow window;
    if (std::strcmp(option, "--no-window") == 0) {
        QTimer::singleShot(200, &application, &QCoreApplication::quit);
    } else {
        window.show();
    }
    return application.exec();
}
