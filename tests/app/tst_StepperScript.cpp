#include "app/ModuleScript.h"
#include "app/SettingsTest.h"
#include "support/SimulatedCanBus.h"
#include "support/SimulatedPort.h"

#include <QDir>
#include <QRegularExpression>
#include <QSettings>

using namespace Qt::StringLiterals;

/// The configuration as a script, and what a second module on CAN does to both kinds of files.
class tst_StepperScript : public SettingsTest
{
    Q_OBJECT

private slots:
    void sapLine_data();
    void sapLine();
    void withoutAModuleThereIsNoDialog();
    void scriptIsTheStoredOne_data();
    void scriptIsTheStoredOne();
    void scriptReadsEachParameterOnceAndTheLoopModeTwice();
    void pollingWaitsForTheScript();
    void scriptTellsTheDebugStream();
    void scriptProposesANameWithTheTime();
    void negativeValueHasItsSign();
    void existingFileIsEmptied();
    void scriptWithoutAPlaceReadsEverything_data();
    void scriptWithoutAPlaceReadsEverything();
    void moduleLostDuringTheScript_data();
    void moduleLostDuringTheScript();

    void twoModulesGiveTwoLinesEach_data();
    void twoModulesGiveTwoLinesEach();
    void settingsFileHasTheValuesOfTheCanModule();
    void importWritesToBothModulesInTurn();
    void silentCanModuleEndsTheRun();

private:
    void connectModule(SimulatedPort &module);
    /// The serial module connected first, then the one on CAN; both at address 1.
    void connectBoth(SimulatedPort &module, SimulatedCanBus &bus);
    void exportScript(const QString &fileName);
    static QList<int> scriptNumbers();
};

void tst_StepperScript::connectModule(SimulatedPort &module)
{
    connectOverUsb(module.portName());
    stopPolling(module);
    m_log->clear();
}

void tst_StepperScript::connectBoth(SimulatedPort &module, SimulatedCanBus &bus)
{
    // The polling is stopped once: a start soon after a stop would be lost.
    connectOverUsb(module.portName());
    connectOverCan(1000, 1, 2);
    module.clearWireLog();
    stopPolling(module);
    bus.clear();
    m_log->clear();
}

void tst_StepperScript::exportScript(const QString &fileName)
{
    m_user->willEnter(fileName);
    m_stepper->exportSettingsToZDRL();
}

QList<int> tst_StepperScript::scriptNumbers()
{
    return {6,   7,   140, 12,  13,  201, 202, 210, 108, 109, 110, 111, 112, 113, 114, 115,
            116, 117, 118, 119, 120, 121, 122, 124, 125, 126, 4,   5,   127, 129, 129};
}

void tst_StepperScript::sapLine_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("line");
    QTest::newRow("usual") << 6 << 100 << u"SAP 6, 0, 100 \t// c\n"_s;
    QTest::newRow("number above 127") << 201 << 0 << u"SAP 201, 0, 0 \t// c\n"_s;
    QTest::newRow("largest number") << 255 << 1 << u"SAP 255, 0, 1 \t// c\n"_s;
    QTest::newRow("negative") << 112 << -5 << u"SAP 112, 0, -5 \t// c\n"_s;
    QTest::newRow("least") << 0 << int(0x80000000) << u"SAP 0, 0, -2147483648 \t// c\n"_s;
    QTest::newRow("most") << 1 << 0x7fffffff << u"SAP 1, 0, 2147483647 \t// c\n"_s;
}

void tst_StepperScript::sapLine()
{
    QFETCH(int, type);
    QFETCH(int, value);
    QTEST(ModuleScript::sapLine(static_cast<char>(type), value, u"\t// c"_s), "line");
}

void tst_StepperScript::withoutAModuleThereIsNoDialog()
{
    m_log->clear();
    m_user->willCancel();
    m_stepper->exportSettingsToZDRL();
    QCOMPARE(m_user->dialogs(), 0);
    QCOMPARE(told(), QStringList(u"exporting settings to zdrl..."_s));
}

void tst_StepperScript::scriptIsTheStoredOne_data()
{
    QTest::addColumn<int>("loopMode");
    QTest::addColumn<QString>("file");
    QTest::newRow("open loop") << 0 << u"open-loop.zdr"_s;
    QTest::newRow("closed loop") << 1 << u"closed-loop.zdr"_s;
}

void tst_StepperScript::scriptIsTheStoredOne()
{
    QFETCH(int, loopMode);
    QFETCH(QString, file);
    SimulatedPort module;
    setValues(module, distinctValues());
    setValues(module, {{129, loopMode}});
    connectModule(module);
    exportScript(path(u"a.zdr"_s));
    QCOMPARE(contentOf(path(u"a.zdr"_s)), stored(file));
    QCOMPARE(told().constLast(), u"export to zdrl done."_s);
}

void tst_StepperScript::scriptReadsEachParameterOnceAndTheLoopModeTwice()
{
    SimulatedPort module;
    connectModule(module);
    exportScript(path(u"a.zdr"_s));
    QCOMPARE(module.requests(), readsOf(scriptNumbers()));
    QCOMPARE(module.requests().size(), 31);
}

void tst_StepperScript::pollingWaitsForTheScript()
{
    verifyThatPollingWaits(&Stepper::exportSettingsToZDRL, path(u"a.zdr"_s),
                           readsOf(scriptNumbers()));
}

void tst_StepperScript::scriptTellsTheDebugStream()
{
    SimulatedPort module;
    connectModule(module);
    exportScript(path(u"a.zdr"_s));
    QCOMPARE(
        told(),
        QStringList({u"exporting settings to zdrl..."_s,
                     u"export to: \"%1\""_s.arg(path(u"a.zdr"_s)), u"export to zdrl done."_s}));
}

void tst_StepperScript::scriptProposesANameWithTheTime()
{
    SimulatedPort module;
    connectModule(module);
    m_user->willCancel();
    m_stepper->exportSettingsToZDRL();
    QCOMPARE(m_user->dialogs(), 1);
    QCOMPARE(m_user->title(), u"Export settings to ZDRL"_s);
    QCOMPARE(m_user->filters(), QStringList(u"ZDRL Files (*.zdr)"_s));
    QVERIFY(!m_user->hadParent());
    QCOMPARE(m_user->folder(), QDir::currentPath());
    const QRegularExpression form(u"^2\\d{7}_\\d\\d\\.\\d\\d\\.\\d\\d_ZDRM-7710_Settings\\.zdr$"_s);
    QVERIFY2(form.match(m_user->proposedName()).hasMatch(), qPrintable(m_user->proposedName()));
}

void tst_StepperScript::negativeValueHasItsSign()
{
    SimulatedPort module;
    setValues(module, {{112, -5}});
    connectModule(module);
    exportScript(path(u"a.zdr"_s));
    QVERIFY(contentOf(path(u"a.zdr"_s)).contains("\nSAP 112, 0, -5 \t// CL encoder offset\n"));
}

void tst_StepperScript::existingFileIsEmptied()
{
    SimulatedPort module;
    setValues(module, distinctValues());
    connectModule(module);
    write(path(u"a.zdr"_s), QByteArray(10000, 'x'));
    exportScript(path(u"a.zdr"_s));
    QCOMPARE(contentOf(path(u"a.zdr"_s)), stored(u"closed-loop.zdr"_s));
}

void tst_StepperScript::scriptWithoutAPlaceReadsEverything_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::newRow("cancelled") << QString();
    QTest::newRow("read-only folder") << u"/proc/settings.zdr"_s; // not even for root
    QTest::newRow("full disk") << u"full.zdr"_s;
}

void tst_StepperScript::scriptWithoutAPlaceReadsEverything()
{
    QFETCH(QString, fileName);
    SimulatedPort module;
    connectModule(module);
    if (fileName.isNull()) {
        m_user->willCancel();
    } else if (fileName == "full.zdr"_L1) {
        QVERIFY(QFile::link(u"/dev/full"_s, path(fileName)));
        m_user->willEnter(path(fileName));
    } else {
        m_user->willEnter(fileName);
    }
    m_stepper->exportSettingsToZDRL();
    QCOMPARE(m_user->dialogs(), 1);
    QCOMPARE(module.requests(), readsOf(scriptNumbers()));
    QCOMPARE(told().constLast(), u"export to zdrl done."_s);
    QStringList files = QDir().entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::System);
    files.removeAll(u"full.zdr"_s); // the link
    QCOMPARE(files, QStringList());
}

void tst_StepperScript::moduleLostDuringTheScript_data()
{
    QTest::addColumn<bool>("pulledOut");
    QTest::addColumn<int>("requests");
    for (const int requests : {0, 1, 5, 8, 30}) { // 0: behind the dialog
        QTest::addRow("silent after %d", requests) << false << requests;
        QTest::addRow("pulled out after %d", requests) << true << requests;
    }
}

void tst_StepperScript::moduleLostDuringTheScript()
{
    QFETCH(bool, pulledOut);
    QFETCH(int, requests);
    SimulatedPort module;
    setValues(module, distinctValues());
    connectModule(module);
    m_user->willEnter(path(u"a.zdr"_s));
    runAndInterrupt(&Stepper::exportSettingsToZDRL, module, requests, [&] {
        if (pulledOut) {
            module.pullOut();
        } else {
            module.fault(u"silence"_s);
        }
    });
    QCOMPARE_LE(timeOuts(), 1); // at the very end the interruption may come too late
    QCOMPARE_LE(unanswered(module), 1);
    QCOMPARE(told().constLast(), u"export to zdrl done."_s);

    // Whole lines, up to the loss.
    const QByteArray script = contentOf(path(u"a.zdr"_s));
    QVERIFY(script.endsWith('\n'));
    QVERIFY(stored(u"closed-loop.zdr"_s).startsWith(script));
    QCOMPARE_GE(script.count("SAP"), requests - 1);
}

void tst_StepperScript::twoModulesGiveTwoLinesEach_data()
{
    QTest::addColumn<int>("serialMode");
    QTest::addColumn<int>("canMode");
    QTest::newRow("both open loop") << 0 << 0;
    QTest::newRow("serial one in closed loop") << 1 << 0;
    QTest::newRow("one on CAN in closed loop") << 0 << 1;
    QTest::newRow("both in closed loop") << 1 << 1;
}

void tst_StepperScript::twoModulesGiveTwoLinesEach()
{
    QFETCH(int, serialMode);
    QFETCH(int, canMode);
    SimulatedPort module;
    SimulatedCanBus bus;
    connectBoth(module, bus);
    setValues(module, distinctValues());
    setValues(module, {{129, serialMode}});
    bus.module().setAxisParameter(6, 77);
    bus.module().setAxisParameter(129, canMode);
    exportScript(path(u"a.zdr"_s));

    const QByteArray script = contentOf(path(u"a.zdr"_s));
    QVERIFY(script.startsWith("//=== motor/module settings ===\n"
                              "SAP 6, 0, 200 \t// max current\n"
                              "SAP 6, 0, 77 \t// max current\n"
                              "SAP 7, 0, 31 \t// standby current\n"
                              "SAP 7, 0, 8 \t// standby current\n"));
    QCOMPARE(script.count("SAP"), 60);
    QCOMPARE(script.count("//==="), 5 + serialMode + canMode);
    QCOMPARE(script.count("ClInit:  GAP 133, 0\n         JC ZE, ClInit\n"), serialMode + canMode);
}

void tst_StepperScript::settingsFileHasTheValuesOfTheCanModule()
{
    SimulatedPort module;
    SimulatedCanBus bus;
    connectBoth(module, bus);
    setValues(module, distinctValues());
    bus.module().setAxisParameter(6, 77);
    m_user->willEnter(path(u"a.ini"_s));
    m_stepper->exportSettings();
    QCOMPARE(module.requests(), readsOf(exportedNumbers()));
    QCOMPARE(bus.frames().filter(u"can < "_s).size(), 31);
    const QSettings file(path(u"a.ini"_s), QSettings::IniFormat);
    QCOMPARE(file.value(u"motor_and_module_settings/MaxCurrent"_s).toInt(), 77);
    QCOMPARE(file.value(u"motor_and_module_settings/StandbyCurrent"_s).toInt(), 8);
    QCOMPARE(told().at(2), u"\"MaxCurrent\" = \"200\""_s);
    QCOMPARE(told().at(3), u"\"MaxCurrent\" = \"77\""_s);
}

void tst_StepperScript::importWritesToBothModulesInTurn()
{
    SimulatedPort module;
    SimulatedCanBus bus;
    connectBoth(module, bus);
    QVERIFY(module.fault(u"status 4"_s)); // by which the two modules are told apart
    write(path(u"a.ini"_s), stored(u"settings.ini"_s));
    m_user->willEnter(path(u"a.ini"_s));
    m_stepper->importSettings();
    for (const Value &entry : distinctValues()) {
        if (entry.number != 132) {
            const auto number = static_cast<std::uint8_t>(entry.number);
            QCOMPARE(module.module().axisParameter(number), entry.value);
            QCOMPARE(bus.module().axisParameter(number), entry.value);
        }
    }
    const QStringList lines = told();
    QCOMPARE(lines.at(2), u"\"MaxCurrent\" = \"200\"(\"4\")"_s);
    QCOMPARE(lines.at(3), u"\"MaxCurrent\" = \"200\"(\"100\")"_s);
    QCOMPARE(lines.filter(u"\"(\"4\")"_s).size(), 35);
    QCOMPARE(lines.filter(u"\"(\"100\")"_s).size(), 35);
}

void tst_StepperScript::silentCanModuleEndsTheRun()
{
    SimulatedPort module;
    SimulatedCanBus bus;
    connectBoth(module, bus);
    QVERIFY(bus.fault(u"silence"_s));
    exportScript(path(u"a.zdr"_s));
    QCOMPARE(timeOuts(), 1);
    QCOMPARE(module.requests().size(), 1);
    QCOMPARE(contentOf(path(u"a.zdr"_s)),
             QByteArray("//=== motor/module settings ===\nSAP 6, 0, 128 \t// max current\n"));
}

QTEST_MAIN(tst_StepperScript)
#include "tst_StepperScript.moc"
