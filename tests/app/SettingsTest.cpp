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

QString SettingsTest::datagram(int command, int type, int value, int address)
{
    QByteArray bytes;
    for (const int byte : {address, command, type, 0, value >> 24, value >> 16, value >> 8, value}) {
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
    return {{6, 200},   {7, 31},     {140, 5},    {12, 0},    {13, 1},   {201, 3},    {202, 400},
            {210, 4096}, {4, 70000}, {5, 80001},  {127, 2},   {129, 1},  {132, 2},    {108, 60000},
            {109, 310000}, {110, 250}, {111, 240}, {112, 731}, {113, 26}, {114, 201},  {115, 1},
            {116, 101}, {117, 202},  {118, 5},    {119, 3},   {120, 7},  {121, 9999}, {122, 1},
            {124, 1001}, {125, 11},  {126, 10002}};
}

void SettingsTest::setValues(SimulatedPort &module, const QList<Value> &values)
{
    for (const Value &entry : values) {
        QVERIFY(module.module().setAxisParameter(static_cast<std::uint8_t>(entry.number),
                                                 entry.value));
    }
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
    return contentOf(QFINDTESTDATA("data/" + fileName));
}

void SettingsTest::runAndInterrupt(void (Stepper::*slot)(), SimulatedPort &module, qsizetype count,
                                   const std::function<void()> &then)
{
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

qsizetype SettingsTest::timeOuts() const
{
    return m_log->lines().filter(u"communicationTimeouted!"_s).size();
}

qsizetype SettingsTest::unanswered(const SimulatedPort &module)
{
    return module.wireLog().filter(u"< "_s).size() - module.wireLog().filter(u"> "_s).size();
}
