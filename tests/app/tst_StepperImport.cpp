#include "app/SettingsTest.h"
#include "support/SimulatedPort.h"

#include <QDir>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// The numbers in the order of the import.
const QList<int> ImportedNumbers = {6,   7,   140, 12,  13,  6,   7,   140, 12,  13,  4,   5,
                                    127, 129, 201, 202, 210, 108, 109, 110, 111, 112, 113, 114,
                                    115, 116, 117, 118, 119, 120, 121, 122, 124, 125, 126};

} // namespace

/// The import of the settings file, with a simulated module on a real port and real file dialogs.
class tst_StepperImport : public SettingsTest
{
    Q_OBJECT

private:
    /// What goes over the wire in the import of the stored file, where no panel echoes.
    static QStringList writesAndReads(int address = 1);

private slots:
    void importWritesAndReadsBackInOrder();
    void importGoesToTheModulesAddress();
    void pollingWaitsForTheImport();
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
};

QStringList tst_StepperImport::writesAndReads(int address)
{
    QHash<int, int> values;
    for (const Value &entry : distinctValues()) {
        values.insert(entry.number, entry.value);
    }
    QStringList requests;
    for (const int number : ImportedNumbers) {
        requests.append(datagram(5, number, values.value(number), address));
        requests.append(datagram(6, number, 0, address));
    }
    return requests;
}

void tst_StepperImport::importWritesAndReadsBackInOrder()
{
    // The panels show the values of the file already, so that none of them echoes.
    const auto module = connectedModule(distinctValues());
    write(path(u"a.ini"_s), stored(u"settings.ini"_s));
    importFile(path(u"a.ini"_s));
    QCOMPARE(m_user->title(), u"Import settings"_s);
    QCOMPARE(m_user->filters(), QStringList(u"Setting files (*.ini)"_s));
    QCOMPARE(m_user->folder(), QDir::currentPath());
    QVERIFY(!m_user->hadParent());

    QCOMPARE(module->requests(), writesAndReads());
    QCOMPARE(module->requests().size(), 70);
}

void tst_StepperImport::importGoesToTheModulesAddress()
{
    SimulatedPort module({.address = 7}, 9600);
    setValues(module, distinctValues());
    connectOverSerial(module.portName(), 9600, 7);
    stopPolling(module);
    write(path(u"a.ini"_s), stored(u"settings.ini"_s));
    importFile(path(u"a.ini"_s));
    QCOMPARE(module.requests(), writesAndReads(7));
}

void tst_StepperImport::pollingWaitsForTheImport()
{
    write(path(u"a.ini"_s), stored(u"settings.ini"_s));
    verifyThatPollingWaits(&Stepper::importSettings, path(u"a.ini"_s), writesAndReads());
}

void tst_StepperImport::importTellsTheDebugStream()
{
    const auto module = connectedModule(distinctValues());
    write(path(u"a.ini"_s), stored(u"settings.ini"_s));
    importFile(path(u"a.ini"_s));
    QStringList lines{u"import settings from ini..."_s,
                      u"importFileName: \"%1\""_s.arg(path(u"a.ini"_s))};
    for (qsizetype i = 0; i < ImportedNumbers.size(); ++i) {
        const int number = ImportedNumbers.at(i);
        const auto key = std::find_if(keys().cbegin(), keys().cend(), [number](const Key &entry) {
            return entry.number == number;
        });
        lines.append(u"\"%1\" = \"%2\"(\"100\")"_s
                         .arg(i == 5 ? "MAXCurrent"_L1 : QLatin1StringView(key->key))
                         .arg(valueOf(*module, number)));
    }
    lines.append(u"import from ini done."_s);
    QCOMPARE(told(), lines);
}

void tst_StepperImport::importPrintsARefusal()
{
    const auto module = connectedModule();
    write(path(u"a.ini"_s), "[motor_and_module_settings]\nMaxCurrent=256\n");
    importFile(path(u"a.ini"_s));
    QVERIFY(told().contains(u"\"MaxCurrent\" = \"256\"(\"4\")"_s));
    QVERIFY(told().contains(u"\"MAXCurrent\" = \"256\"(\"4\")"_s));
    QCOMPARE(valueOf(*module, 6), 128);
}

void tst_StepperImport::importShowsInThePanels()
{
    const auto module = connectedModule();
    QVERIFY(child<QSpinBox>("sbIScaleMin")->value() != 26);
    write(path(u"a.ini"_s), stored(u"settings.ini"_s));
    importFile(path(u"a.ini"_s));
    QCOMPARE(child<QSpinBox>("sbIScaleMin")->value(), 26);
    QCOMPARE(child<QSpinBox>("sbGammaVMax")->value(), 310000);
    QCOMPARE(child<QComboBox>("cmbLoopMode", "quickstartTab")->currentIndex(), 1);
}

void tst_StepperImport::cancelledImportSendsNothing()
{
    const auto module = connectedModule();
    m_user->willCancel();
    m_stepper->importSettings();
    QCOMPARE(m_user->dialogs(), 1);
    QCOMPARE(module->requests(), QStringList());
    QCOMPARE(told(),
             QStringList({u"import settings from ini..."_s, u"importFileName is empty!"_s}));
}

void tst_StepperImport::importIsBlindToCase_data()
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
void tst_StepperImport::importIsBlindToCase()
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

void tst_StepperImport::importOfNoNumbersWritesZeros_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::newRow("empty file") << u"empty.ini"_s;
    QTest::newRow("no sections of ours") << u"foreign.ini"_s;
    QTest::newRow("not a settings file at all") << u"binary.ini"_s;
    QTest::newRow("file that can't be read") << u"unreadable.ini"_s;
}

void tst_StepperImport::importOfNoNumbersWritesZeros()
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
    QCOMPARE(told().constLast(), u"import from ini done."_s);
    for (const int number : ImportedNumbers) {
        QVERIFY2(module->requests().contains(datagram(5, number, 0)),
                 qPrintable(QString::number(number)));
    }
    QVERIFY(!module->requests().contains(datagram(5, 132, 0)));
}

void tst_StepperImport::missingKeyIsWrittenAsZero()
{
    const auto module = connectedModule(distinctValues());
    write(path(u"a.ini"_s), stored(u"settings.ini"_s).replace("Acceleration=80001\n", ""));
    importFile(path(u"a.ini"_s));
    QCOMPARE(valueOf(*module, 5), 0);
    QCOMPARE(valueOf(*module, 4), 70000);
    QCOMPARE(valueOf(*module, 132), 2);
}

void tst_StepperImport::valueOutOfTheModulesRangeIsSent()
{
    const auto module = connectedModule();
    write(path(u"a.ini"_s),
          "[closed_loop_settings]\nIScaleMin=-2147483648\nIScaleMax=2147483647\n");
    importFile(path(u"a.ini"_s));
    QVERIFY(module->requests().contains(u"01 05 71 00 80 00 00 00 F7"_s));
    QVERIFY(module->requests().contains(u"01 05 72 00 7F FF FF FF F4"_s));
}

void tst_StepperImport::moduleLostDuringTheImport_data()
{
    QTest::addColumn<bool>("pulledOut");
    QTest::addColumn<int>("requests");
    // 0: behind the dialog; the others in writes and in the questions after them.
    for (const int requests : {0, 1, 2, 21, 40}) {
        QTest::addRow("silent after %d", requests) << false << requests;
        QTest::addRow("pulled out after %d", requests) << true << requests;
    }
}

void tst_StepperImport::moduleLostDuringTheImport()
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
    QCOMPARE(told().constLast(), u"import from ini done."_s);
    QVERIFY(isReady("wUsbConnection"));
}

QTEST_MAIN(tst_StepperImport)
#include "tst_StepperImport.moc"
