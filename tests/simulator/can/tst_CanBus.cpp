#include "simulator/can/CanBus.h"
#include "support/TestCase.h"

#include <QTest>

#include <memory>

using namespace simulator;

namespace {

constexpr int Program = 1;
constexpr int OtherProgram = 2;

constexpr int code(CanStatus status)
{
    return static_cast<int>(status);
}

CanCall callOf(CanFunction function, std::initializer_list<std::int64_t> arguments)
{
    CanCall call;
    call.function = function;
    std::copy(arguments.begin(), arguments.end(), call.arguments.begin());
    return call;
}

CanCall readSpeedCall(std::int64_t identifier = 1)
{
    CanCall call = callOf(CanFunction::Write, {1, identifier, 8, 0});
    call.data = {6, 4, 0, 0, 0, 0, 0, 3};
    return call;
}

const CanCall Open = callOf(CanFunction::OpenChannel, {0, 8});
const CanCall HalfMegabit = callOf(CanFunction::SetBusParams, {1, -2, 0, 0, 0, 0, 0});
const CanCall BusOn = callOf(CanFunction::BusOn, {1});
const CanCall BusOff = callOf(CanFunction::BusOff, {1});
const CanCall Read = callOf(CanFunction::Read, {1, 0, 0});
const CanCall Close = callOf(CanFunction::Close, {1});

} // namespace

class tst_CanBus : public TestCase
{
    Q_OBJECT

private slots:
    void init();

    void logsTheCalls();
    void carriesFrames();
    void channelIsForOne();
    void onlyTheFirstChannelIsThere();
    void handlesAreForTheirOpening();
    void speedHasToBeTheModules();
    void speedHasToExist();
    void offTheBusNothingCrosses();
    void whatCameOffTheBusIsLost();
    void faultsRefuseCalls_data();
    void faultsRefuseCalls();
    void programThatEndsLosesTheChannel();

private:
    Module m_module;
};

void tst_CanBus::init()
{
    TestCase::init();
    m_module.setAxisParameter(4, 1000);
}

void tst_CanBus::logsTheCalls()
{
    CanBus bus(m_module);
    std::vector<std::string> told;
    bus.calls().setSink([&told](const std::string &line) { told.push_back(line); });
    bus.execute(Program, callOf(CanFunction::InitializeLibrary, {}));
    for (const CanCall &call :
         {Open, HalfMegabit, BusOn, readSpeedCall(-56), Read, BusOff, Close}) {
        bus.execute(Program, call);
    }
    bus.execute(Program, callOf(CanFunction::Read, {9, 1, 1}));

    const std::vector<std::string> expected{
        "canInitializeLibrary() = 0",
        "canOpenChannel(0, 8) = 1",
        "canSetBusParams(1, -2, 0, 0, 0, 0, 0) = 0",
        "canBusOn(1) = 0",
        "canWrite(1, -56, 06 04 00 00 00 00 00 03, 8, 0) = 0",
        "canRead(1, null, null) = -37",
        "canBusOff(1) = 0",
        "canClose(1) = 0",
        "canRead(9, flags, time) = -34",
    };
    QCOMPARE(bus.calls().lines(), expected);
    QCOMPARE(told, expected);
    bus.calls().clear();
    QVERIFY(bus.calls().lines().empty());
}

void tst_CanBus::carriesFrames()
{
    CanBus bus(m_module);
    bus.execute(Program, Open);
    bus.execute(Program, BusOn);
    QCOMPARE(bus.execute(Program, readSpeedCall()).result, 0);
    const CanAnswer answer = bus.execute(Program, Read);
    QCOMPARE(answer.result, 0);
    QVERIFY((answer.frame == CanFrame{2, 8, {1, 100, 6, 0, 0, 0x03, 0xe8, 3}}));
    QCOMPARE(bus.execute(Program, Read).result, code(CanStatus::NoFrame));
    QCOMPARE(bus.frames().lines(),
             (std::vector<std::string>{"can < 001 [8] 06 04 00 00 00 00 00 03",
                                       "can > 002 [8] 01 64 06 00 00 03 E8 03"}));
}

void tst_CanBus::channelIsForOne()
{
    CanBus bus(m_module);
    QCOMPARE(bus.execute(Program, Open).result, 1);
    QCOMPARE(bus.execute(Program, Open).result, code(CanStatus::ChannelInUse));
    QCOMPARE(bus.execute(OtherProgram, Open).result, code(CanStatus::ChannelInUse));
    QCOMPARE(bus.execute(OtherProgram, BusOn).result, code(CanStatus::WrongHandle));
    QCOMPARE(bus.execute(Program, Close).result, 0);
    QCOMPARE(bus.execute(OtherProgram, Open).result, 2);
}

void tst_CanBus::onlyTheFirstChannelIsThere()
{
    CanBus bus(m_module);
    QCOMPARE(bus.execute(Program, callOf(CanFunction::OpenChannel, {1, 8})).result,
             code(CanStatus::NoChannel));
}

void tst_CanBus::handlesAreForTheirOpening()
{
    CanBus bus(m_module);
    for (const CanCall &call : {HalfMegabit, BusOn, readSpeedCall(), Read, BusOff, Close}) {
        QCOMPARE(bus.execute(Program, call).result, code(CanStatus::WrongHandle));
    }
    bus.execute(Program, Open);
    bus.execute(Program, Close);
    bus.execute(Program, Open); // which has handle 2
    QCOMPARE(bus.execute(Program, BusOn).result, code(CanStatus::WrongHandle));
}

void tst_CanBus::speedHasToBeTheModules()
{
    CanBus bus(m_module, 500);
    bus.execute(Program, Open);
    bus.execute(Program, BusOn);
    bus.execute(Program, readSpeedCall()); // at no speed yet
    QCOMPARE(bus.execute(Program, Read).result, code(CanStatus::NoFrame));
    bus.execute(Program, callOf(CanFunction::SetBusParams, {1, -3}));
    bus.execute(Program, readSpeedCall());
    QCOMPARE(bus.execute(Program, Read).result, code(CanStatus::NoFrame));
    bus.execute(Program, HalfMegabit);
    QCOMPARE(bus.execute(Program, Read).result, code(CanStatus::NoFrame));
    bus.execute(Program, readSpeedCall());
    QCOMPARE(bus.execute(Program, Read).result, 0);
    QCOMPARE(bus.frames().lines(),
             (std::vector<std::string>{"can ? 001 [8] 06 04 00 00 00 00 00 03",
                                       "can ? 001 [8] 06 04 00 00 00 00 00 03",
                                       "can < 001 [8] 06 04 00 00 00 00 00 03",
                                       "can > 002 [8] 01 64 06 00 00 03 E8 03"}));
}

void tst_CanBus::speedHasToExist()
{
    CanBus bus(m_module, 500);
    bus.execute(Program, Open);
    for (const std::int64_t wrong : {0, -6, -8, -10, 500000}) {
        QCOMPARE(bus.execute(Program, callOf(CanFunction::SetBusParams, {1, wrong})).result,
                 code(CanStatus::NoSuchSpeed));
    }
}

void tst_CanBus::offTheBusNothingCrosses()
{
    CanBus bus(m_module);
    bus.execute(Program, Open);
    QCOMPARE(bus.execute(Program, readSpeedCall()).result, code(CanStatus::OffBus));
    QCOMPARE(bus.execute(Program, Read).result, code(CanStatus::OffBus));
    QVERIFY(bus.frames().lines().empty());
}

void tst_CanBus::whatCameOffTheBusIsLost()
{
    CanBus bus(m_module);
    for (const CanCall &call : {Open, BusOn, readSpeedCall(), BusOff, BusOn}) {
        QVERIFY(bus.execute(Program, call).result >= 0);
    }
    QCOMPARE(bus.execute(Program, Read).result, code(CanStatus::NoFrame));
}

void tst_CanBus::faultsRefuseCalls_data()
{
    QTest::addColumn<QByteArray>("fault");
    QTest::addColumn<int>("refused"); // index of the call
    QTest::addColumn<int>("result");

    QTest::newRow("no-channel") << QByteArray("no-channel") << 0 << code(CanStatus::NoChannel);
    QTest::newRow("speed") << QByteArray("speed-refused") << 1 << code(CanStatus::Refused);
    QTest::newRow("on") << QByteArray("on-refused") << 2 << code(CanStatus::Refused);
    QTest::newRow("off") << QByteArray("off-refused") << 3 << code(CanStatus::Refused);
    QTest::newRow("close") << QByteArray("close-refused") << 4 << code(CanStatus::Refused);
}

void tst_CanBus::faultsRefuseCalls()
{
    QFETCH(const QByteArray, fault);
    QFETCH(const int, refused);
    QFETCH(const int, result);

    CanBus bus(m_module);
    QCOMPARE(bus.canFaults().execute("canfault " + fault.toStdString() + " 1"), std::string());
    int index = 0;
    for (const CanCall &call : {Open, HalfMegabit, BusOn, BusOff, Close}) {
        if (index++ == refused) {
            QCOMPARE(bus.execute(Program, call).result, result);
        }
        QVERIFY(bus.execute(Program, call).result >= 0); // at the second attempt at the latest
    }
}

void tst_CanBus::programThatEndsLosesTheChannel()
{
    CanBus bus(m_module);
    bus.execute(Program, Open);
    bus.leave(OtherProgram);
    QCOMPARE(bus.execute(Program, BusOn).result, 0);
    bus.leave(Program);
    QCOMPARE(bus.execute(OtherProgram, Open).result, 2);
}

QTEST_GUILESS_MAIN(tst_CanBus)
#include "tst_CanBus.moc"
