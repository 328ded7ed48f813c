#include "app/SettingsTest.h"
#include "support/SimulatedPort.h"

#include <QDir>
#include <QRegularExpression>
#include <QSettings>

#include <csignal>
#include <utility>

#include <sys/resource.h>

using namespace Qt::StringLiterals;

namespace {

/// The sections and keys of the file, with the number of the parameter.
struct Key
{
    const char *section;
    const char *key;
    int number;
};

constexpr Key Keys[] = {
    {"motor_and_module_settings", "MaxCurrent", 6},
    {"motor_and_module_settings", "StandbyCurrent", 7},
    {"motor_and_module_settings", "MicrostepResolution", 140},
    {"motor_and_module_settings", "RightLimitSwitchDisabled", 12},
    {"motor_and_module_settings", "LeftLimitSwitchDisabled", 13},
    {"encoder_settings", "EncoderMode", 201},
    {"encoder_settings", "MotorFullSteps", 202},
    {"encoder_settings", "EncoderResolution", 210},
    {"motion_settings", "MaxPositioningSpeed", 4},
    {"motion_settings", "Acceleration", 5},
    {"motion_settings", "RelativePositionOption", 127},
    {"motion_settings", "ClosedLoopMode", 129},
    {"motion_settings", "RampEnabled", 132},
    {"closed_loop_settings", "GammaVMin", 108},
    {"closed_loop_settings", "GammaVMax", 109},
    {"closed_loop_settings", "GammaMax", 110},
    {"closed_loop_settings", "BetaMax", 111},
    {"closed_loop_settings", "EncoderOffset", 112},
    {"closed_loop_settings", "IScaleMin", 113},
    {"closed_loop_settings", "IScaleMax", 114},
    {"closed_loop_settings", "IScaleInput", 115},
    {"closed_loop_settings", "IScaleLimit1", 116},
    {"closed_loop_settings", "IScaleLimit2", 117},
    {"closed_loop_settings", "ScaleInc", 118},
    {"closed_loop_settings", "ScaleDec", 119},
    {"closed_loop_settings", "ScaleIncTimeout", 120},
    {"closed_loop_settings", "ScaleDecTimeout", 121},
    {"closed_loop_settings", "ScalerEnabled", 122},
    {"correction_parameters", "CorrectionVelocityP", 124},
    {"correction_parameters", "MaxCorrectionTolerance", 125},
    {"correction_parameters", "MaxCorrectionSpeed", 126},
};

/// The numbers in the order of the import.
const QList<int> ImportedNumbers = {6,   7,   140, 12,  13,  6,   7,   140, 12,  13,  4,   5,
                                    127, 129, 201, 202, 210, 108, 109, 110, 111, 112, 113, 114,
                                    115, 116, 117, 118, 119, 120, 121, 122, 124, 125, 126};

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

/// The settings file, with a simulated module on a real port and real file dialogs.
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
    void cancelledExportReadsEverything();
    void exportWithoutAPlaceReadsEverything_data();
    void exportWithoutAPlaceReadsEverything();
    void exportOntoAFullDiskKeepsTheOldFile();
    void exportKeepsForeignKeys();
    void exportUpdatesKeysInAnotherCase_data();
    void exportUpdatesKeysInAnotherCase();
    void moduleLostDuringTheExport_data();
    void moduleLostDuringTheExport();

    void importWritesAndReadsBackInOrder();
    void importTellsTheDebugStream();
    void importPrintsARefusal();
    void importShowsInThePanels();
    void cancelledImportSendsNothing();
    void importIsBlindToCase_data();
    void importIsBlindToCase();
    void importOfNoNumbersWritesZeros_data();
    void importOfNoNumbersWritesZeros();
    void missingKeyIsWrittenAsZero();
    void valueOutOfTheModulesRangeIsSent();
    void moduleLostDuringTheImport_data();
    void moduleLostDuringTheImport();

    void roundTrip();
    void earlierLossDoesNotEndARun();

private:
    /// A module with the values, connected, with its panels filled and the polling stopped.
    std::unique_ptr<SimulatedPort> connectedModule(const QList<Value> &values = {});
    void importFile(const QString &fileName);
    void exportFile(const QString &fileName);
    static int valueOf(SimulatedPort &module, int number);
};

std::unique_ptr<SimulatedPort> tst_StepperSettings::connectedModule(const QList<Value> &values)
{
    auto module = std::make_unique<SimulatedPort>();
    setValues(*module, values);
    connectOverUsb(module->portName());
    stopPolling(*module);
    m_log->clear();
    return module;
}

void tst_StepperSettings::importFile(const QString &fileName)
{
    m_user->willEnter(fileName);
    m_stepper->importSettings();
}

void tst_StepperSettings::exportFile(const QString &fileName)
{
    m_user->willEnter(fileName);
    m_stepper->exportSettings();
}

int tst_StepperSettings::valueOf(SimulatedPort &module, int number)
{
    return module.module().axisParameter(static_cast<std::uint8_t>(number)).value_or(-1);
}

void tst_StepperSettings::withoutAModuleThereIsNoDialog()
{
    m_log->clear();
    m_user->willCancel();
    m_stepper->exportSettings();
    m_stepper->importSettings();
    QCOMPARE(m_user->dialogs(), 0);
    QCOMPARE(m_log->lines(), QStringList({u"exporting settings to ini..."_s,
                                          u"import settings from ini..."_s}));
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
    for (const Key &key : Keys) {
        const QString name = QLatin1StringView(key.section) + u'/' + QLatin1StringView(key.key);
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
    QCOMPARE(m_user->folder(), QDir::currentPath());
    const auto match = QRegularExpression(u"^(\\d{8}_\\d\\d\\.\\d\\d\\.\\d\\d)_ZDRM-7710_Settings\\.ini$"_s)
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
    for (const Key &key : Keys) {
        lines.append(u"\"%1\" = \"%2\""_s.arg(QLatin1StringView(key.key))
                         .arg(valueOf(*module, key.number)));
    }
    lines.append(u"export to ini done."_s);
    QCOMPARE(m_log->lines(), lines);
}

void tst_StepperSettings::exportOfANegativeValue()
{
    const auto module = connectedModule({{112, -5}});
    exportFile(path(u"a.ini"_s));
    QVERIFY(contentOf(path(u"a.ini"_s)).contains("\nEncoderOffset=-5\n"));
}

void tst_StepperSettings::cancelledExportReadsEverything()
{
    const auto module = connectedModule();
    m_user->willCancel();
    m_stepper->exportSettings();
    QCOMPARE(module->requests(), readsOf(exportedNumbers()));
    QCOMPARE(m_log->lines().at(1), u"export to: \"\""_s);
    QCOMPARE(m_log->lines().constLast(), u"export to ini done."_s);
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
    QCOMPARE(m_log->lines().constLast(), u"export to ini done."_s);
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
    QCOMPARE(m_log->lines().constLast(), u"export to ini done."_s);
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
    QTest::newRow("both spellings") << QByteArray(
        "[motion_settings]\nacceleration=1\nAcceleration=2\nACCELERATION=3\n")
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
    QVERIFY2(contentOf(path(u"a.ini"_s)).contains(updated), contentOf(path(u"a.ini"_s)).constData());

    setValues(*module, {{5, 1}});
    importFile(path(u"a.ini"_s));
    QCOMPARE(valueOf(*module, 5), 80001);
}

void tst_StepperSettings::moduleLostDuringTheExport_data()
{
    QTest::addColumn<bool>("pulledOut");
    QTest::addColumn<int>("requests");
    for (const int requests : {1, 12, 30}) {
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
    QCOMPARE(m_log->lines().constLast(), u"export to ini done."_s);

    // What was read so far is in the file.
    const QSettings file(path(u"a.ini"_s), QSettings::IniFormat);
    QCOMPARE(file.status(), QSettings::NoError);
    const auto told = m_log->lines().filter(QRegularExpression(u"^\"\\w+\" = \"-?\\d+\"$"_s));
    QCOMPARE(file.allKeys().size(), told.size());
    QCOMPARE_GE(told.size(), requests - 1);
    for (qsizetype i = 0; i < told.size(); ++i) {
        const Key &key = Keys[i];
        const QString name = QLatin1StringView(key.section) + u'/' + QLatin1StringView(key.key);
        QCOMPARE(file.value(name).toInt(), valueOf(*module, key.number));
    }
}

// --- Import -----------------------------------------------------------------------------------

void tst_StepperSettings::importWritesAndReadsBackInOrder()
{
    // The panels show the values of the file already, so that none of them echoes.
    const auto module = connectedModule(distinctValues());
    write(path(u"a.ini"_s), stored(u"settings.ini"_s));
    importFile(path(u"a.ini"_s));
    QCOMPARE(m_user->title(), u"Import settings"_s);
    QCOMPARE(m_user->filters(), QStringList(u"Setting files (*.ini)"_s));
    QCOMPARE(m_user->folder(), QDir::currentPath());

    QStringList expected;
    for (const int number : ImportedNumbers) {
        expected.append(datagram(5, number, valueOf(*module, number)));
        expected.append(datagram(6, number, 0));
    }
    QCOMPARE(expected.size(), 70);
    QCOMPARE(module->requests(), expected);
}

void tst_StepperSettings::importTellsTheDebugStream()
{
    const auto module = connectedModule(distinctValues());
    write(path(u"a.ini"_s), stored(u"settings.ini"_s));
    importFile(path(u"a.ini"_s));
    QStringList lines{u"import settings from ini..."_s,
                      u"importFileName: \"%1\""_s.arg(path(u"a.ini"_s))};
    for (qsizetype i = 0; i < ImportedNumbers.size(); ++i) {
        const int number = ImportedNumbers.at(i);
        const auto *key = std::find_if(std::begin(Keys), std::end(Keys),
                                       [number](const Key &entry) { return entry.number == number; });
        lines.append(u"\"%1\" = \"%2\"(\"100\")"_s
                         .arg(i == 5 ? "MAXCurrent"_L1 : QLatin1StringView(key->key))
                         .arg(valueOf(*module, number)));
    }
    lines.append(u"import from ini done."_s);
    QCOMPARE(m_log->lines(), lines);
}

void tst_StepperSettings::importPrintsARefusal()
{
    const auto module = connectedModule();
    write(path(u"a.ini"_s), "[motor_and_module_settings]\nMaxCurrent=256\n");
    importFile(path(u"a.ini"_s));
    QVERIFY(m_log->lines().contains(u"\"MaxCurrent\" = \"256\"(\"4\")"_s));
    QVERIFY(m_log->lines().contains(u"\"MAXCurrent\" = \"256\"(\"4\")"_s));
    QCOMPARE(valueOf(*module, 6), 128);
}

void tst_StepperSettings::importShowsInThePanels()
{
    const auto module = connectedModule();
    QVERIFY(child<QSpinBox>("sbIScaleMin")->value() != 26);
    write(path(u"a.ini"_s), stored(u"settings.ini"_s));
    importFile(path(u"a.ini"_s));
    QCOMPARE(child<QSpinBox>("sbIScaleMin")->value(), 26);
    QCOMPARE(child<QSpinBox>("sbGammaVMax")->value(), 310000);
    QCOMPARE(child<QComboBox>("cmbLoopMode", "quickstartTab")->currentIndex(), 1);
}

void tst_StepperSettings::cancelledImportSendsNothing()
{
    const auto module = connectedModule();
    m_user->willCancel();
    m_stepper->importSettings();
    QCOMPARE(m_user->dialogs(), 1);
    QCOMPARE(module->requests(), QStringList());
    QCOMPARE(m_log->lines(), QStringList({u"import settings from ini..."_s,
                                          u"importFileName is empty!"_s}));
}

void tst_StepperSettings::importIsBlindToCase_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<int>("value");
    QTest::newRow("as exported") << QByteArray("[motor_and_module_settings]\nMaxCurrent=100\n")
                                 << 100;
    QTest::newRow("lower case") << QByteArray("[motor_and_module_settings]\nmaxcurrent=100\n")
                                << 100;
    QTest::newRow("as in the second pass")
        << QByteArray("[motor_and_module_settings]\nMAXCurrent=100\n") << 100;
    QTest::newRow("section in upper case")
        << QByteArray("[MOTOR_AND_MODULE_SETTINGS]\nMAXCURRENT=100\n") << 100;
    QTest::newRow("both spellings: the later one")
        << QByteArray("[motor_and_module_settings]\nMAXCurrent=99\nMaxCurrent=100\n") << 100;
    QTest::newRow("both spellings, the other way round")
        << QByteArray("[motor_and_module_settings]\nMaxCurrent=99\nMAXCurrent=100\n") << 100;
}

/// Both passes have to send the value: a reader that knows case would send 0 in one of them.
void tst_StepperSettings::importIsBlindToCase()
{
    QFETCH(QByteArray, file);
    QFETCH(int, value);
    const auto module = connectedModule();
    write(path(u"a.ini"_s), file);
    importFile(path(u"a.ini"_s));
    QCOMPARE(valueOf(*module, 6), value);
    QCOMPARE(module->requests().count(datagram(5, 6, 0)), 0);
    // Two passes, and the panel's echo of a value that is new to it.
    QCOMPARE(module->requests().count(datagram(5, 6, value)), 3);
}

void tst_StepperSettings::importOfNoNumbersWritesZeros_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::newRow("empty file") << u"empty.ini"_s;
    QTest::newRow("no sections of ours") << u"foreign.ini"_s;
    QTest::newRow("not a settings file at all") << u"binary.ini"_s;
    QTest::newRow("file that can't be read") << u"unreadable.ini"_s;
}

void tst_StepperSettings::importOfNoNumbersWritesZeros()
{
    QFETCH(QString, fileName);
    QByteArray binary;
    for (int i = 0; i < 4096; ++i) {
        binary.append(static_cast<char>(i * 37 + i / 256));
    }
    const QHash<QString, QByteArray> contents = {
        {u"empty.ini"_s, ""},
        {u"foreign.ini"_s, "[Desktop Entry]\nAcceleration=5\nMaxCurrent=100\n"},
        {u"binary.ini"_s, binary},
    };
    const auto module = connectedModule();
    if (contents.contains(fileName)) {
        write(path(fileName), contents.value(fileName));
    } else {
        QVERIFY(QFile::link(u"/proc/self/mem"_s, path(fileName))); // not even for root
    }
    importFile(path(fileName));
    QCOMPARE(m_log->lines().constLast(), u"import from ini done."_s);
    for (const int number : ImportedNumbers) {
        QVERIFY2(module->requests().contains(datagram(5, number, 0)), qPrintable(QString::number(number)));
    }
    QVERIFY(!module->requests().contains(datagram(5, 132, 0)));
}

void tst_StepperSettings::missingKeyIsWrittenAsZero()
{
    const auto module = connectedModule(distinctValues());
    write(path(u"a.ini"_s), stored(u"settings.ini"_s).replace("Acceleration=80001\n", ""));
    importFile(path(u"a.ini"_s));
    QCOMPARE(valueOf(*module, 5), 0);
    QCOMPARE(valueOf(*module, 4), 70000);
    QCOMPARE(valueOf(*module, 132), 2);
}

void tst_StepperSettings::valueOutOfTheModulesRangeIsSent()
{
    const auto module = connectedModule();
    write(path(u"a.ini"_s), "[closed_loop_settings]\nIScaleMin=-2147483648\nIScaleMax=2147483647\n");
    importFile(path(u"a.ini"_s));
    QVERIFY(module->requests().contains(u"01 05 71 00 80 00 00 00 F7"_s));
    QVERIFY(module->requests().contains(u"01 05 72 00 7F FF FF FF F4"_s));
}

void tst_StepperSettings::moduleLostDuringTheImport_data()
{
    QTest::addColumn<bool>("pulledOut");
    QTest::addColumn<int>("requests");
    for (const int requests : {1, 2, 21, 40}) { // in writes and in the questions after them
        QTest::addRow("silent after %d", requests) << false << requests;
        QTest::addRow("pulled out after %d", requests) << true << requests;
    }
}

void tst_StepperSettings::moduleLostDuringTheImport()
{
    QFETCH(bool, pulledOut);
    QFETCH(int, requests);
    const auto module = connectedModule(distinctValues());
    write(path(u"a.ini"_s), stored(u"settings.ini"_s));
    m_user->willEnter(path(u"a.ini"_s));
    runAndInterrupt(&Stepper::importSettings, *module, requests, [&] {
        if (pulledOut) {
            module->pullOut();
        } else {
            module->fault(u"silence"_s);
        }
    });
    QCOMPARE_LE(timeOuts(), 1);
    QCOMPARE_LE(unanswered(*module), 1);
    QCOMPARE(m_log->lines().constLast(), u"import from ini done."_s);
    QVERIFY(isReady("wUsbConnection"));
}

// --- Both -------------------------------------------------------------------------------------

void tst_StepperSettings::roundTrip()
{
    const auto module = connectedModule(distinctValues());
    exportFile(path(u"a.ini"_s));
    for (const Value &entry : distinctValues()) {
        setValues(*module, {{entry.number, entry.value == 0 ? 1 : entry.value / 2}});
    }
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
    QVERIFY(!contentOf(path(u"b.ini"_s)).contains("RampEnabled=2"));
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
