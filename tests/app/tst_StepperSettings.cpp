#include "app/SettingsTest.h"
#include "support/SimulatedPort.h"

#include <QDir>
#include <QRegularExpression>
#include <QSettings>

#include <csignal>

#include <sys/resource.h>

using namespace Qt::StringLiterals;

namespace {

QByteArray withoutDetectionState(const QByteArray &file)
{
    QString text = QString::fromLatin1(file);
    return text.remove(QRegularExpression(u"RampEnabled=.*\n"_s)).toLatin1();
}

/// Lets no file get any longer while the object lives, as on a disk that is full.
class FullDisk
{
public:
    FullDisk()
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit none{0, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &none);
    }
    ~FullDisk() { setrlimit(RLIMIT_FSIZE, &m_before); }
    FullDisk(const FullDisk &) = delete;
    FullDisk &operator=(const FullDisk &) = delete;

private:
    rlimit m_before{};
};

} // namespace

/// The export of the settings file, and the way there and back, with a simulated module on a real
/// port and real file dialogs.
class tst_StepperSettings : public SettingsTest
{
    Q_OBJECT

private slots:
    void withoutAModuleThereIsNoDialog();

    void exportReadsEachParameterOnce();
    void exportedFileIsTheStoredOne();
    void exportedFileIsAnIniFileOfTheToolkit();
    void exportProposesANameWithTheTime();
    void exportTellsTheDebugStream();
    void exportOfANegativeValue();
    void pollingWaitsForTheExport();
    void cancelledExportReadsEverything();
    void exportWithoutAPlaceReadsEverything_data();
    void exportWithoutAPlaceReadsEverything();
    void exportOntoAFullDiskKeepsTheOldFile();
    void exportKeepsForeignKeys();
    void exportUpdatesKeysInAnotherCase_data();
    void exportUpdatesKeysInAnotherCase();
    void moduleLostDuringTheExport_data();
    void moduleLostDuringTheExport();

    void roundTrip();
    void earlierLossDoesNotEndARun();
};

void tst_StepperSettings::withoutAModuleThereIsNoDialog()
{
    m_log->clear();
    m_user->willCancel();
    m_stepper->exportSettings();
    m_stepper->importSettings();
    QCOMPARE(m_user->dialogs(), 0);
    QCOMPARE(told(),
             QStringList({u"exporting settings to ini..."_s, u"import settings from ini..."_s}));
}

// --- Export -----------------------------------------------------------------------------------

void tst_StepperSettings::exportReadsEachParameterOnce()
{
    const auto module = connectedModule();
    exportFile(path(u"a.ini"_s));
    QCOMPARE(module->requests(), readsOf(exportedNumbers()));
    QCOMPARE(module->requests().size(), 31);
}

void tst_StepperSettings::exportedFileIsTheStoredOne()
{
    const auto module = connectedModule(distinctValues());
    exportFile(path(u"a.ini"_s));
    QCOMPARE(contentOf(path(u"a.ini"_s)), stored(u"settings.ini"_s));
}

void tst_StepperSettings::exportedFileIsAnIniFileOfTheToolkit()
{
    const auto module = connectedModule(distinctValues());
    exportFile(path(u"a.ini"_s));
    const QSettings file(path(u"a.ini"_s), QSettings::IniFormat);
    QCOMPARE(file.allKeys().size(), 31);
    QCOMPARE(file.childGroups().size(), 5);
    for (const Key &key : keys()) {
        const QString name = key.fullName();
        QVERIFY2(file.contains(name), qPrintable(name));
        QCOMPARE(file.value(name).toInt(), valueOf(*module, key.number));
    }
}

void tst_StepperSettings::exportProposesANameWithTheTime()
{
    const auto module = connectedModule();
    m_user->willCancel();
    const QDateTime before = QDateTime::currentDateTime();
    m_stepper->exportSettings();
    QCOMPARE(m_user->dialogs(), 1);
    QCOMPARE(m_user->title(), u"Export settings"_s);
    QCOMPARE(m_user->filters(), QStringList(u"Settings files (*.ini)"_s));
    QVERIFY(!m_user->hadParent());
    QCOMPARE(m_user->folder(), QDir::currentPath());
    const auto match =
        QRegularExpression(u"^(\\d{8}_\\d\\d\\.\\d\\d\\.\\d\\d)_ZDRM-7710_Settings\\.ini$"_s)
            .match(m_user->proposedName());
    QVERIFY2(match.hasMatch(), qPrintable(m_user->proposedName()));
    const QDateTime proposed = QDateTime::fromString(match.captured(1), u"yyyyMMdd_hh.mm.ss");
    QVERIFY(proposed >= before.addSecs(-1) && proposed <= QDateTime::currentDateTime());
}

void tst_StepperSettings::exportTellsTheDebugStream()
{
    const auto module = connectedModule(distinctValues());
    exportFile(path(u"a.ini"_s));
    QStringList lines{u"exporting settings to ini..."_s,
                      u"export to: \"%1\""_s.arg(path(u"a.ini"_s))};
    for (const Key &key : keys()) {
        lines.append(
            u"\"%1\" = \"%2\""_s.arg(QLatin1StringView(key.key)).arg(valueOf(*module, key.number)));
    }
    lines.append(u"export to ini done."_s);
    QCOMPARE(told(), lines);
}

void tst_StepperSettings::exportOfANegativeValue()
{
    const auto module = connectedModule({{112, -5}});
    exportFile(path(u"a.ini"_s));
    QVERIFY(contentOf(path(u"a.ini"_s)).contains("\nEncoderOffset=-5\n"));
}

void tst_StepperSettings::pollingWaitsForTheExport()
{
    verifyThatPollingWaits(&Stepper::exportSettings, path(u"a.ini"_s), readsOf(exportedNumbers()));
}

void tst_StepperSettings::cancelledExportReadsEverything()
{
    const auto module = connectedModule();
    m_user->willCancel();
    m_stepper->exportSettings();
    QCOMPARE(module->requests(), readsOf(exportedNumbers()));
    QCOMPARE(told().at(1), u"export to: \"\""_s);
    QCOMPARE(told().constLast(), u"export to ini done."_s);
    QCOMPARE(QDir().entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList());
}

void tst_StepperSettings::exportWithoutAPlaceReadsEverything_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::newRow("read-only folder") << u"/proc/settings.ini"_s; // not even for root
    QTest::newRow("file in place of the folder") << u"/proc/version/settings.ini"_s;
}

void tst_StepperSettings::exportWithoutAPlaceReadsEverything()
{
    QFETCH(QString, fileName);
    const auto module = connectedModule();
    exportFile(fileName);
    QCOMPARE(module->requests(), readsOf(exportedNumbers()));
    QCOMPARE(told().constLast(), u"export to ini done."_s);
    QVERIFY(!QFile::exists(fileName));
}

void tst_StepperSettings::exportOntoAFullDiskKeepsTheOldFile()
{
    const auto module = connectedModule();
    write(path(u"a.ini"_s), "[motion_settings]\nAcceleration=5\n");
    {
        const FullDisk fullDisk;
        exportFile(path(u"a.ini"_s));
    }
    QCOMPARE(module->requests(), readsOf(exportedNumbers()));
    QCOMPARE(told().constLast(), u"export to ini done."_s);
    QCOMPARE(contentOf(path(u"a.ini"_s)), "[motion_settings]\nAcceleration=5\n");
}

void tst_StepperSettings::exportKeepsForeignKeys()
{
    const auto module = connectedModule(distinctValues());
    write(path(u"a.ini"_s),
          "[closed_loop_settings]\nBetaMax=1\nMine=abc\n\n[notes]\nauthor=\"a, b\"\n");
    exportFile(path(u"a.ini"_s));
    const QSettings file(path(u"a.ini"_s), QSettings::IniFormat);
    QCOMPARE(file.allKeys().size(), 33);
    QCOMPARE(file.value(u"closed_loop_settings/Mine"_s).toString(), u"abc"_s);
    QCOMPARE(file.value(u"notes/author"_s).toString(), u"a, b"_s);
    QCOMPARE(file.value(u"closed_loop_settings/BetaMax"_s).toInt(), 240);
}

void tst_StepperSettings::exportUpdatesKeysInAnotherCase_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("updated");
    QTest::newRow("key") << QByteArray("[motion_settings]\nacceleration=1\n")
                         << QByteArray("acceleration=80001");
    QTest::newRow("section") << QByteArray("[MOTION_Settings]\nAcceleration=1\n")
                             << QByteArray("[MOTION_Settings]\nAcceleration=80001");
    QTest::newRow("both spellings")
        << QByteArray("[motion_settings]\nacceleration=1\nAcceleration=2\nACCELERATION=3\n")
        << QByteArray("ACCELERATION=80001");
    QTest::newRow("sections of both spellings")
        << QByteArray("[motion_settings]\nAcceleration=1\n[Motion_settings]\nacceleration=2\n")
        << QByteArray("acceleration=80001");
}

void tst_StepperSettings::exportUpdatesKeysInAnotherCase()
{
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, updated);
    const auto module = connectedModule(distinctValues());
    write(path(u"a.ini"_s), before);
    exportFile(path(u"a.ini"_s));
    QVERIFY2(contentOf(path(u"a.ini"_s)).contains(updated),
             contentOf(path(u"a.ini"_s)).constData());

    setValues(*module, {{5, 1}});
    importFile(path(u"a.ini"_s));
    QCOMPARE(valueOf(*module, 5), 80001);
}

void tst_StepperSettings::moduleLostDuringTheExport_data()
{
    QTest::addColumn<bool>("pulledOut");
    QTest::addColumn<int>("requests");
    for (const int requests : {0, 1, 12, 30}) { // 0: behind the dialog
        QTest::addRow("silent after %d", requests) << false << requests;
        QTest::addRow("pulled out after %d", requests) << true << requests;
    }
}

void tst_StepperSettings::moduleLostDuringTheExport()
{
    QFETCH(bool, pulledOut);
    QFETCH(int, requests);
    const auto module = connectedModule(distinctValues());
    m_user->willEnter(path(u"a.ini"_s));
    runAndInterrupt(&Stepper::exportSettings, *module, requests, [&] {
        if (pulledOut) {
            module->pullOut();
        } else {
            module->fault(u"silence"_s);
        }
    });
    QCOMPARE_LE(timeOuts(), 1); // at the very end the interruption may come too late
    QCOMPARE_LE(unanswered(*module), 1);
    QCOMPARE(told().constLast(), u"export to ini done."_s);

    // What was read so far is in the file.
    const QSettings file(path(u"a.ini"_s), QSettings::IniFormat);
    QCOMPARE(file.status(), QSettings::NoError);
    const QStringList values = told().filter(QRegularExpression(u"^\"\\w+\" = \"-?\\d+\"$"_s));
    QCOMPARE(file.allKeys().size(), values.size());
    QCOMPARE_GE(values.size(), requests - 1);
    for (qsizetype i = 0; i < values.size(); ++i) {
        const Key &key = keys().at(i);
        const QString name = key.fullName();
        QCOMPARE(file.value(name).toInt(), valueOf(*module, key.number));
    }
}

// --- Both -------------------------------------------------------------------------------------

void tst_StepperSettings::roundTrip()
{
    const auto module = connectedModule(distinctValues());
    exportFile(path(u"a.ini"_s));
    for (const Value &entry : distinctValues()) {
        setValues(*module, {{entry.number, entry.value == 0 ? 1 : entry.value / 2}});
    }
    setValues(*module, {{132, 3}}); // any state but that of a detection, which comes to an end
    exportFile(path(u"changed.ini"_s));
    importFile(path(u"a.ini"_s));
    exportFile(path(u"b.ini"_s));

    const QByteArray before = contentOf(path(u"a.ini"_s));
    QCOMPARE(before, stored(u"settings.ini"_s));
    const QSettings changed(path(u"changed.ini"_s), QSettings::IniFormat);
    const QSettings first(path(u"a.ini"_s), QSettings::IniFormat);
    for (const QString &key : first.allKeys()) {
        QVERIFY2(changed.value(key) != first.value(key), qPrintable(key));
    }
    QCOMPARE(withoutDetectionState(contentOf(path(u"b.ini"_s))), withoutDetectionState(before));
    QVERIFY(contentOf(path(u"b.ini"_s)).contains("RampEnabled=3"));
}

/// A module that failed to answer once counts as detached, yet its port is open, and it answers.
void tst_StepperSettings::earlierLossDoesNotEndARun()
{
    const auto module = connectedModule();
    QVERIFY(module->fault(u"silence 1"_s));
    sendDirectCommand(u"6 - GAP"_s, 1);
    QCOMPARE(timeOuts(), 1);
    module->clearWireLog();
    exportFile(path(u"a.ini"_s));
    QCOMPARE(module->requests(), readsOf(exportedNumbers()));
    QCOMPARE(timeOuts(), 1);
}

QTEST_MAIN(tst_StepperSettings)
#include "tst_StepperSettings.moc"
