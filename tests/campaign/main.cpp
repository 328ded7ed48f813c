// campaign SEED STEPS: see Campaign. Run by scripts/campaign, under a test bed of umockdev.

#include "campaign/Campaign.h"

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>

namespace {

void ignoreDebugLines(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    if (type == QtCriticalMsg || type == QtFatalMsg) {
        std::fprintf(stderr, "%s\n", qPrintable(text));
    }
}

/// Files for the file dialogs, in the current folder.
void makeFiles()
{
    const auto write = [](const char *name, const QByteArray &content) {
        QFile file{QString::fromLatin1(name)};
        if (file.open(QIODevice::WriteOnly)) {
            file.write(content);
        }
    };
    write("good.ini", "[motion_settings]\nAcceleration=1000\nMaxPositioningSpeed=2000\n");
    write("empty.ini", {});
    write("broken.ini", "[[[\n=\n[motion_settings\nAcceleration=\"\\xZZ\n\xff\xfe\x00]");
    QDir().mkdir(QStringLiteral("folder"));
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 3) {
        std::fputs("usage: campaign SEED STEPS\n", stderr);
        return EXIT_FAILURE;
    }
    const QString log = QDir::current().absoluteFilePath(
        QStringLiteral("campaign-%1.log").arg(QString::fromLocal8Bit(argv[1])));
    const QTemporaryDir folder;
    if (!folder.isValid() || !QDir::setCurrent(folder.path())) {
        return EXIT_FAILURE;
    }
    makeFiles();
    qInstallMessageHandler(ignoreDebugLines);
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    {
        Campaign campaign(static_cast<unsigned>(std::atoi(argv[1])), std::atoi(argv[2]), log);
        campaign.run();
    }
    std::printf("campaign: seed %s, %s steps done\n", argv[1], argv[2]);
    return EXIT_SUCCESS;
}
