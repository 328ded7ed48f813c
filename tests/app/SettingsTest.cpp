#include "app/SettingsTest.h"

#include "support/SimulatedPort.h"

#include <QDir>
#include <QFile>

#include <thread>

using namespace Qt::StringLiterals;

void SettingsTest::init()
{
    StepperTest::init();
    m_folderBefore = QDir::currentPath();
    QVERIFY(m_folder.isValid() && QDir::setCurrent(m_folder.path()));
    for (const QString &name : QDir().entryList(QDir::Files | QDir::Hidden)) {
        QVERIFY(QFile::remove(name)); // of the test before
    }
    m_user = std::make_unique<FileDialogUser>();
}

void SettingsTest::cleanup()
{
    m_user.reset();
    QDir::setCurrent(m_folderBefore);
    StepperTest::cleanup();
}

const QList<SettingsTest::Key> &SettingsTest::keys()
{
    static const QList<Key> keys = {
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
    return keys;
}

QString SettingsTest::datagram(int command, int type, int value, int address)
{
    QByteArray bytes;
    for (const int byte :
         {address, command, type, 0, value >> 24, value >> 16, value >> 8, value}) {
        bytes.append(static_cast<char>(byte));
    }
    int sum = 0;
    for (const char byte : std::as_const(bytes)) {
        sum += byte;
    }
    bytes.append(static_cast<char>(sum));
    return QString::fromLatin1(bytes.toHex(' ').toUpper());
}

QList<int> SettingsTest::exportedNumbers()
{
    return {6,   7,   140, 12,  13,  201, 202, 210, 4,   5,   127, 129, 132, 108, 109, 110,
            111, 112, 113, 114, 115, 116, 117, 118, 119, 120, 121, 122, 124, 125, 126};
}

QStringList SettingsTest::readsOf(const QList<int> &numbers)
{
    QStringList requests;
    for (const int number : numbers) {
        requests.append(datagram(6, number, 0));
    }
    return requests;
}

QList<SettingsTest::Value> SettingsTest::distinctValues()
{
    return {{6, 200},    {7, 31},      {140, 5},      {12, 0},    {13, 1},     {201, 3},
            {202, 400},  {210, 4096},  {4, 70000},    {5, 80001}, {127, 2},    {129, 1},
            {132, 2},    {108, 60000}, {109, 310000}, {110, 250}, {111, 240},  {112, 731},
            {113, 26},   {114, 201},   {115, 1},      {116, 101}, {117, 102},  {118, 5},
            {119, 3},    {120, 7},     {121, 9999},   {122, 1},   {124, 1001}, {125, 11},
            {126, 10002}};
}

void SettingsTest::setValues(SimulatedPort &module, const QList<Value> &values)
{
    for (const Value &entry : values) {
        QVERIFY(
            module.module().setAxisParameter(static_cast<std::uint8_t>(entry.number), entry.value));
    }
}

std::unique_ptr<SimulatedPort> SettingsTest::connectedModule(const QList<Value> &values)
{
    auto module = std::make_unique<SimulatedPort>();
    setValues(*module, values);
    connectOverUsb(module->portName());
    stopPolling(*module);
    m_log->clear();
    return module;
}

void SettingsTest::importFile(const QString &fileName)
{
    m_user->willEnter(fileName);
    m_stepper->importSettings();
}

void SettingsTest::exportFile(const QString &fileName)
{
    m_user->willEnter(fileName);
    m_stepper->exportSettings();
}

int SettingsTest::valueOf(SimulatedPort &module, int number)
{
    return module.module().axisParameter(static_cast<std::uint8_t>(number)).value_or(-1);
}

QByteArray SettingsTest::contentOf(const QString &fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        return "(no such file)";
    }
    return file.readAll();
}

void SettingsTest::write(const QString &fileName, const QByteArray &content)
{
    QFile file(fileName);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), content.size());
}

QByteArray SettingsTest::stored(const QString &fileName)
{
    return contentOf(QFINDTESTDATA(u"data/"_s + fileName));
}

void SettingsTest::runAndInterrupt(void (Stepper::*slot)(), SimulatedPort &module, qsizetype count,
                                   const std::function<void()> &then)
{
    module.fault(u"delay 15"_s); // a run that takes its time, for the thread to come in between
    std::atomic<bool> isOver = false;
    std::thread watcher([&] {
        while (!isOver && module.requests().size() < count) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        then();
    });
    (m_stepper.get()->*slot)();
    isOver = true;
    watcher.join();
}

void SettingsTest::verifyThatPollingWaits(void (Stepper::*slot)(), const QString &fileName,
                                          const QStringList &expected)
{
    SimulatedPort module;
    setValues(module, distinctValues());
    connectOverUsb(module.portName());
    module.clearWireLog();
    QTRY_VERIFY(!module.requests().isEmpty());
    module.clearWireLog();
    m_user->willEnter(fileName);
    (m_stepper.get()->*slot)();

    // Polling went on behind the dialog; the first request that isn't a poll begins the run.
    const QStringList requests = module.requests();
    const qsizetype begin = requests.indexOf(expected.constFirst());
    QVERIFY(begin >= 0);
    QCOMPARE(requests.mid(begin), expected);
    QTRY_COMPARE_GT(module.requests().size(), requests.size());
}

QStringList SettingsTest::told() const
{
    QStringList lines = m_log->lines();
    lines.removeIf([](const QString &line) { return line.contains(u"propagateSizeHints"_s); });
    return lines;
}

qsizetype SettingsTest::timeOuts() const
{
    return m_log->lines().filter(u"communicationTimeouted!"_s).size();
}

qsizetype SettingsTest::unanswered(const SimulatedPort &module)
{
    return module.wireLog().filter(u"< "_s).size() - module.wireLog().filter(u"> "_s).size();
}
