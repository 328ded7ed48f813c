#include "app/MainWindow.h"

#include <QApplication>
#include <QStringList>

namespace {

/// Size of the window at every start. No geometry is stored, by design.
constexpr QSize StartSize(1000, 500);

/// All arguments as text. The program has no options of its own; the toolkit takes its own ones.
QStringList commandLineArguments;

} // namespace

int main(int argc, char **argv)
{
    for (int i = 0; i < argc; ++i) {
        commandLineArguments.append(QString::fromLocal8Bit(argv[i]));
    }
    QApplication application(argc, argv);

    // Never deleted: the end of the process is the end of the connection, and nothing is to be said
    // to the module on that way, not even that the port closes. Static, so that the window counts
    // as reachable, not as leaked.
    static auto *const window = new MainWindow;
    window->resize(StartSize);
    window->show();
    return QApplication::exec();
}
